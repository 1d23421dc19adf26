#include "app/test_name.h"

#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

namespace corvane::test {

TEST(TestName, It_is_made_up_anew_each_time_under_example_com)
{
    const QRegularExpression form(
        QRegularExpression::anchoredPattern(QStringLiteral("cv-[0-9a-f]{6}\\.example\\.com")));
    QSet<QString> names;
    for (int i = 0; i < 500; ++i) {
        const QString name = freshTestName();
        EXPECT_TRUE(form.match(name).hasMatch()) << name.toStdString();
        names.insert(name);
    }
    EXPECT_GT(names.size(), 490);
}

} // namespace corvane::test
