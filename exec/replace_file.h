#pragma once

#include <QByteArrayView>
#include <QFileDevice>
#include <QList>
#include <QString>

#include <expected>
#include <optional>

namespace corvane {

/// What a file is to hold, and who may do what with it where that is not as it was.
struct NewContent {
    QString path;
    QByteArray content;
    std::optional<QFileDevice::Permissions> permissions = {};
};

/// Gives the file this content, whole and on disk, or leaves it as it was; the system's reason when it cannot be
/// written.
[[nodiscard]] std::expected<void, QString> replaceFile(const QString &path, QByteArrayView content);
/// The same for a file that only its owner may read.
[[nodiscard]] std::expected<void, QString> replacePrivateFile(const QString &path, QByteArrayView content);

/// The same for files that belong together: all of them are replaced, or none. They are renamed into place one right
/// after another, the last one last: who is killed in between leaves that one as it was.
[[nodiscard]] std::expected<void, QString> replaceFiles(const QList<NewContent> &files);

} // namespace corvane
