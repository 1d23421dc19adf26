#pragma once

#include <QByteArray>
#include <QFile>
#include <gtest/gtest.h>

namespace corvane::test {

/// The body of an answer that was recorded from a real Pi-hole.
[[nodiscard]] inline QByteArray recordedBody(const char *name)
{
    QFile file(QStringLiteral(CORVANE_TEST_DATA "/pihole-api/%1.txt").arg(QLatin1String(name)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    const QByteArray text = file.readAll().replace("\r\n\r\n", "\n\n");
    const qsizetype answer = text.indexOf("--- answer");
    const qsizetype start = text.indexOf("\n\n", answer) + 2;
    const qsizetype end = text.lastIndexOf("\n[[status");
    EXPECT_TRUE(answer > 0 && start > answer && end > start) << name;
    return text.mid(start, end - start);
}

} // namespace corvane::test
