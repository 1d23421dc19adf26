#include "api/multipart.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace corvane;

namespace {

QByteArray fileNameIn(const QByteArray &body)
{
    const QByteArray line = body.split('\n').value(1);
    const qsizetype start = line.indexOf("filename=\"") + 10;
    return line.mid(start, line.lastIndexOf('"') - start);
}

} // namespace

TEST(Multipart, The_body_is_the_form_byte_for_byte)
{
    EXPECT_EQ(multipartBody("Corvane-1", QStringLiteral("backup.zip"), "PK\r\n"),
              "--Corvane-1\r\n"
              "Content-Disposition: form-data; name=\"file\"; filename=\"backup.zip\"\r\n"
              "Content-Type: application/zip\r\n"
              "\r\n"
              "PK\r\n"
              "\r\n--Corvane-1--\r\n");
}

TEST(Multipart, Any_byte_of_the_archive_stays_what_it_is)
{
    QByteArray archive;
    for (int byte = 0; byte < 256; ++byte)
        archive += static_cast<char>(byte);
    const QByteArray body = multipartBody("b", QStringLiteral("a.zip"), archive);
    EXPECT_EQ(body.mid(body.indexOf("\r\n\r\n") + 4, 256), archive);
    EXPECT_TRUE(body.endsWith("\r\n--b--\r\n"));
}

TEST(Multipart, An_empty_archive_is_an_empty_file)
{
    EXPECT_TRUE(multipartBody("b", QStringLiteral("a.zip"), {}).endsWith("application/zip\r\n\r\n\r\n--b--\r\n"));
}

TEST(Multipart, A_file_name_cannot_leave_its_quotes)
{
    const QByteArray body = multipartBody("b", QStringLiteral("a\"; name=\"x\r\nEvil: yes\r\n\r\n.zip"), "PK");
    EXPECT_EQ(fileNameIn(body), "a%22; name=%22x%0D%0AEvil: yes%0D%0A%0D%0A.zip");
    EXPECT_FALSE(body.contains("\nEvil"));
}

TEST(Multipart, Other_letters_travel_as_utf8)
{
    EXPECT_EQ(fileNameIn(multipartBody("b", QStringLiteral("Größe ✓ 100%.zip"), "PK")), "Größe ✓ 100%.zip");
}

TEST(Multipart, Boundaries_are_named_after_us_and_never_the_same)
{
    static const QRegularExpression shape(
        QStringLiteral("\\ACorvane-[0-9a-fA-F]{8}(-[0-9a-fA-F]{4}){3}-[0-9a-fA-F]{12}\\z"));
    const QByteArray boundary = newMultipartBoundary();
    EXPECT_TRUE(shape.match(QString::fromLatin1(boundary)).hasMatch()) << boundary.constData();
    EXPECT_NE(boundary, newMultipartBoundary());
}
