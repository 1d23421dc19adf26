#pragma once

#include <QList>
#include <QString>

namespace corvane {

/// Whether the text is a version of the Pi-hole image as its makers number them: year, month, patch, such as
/// "2026.09.0".
[[nodiscard]] bool isVersionTag(const QString &text);

/// The numbers of a tag, for comparing element by element. A number too large to hold counts as the largest.
[[nodiscard]] QList<qint64> versionParts(const QString &tag);

/// Whether the tags differ and `tag` does not sort before `other`. Another spelling of the same numbers ("2026.9.0",
/// "2026.09.0") counts as newer.
[[nodiscard]] bool isNewer(const QString &tag, const QString &other);

} // namespace corvane
