#include "app/app_state.h"
#include "app/comeback.h"
#include "app/repair.h"

#include <QMetaProperty>
#include <gtest/gtest.h>

namespace corvane::test {

namespace {

std::string writableIn(const QMetaObject &object)
{
    QStringList names;
    for (int i = object.propertyOffset(); i < object.propertyCount(); ++i) {
        const QMetaProperty property = object.property(i);
        if (property.isWritable()) names += QString::fromLatin1(property.name());
    }
    return names.join(u' ').toStdString();
}

} // namespace

TEST(PublishedFields, A_view_can_write_only_what_the_user_enters)
{
    EXPECT_GT(AppState::staticMetaObject.propertyCount(), 50);
    EXPECT_EQ(writableIn(AppState::staticMetaObject), "passwordInput piholeOnly");
    EXPECT_EQ(writableIn(Repair::staticMetaObject), "");
    EXPECT_EQ(writableIn(Comeback::staticMetaObject), "");
}

TEST(PublishedFields, All_of_them_are_bindable)
{
    const QMetaObject &object = AppState::staticMetaObject;
    for (int i = object.propertyOffset(); i < object.propertyCount(); ++i)
        EXPECT_TRUE(object.property(i).isBindable()) << object.property(i).name();
}

} // namespace corvane::test
