#pragma once

#include <QByteArray>
#include <QString>

namespace corvane {

/// A new boundary that no archive holds by chance.
[[nodiscard]] QByteArray newMultipartBoundary();

/// The form body that carries a zip archive as the file of the field "file".
[[nodiscard]] QByteArray multipartBody(const QByteArray &boundary, const QString &fileName, const QByteArray &archive);

} // namespace corvane
