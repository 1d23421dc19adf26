#include "app/permission.h"

#include <gtest/gtest.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

const QDateTime kNow(QDate(2026, 11, 22), QTime(14, 30, 15), Qt::UTC);

PiholeRule ruleOf(const QString &comment) { return {PiholeRule::Kind::AllowedName, u"cdn.example.com"_s, comment}; }

} // namespace

TEST(Permission, Is_found_again_in_the_comment_of_its_rule)
{
    for (const Permission &permission :
         {Permission{u"cdn.example.com"_s, std::nullopt}, Permission{u"cdn.example.com"_s, kNow.addSecs(3600)}})
        EXPECT_EQ(Permission::of(permission.rule()), permission);
}

TEST(Permission, Says_in_its_comment_when_it_ends)
{
    EXPECT_EQ((Permission{u"a.example"_s, kNow}.rule().comment), u"Allowed in Corvane until 2026-11-22T14:30:15Z"_s);
    EXPECT_EQ((Permission{u"a.example"_s, std::nullopt}.rule().comment), u"Allowed in Corvane"_s);
}

TEST(Permission, Is_no_rule_of_somebody_else)
{
    EXPECT_FALSE(Permission::of(ruleOf({})));
    EXPECT_FALSE(Permission::of(ruleOf(u"Allowed in Corvane for my work"_s)));
    PiholeRule denied = ruleOf(u"Allowed in Corvane"_s);
    denied.kind = PiholeRule::Kind::DeniedName;
    EXPECT_FALSE(Permission::of(denied));
}

TEST(Permission, With_an_end_that_nobody_can_read_lasts)
{
    const auto permission = Permission::of(ruleOf(u"Allowed in Corvane until next spring"_s));
    ASSERT_TRUE(permission);
    EXPECT_FALSE(permission->end);
    EXPECT_FALSE(permission->isOver(kNow));
}

TEST(Permission, Is_over_from_its_end_on)
{
    const Permission permission{u"a.example"_s, kNow};
    EXPECT_FALSE(permission.isOver(kNow.addSecs(-1)));
    EXPECT_TRUE(permission.isOver(kNow));
    EXPECT_TRUE(permission.isOver(kNow.addDays(3)));
    EXPECT_FALSE((Permission{u"a.example"_s, std::nullopt}.isOver(kNow)));
}

TEST(Permission, That_a_wrong_clock_has_written_lasts_no_longer_than_an_hour)
{
    const Permission permission{u"a.example"_s, kNow.addSecs(3600)};
    EXPECT_FALSE(permission.isOver(kNow));
    EXPECT_TRUE(permission.isOver(kNow.addDays(-1))) << "the clock was set back by a day";
}

TEST(NameForRule, Has_no_dot_at_its_end)
{
    EXPECT_EQ(nameForRule(u"CDN.Example.com."_s), u"cdn.example.com"_s);
    EXPECT_EQ(nameForRule(u" cdn.example.com.. "_s), u"cdn.example.com"_s);
    EXPECT_EQ(nameForRule(u"."_s), QString());
}
