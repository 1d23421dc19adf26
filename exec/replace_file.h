#pragma once

#include <QByteArrayView>
#include <QString>

#include <expected>

namespace corvane {

/// Gives the file this content, whole and on disk, or leaves it as it was; the system's reason when it cannot be
/// written.
[[nodiscard]] std::expected<void, QString> replaceFile(const QString &path, QByteArrayView content);

} // namespace corvane
