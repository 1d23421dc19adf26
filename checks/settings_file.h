#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace corvane {

/// Reads a settings file that another program owns: only a regular file, and never without an end. Absent when it
/// cannot be read or is larger than any settings file.
[[nodiscard]] std::optional<QByteArray> readSettingsFile(const QString &path);

} // namespace corvane
