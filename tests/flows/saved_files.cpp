#include "tests/flows/saved_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <gtest/gtest.h>

namespace corvane::test {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

bool isWholeZip(const QByteArray &bytes)
{
    constexpr qsizetype kEndSize = 22;
    constexpr qsizetype kDirectorySize = 12;
    constexpr qsizetype kDirectoryPlace = 16;
    const qsizetype end = bytes.size() - kEndSize;
    if (end < 0 || !bytes.startsWith("PK\3\4") || !bytes.sliced(end).startsWith("PK\5\6")) return false;
    const auto size = qFromLittleEndian<quint32>(bytes.constData() + end + kDirectorySize);
    const auto place = qFromLittleEndian<quint32>(bytes.constData() + end + kDirectoryPlace);
    return qsizetype(place) + qsizetype(size) == end && bytes.sliced(place).startsWith("PK\1\2");
}

} // namespace corvane::test
