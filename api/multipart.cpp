#include "api/multipart.h"

#include <QUuid>

namespace corvane {

namespace {

/// As browsers write file names into form headers: what would end the quoted name is percent-encoded.
QByteArray quotable(const QString &fileName)
{
    return fileName.toUtf8().replace('"', "%22").replace('\r', "%0D").replace('\n', "%0A");
}

} // namespace

QByteArray newMultipartBoundary() { return "Corvane-" + QUuid::createUuid().toString(QUuid::WithoutBraces).toUtf8(); }

QByteArray multipartBody(const QByteArray &boundary, const QString &fileName, const QByteArray &archive)
{
    QByteArray body;
    body.reserve(archive.size() + 512);
    body += "--" + boundary + "\r\n";
    body += "Content-Disposition: form-data; name=\"file\"; filename=\"" + quotable(fileName) + "\"\r\n";
    body += "Content-Type: application/zip\r\n\r\n";
    body += archive;
    body += "\r\n--" + boundary + "--\r\n";
    return body;
}

} // namespace corvane
