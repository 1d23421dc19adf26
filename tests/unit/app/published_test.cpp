#include "app/app_state.h"
#include "app/comeback.h"
#include "app/repair.h"

#include <QMetaProperty>
#include <gtest/gtest.h>

namespace corvane::test {

namespace {

QStringList writableIn(const QMetaObject &object)
{
    QStringList names;
    for (int i = object.propertyOffset(); i < object.propertyCount(); ++i) {
        const QMetaProperty property = object.property(i);
        if (property.isWritable()) names += QString::fromLatin1(property.name());
    }
    return names;
}

} // namespace

TEST(PublishedFields, A_view_can_write_only_what_the_user_enters)
{
    const QStringList entered{QStringLiteral("passwordInput"), QStringLiteral("piholeOnly")};
    EXPECT_GT(AppState::staticMetaObject.propertyCount(), 50);
    EXPECT_EQ(writableIn(AppState::staticMetaObject), entered);
    EXPECT_EQ(writableIn(Repair::staticMetaObject), QStringList());
    EXPECT_EQ(writableIn(Comeback::staticMetaObject), QStringList());
}

} // namespace corvane::test
