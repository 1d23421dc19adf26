#pragma once

#include <QByteArray>
#include <QCoro/QCoroTask>
#include <QString>

#include <expected>

namespace corvane {

/// What a file holds. Not a bare QByteArray: a null pointer turns into one, which makes a task of `std::expected` of it
/// ambiguous to await.
struct FileContent {
    QByteArray bytes;
};

/// Writes a file whole or not at all, on a worker thread; the reason in the system's words when it cannot.
[[nodiscard]] QCoro::Task<std::expected<void, QString>> writeFile(QString path, QByteArray bytes);

/// Reads a whole regular file of at most 256 MiB on a worker thread; the reason when it cannot.
[[nodiscard]] QCoro::Task<std::expected<FileContent, QString>> readFile(QString path);

} // namespace corvane
