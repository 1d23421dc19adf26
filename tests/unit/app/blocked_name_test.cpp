#include "app/blocked_name.h"

#include <gtest/gtest.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

using By = BlockedName::By;

constexpr double kBoundary = 1000;
const QList<PiholeList> kLists{{1, u"https://lists.example/hosts"_s, u"Migrated from /etc/pihole/adlists.list"_s},
                               {3, u"https://lists.example/b.txt"_s, u"My list"_s}};
const QList<PiholeRule> kRules{{PiholeRule::Kind::DeniedName, u"bad.example.net"_s, u"mine"_s, true, 2},
                               {PiholeRule::Kind::DeniedPattern, u"^doh"_s, u"Corvane: keeps browsers"_s, true, 4}};

PiholeQuery question(const QString &name, const QString &status, std::optional<qint64> decidedBy = {},
                     double time = kBoundary + 1, const QString &cname = {})
{
    return {name, status, time, cname, decidedBy};
}

BlockedName only(const PiholeQuery &asked)
{
    const QList<BlockedName> names = blockedNames({asked}, kBoundary, kLists, kRules);
    EXPECT_EQ(names.size(), 1);
    return names.value(0);
}

} // namespace

TEST(BlockedNames, Stand_once_each_with_how_often_and_the_newest_first)
{
    const auto names = blockedNames(
        {question(u"b"_s, u"GRAVITY"_s, -3), question(u"a"_s, u"GRAVITY"_s, -3), question(u"b"_s, u"GRAVITY"_s, -3)},
        kBoundary, kLists, kRules);
    ASSERT_EQ(names.size(), 2);
    EXPECT_EQ(names[0].name, u"b"_s);
    EXPECT_EQ(names[0].times, 2);
    EXPECT_EQ(names[1].times, 1);
}

TEST(BlockedNames, What_was_asked_for_before_the_look_is_told_apart_and_not_counted_in)
{
    const auto names =
        blockedNames({question(u"a"_s, u"GRAVITY"_s, -3, kBoundary + 2), question(u"b"_s, u"GRAVITY"_s, -3, kBoundary),
                      question(u"a"_s, u"GRAVITY"_s, -3, kBoundary - 5)},
                     kBoundary, kLists, kRules);
    ASSERT_EQ(names.size(), 2);
    EXPECT_TRUE(names[0].isNew);
    EXPECT_EQ(names[0].times, 1);
    EXPECT_FALSE(names[1].isNew);
}

TEST(BlockedNames, Name_the_list_or_the_rule)
{
    EXPECT_EQ(only(question(u"a"_s, u"GRAVITY"_s, -3)).what, u"lists.example/hosts"_s);
    EXPECT_EQ(only(question(u"a"_s, u"GRAVITY"_s, -5)).what, u"My list"_s);
    EXPECT_EQ(only(question(u"a"_s, u"GRAVITY"_s, -99)).what, QString()) << "a list that has gone";
    const BlockedName denied = only(question(u"bad.example.net"_s, u"DENYLIST"_s, 2));
    EXPECT_EQ(denied.by, By::Rule);
    EXPECT_EQ(denied.what, u"bad.example.net"_s);
}

TEST(BlockedNames, Tell_the_name_behind_them)
{
    const BlockedName alias = only(question(u"m.example.org"_s, u"GRAVITY_CNAME"_s, -3, 2000, u"stats.example"_s));
    EXPECT_EQ(alias.by, By::List);
    EXPECT_EQ(alias.behind, u"stats.example"_s);
    EXPECT_TRUE(alias.canBeAllowed());
}

TEST(BlockedNames, That_no_permission_helps_are_not_offered_one)
{
    for (const char *status : {"EXTERNAL_BLOCKED_IP", "EXTERNAL_BLOCKED_NULL", "EXTERNAL_BLOCKED_EDE15"})
        EXPECT_EQ(only(question(u"a"_s, QLatin1String(status))).by, By::Upstream) << status;
    EXPECT_EQ(only(question(u"use-application-dns.net"_s, u"SPECIAL_DOMAIN"_s)).by, By::Itself);
    EXPECT_EQ(only(question(u"doh.example"_s, u"REGEX"_s, 4)).by, By::Corvane);
    for (const By by : {By::Upstream, By::Itself, By::Corvane}) {
        BlockedName blocked;
        blocked.by = by;
        EXPECT_FALSE(blocked.canBeAllowed());
    }
}

TEST(BlockedNames, Are_ready_within_a_frame_when_there_are_thousands)
{
    QList<PiholeQuery> many;
    for (int i = 0; i < 3000; ++i)
        many.append(question(QStringLiteral("n%1.example").arg(i), u"GRAVITY"_s, -3));
    EXPECT_EQ(blockedNames(many, kBoundary, kLists, kRules).size(), 3000);
}

TEST(SaysBlocked, Takes_a_status_by_its_first_word)
{
    for (const QString &status : {u"GRAVITY"_s, u"GRAVITY_CNAME"_s, u"REGEX"_s, u"DENYLIST_CNAME"_s})
        EXPECT_TRUE(saysBlocked(status)) << status.toStdString();
    for (const QString &status : {u"FORWARDED"_s, u"CACHE"_s, u"GRAVIT"_s, u"REGE"_s, u"DENYLIS"_s, QString()})
        EXPECT_FALSE(saysBlocked(status)) << status.toStdString();
}
