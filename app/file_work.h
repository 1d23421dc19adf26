#pragma once

#include "dns/network_service.h"

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

/// Writes the two files that describe the container, on a worker thread: a slow disk holds no window up. A password
/// that is not known, which is empty, leaves its file as it is.
[[nodiscard]] QCoro::Task<std::expected<void, QString>> writePiholeFiles(QString tag, int webPort, QString password);
/// What is said before its reason, where the container was about to be made again, and elsewhere.
inline constexpr QLatin1StringView kComposeNotWritten{"Could not write the new compose file: "};
inline constexpr QLatin1StringView kFilesNotWritten{"Could not write the Pi-hole files: "};

/// Saves the servers of these services to the backup file, on a worker thread; read once more for it.
[[nodiscard]] QCoro::Task<std::expected<void, QString>> saveDnsBackup(QList<NetworkService> services);

/// Brings the script in step that restores the saved servers, on a worker thread; where it is, or nothing.
[[nodiscard]] QCoro::Task<QString> keepRestoreScript();

} // namespace corvane
