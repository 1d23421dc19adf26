#pragma once

#include <QByteArray>
#include <QString>

namespace corvane::test {

/// What the file holds; nothing when it cannot be read.
[[nodiscard]] QByteArray contentOf(const QString &path);
/// Writes the file in a folder that is made for it.
void write(const QString &path, const QByteArray &bytes);
/// Whether the bytes are a zip archive that nothing is missing from: its directory is where its end says, and the end
/// is the end.
[[nodiscard]] bool isWholeZip(const QByteArray &bytes);

} // namespace corvane::test
