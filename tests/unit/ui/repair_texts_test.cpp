#include "ui/decisions/repair_texts.h"

#include <gtest/gtest.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

using By = BlockedName::By;

BlockedName blocked(By by, int times, const QString &what = {}, const QString &behind = {})
{
    return {u"a.example"_s, times, by, what, behind, true};
}

std::string detail(const BlockedName &name) { return blockedRows({name}, true, {}).value(0).detail.toStdString(); }

} // namespace

TEST(BlockedRows, Say_how_often_and_by_what)
{
    EXPECT_EQ(detail(blocked(By::List, 1, u"lists.example/a"_s)), "Blocked once by the list lists.example/a.");
    EXPECT_EQ(detail(blocked(By::List, 2)), "Blocked twice by a block list.");
    EXPECT_EQ(detail(blocked(By::Rule, 5, u"^ads"_s)), "Blocked 5 times by your rule ^ads.");
    EXPECT_EQ(detail(blocked(By::Rule, 1)), "Blocked once by a rule of yours.");
    EXPECT_EQ(detail(blocked(By::List, 1, u"L"_s, u"stats.example"_s)),
              "Blocked once: it leads to stats.example, which is blocked by the list L.");
}

TEST(BlockedRows, Offer_a_permission_only_where_it_helps)
{
    for (const By by : {By::List, By::Rule, By::Corvane, By::Upstream, By::Itself}) {
        const Row row = blockedRows({blocked(by, 1)}, true, {}).value(0);
        EXPECT_EQ(row.enabled, by == By::List || by == By::Rule);
        EXPECT_TRUE(row.detail.startsWith(u"Blocked "_s));
        EXPECT_TRUE(row.detail.endsWith(u'.'));
    }
}

TEST(BlockedRows, Show_that_a_name_is_allowed_by_now)
{
    const Row row = blockedRows({blocked(By::List, 3)}, true, {{u"a.example"_s, std::nullopt}}).value(0);
    EXPECT_EQ(row.detail, u"Allowed always."_s);
    EXPECT_FALSE(row.enabled);
}

TEST(BlockedRows, Keep_old_and_new_apart)
{
    EXPECT_EQ(blockedRows({blocked(By::List, 1)}, false, {}).size(), 0);
    EXPECT_EQ(blockedRows({blocked(By::List, 1)}, true, {}).size(), 1);
}

TEST(BlockedRows, Are_never_too_many_to_look_at)
{
    QList<BlockedName> many(3000, blocked(By::List, 1));
    EXPECT_EQ(blockedRows(many, true, {}).size(), kMostNames);
    EXPECT_EQ(moreNames(many, true), u"And 2980 older names."_s);
    EXPECT_EQ(moreNames(many, false), QString());
    many.resize(kMostNames + 1);
    EXPECT_EQ(moreNames(many, true), u"And one older name."_s);
    many.resize(kMostNames);
    EXPECT_EQ(moreNames(many, true), QString());
}

TEST(PermissionRows, Say_until_when)
{
    const QDateTime end(QDate(2026, 11, 22), QTime(9, 5));
    const auto rows = permissionRows({{u"a.example"_s, end}, {u"b.example"_s, std::nullopt}});
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0].detail, u"Allowed until 09:05."_s);
    EXPECT_EQ(rows[1].detail, u"Allowed always."_s);
}

TEST(NoNames, Say_why)
{
    EXPECT_TRUE(noNamesText({}, 0, {}).startsWith(u"Nothing was blocked since."_s));
    EXPECT_TRUE(noNamesText({}, 2, {}).contains(u"its privacy level is 2"_s));
    EXPECT_EQ(noNamesText({}, 2, u"Pi-hole did not answer on 127.0.0.1."_s), u"Pi-hole did not answer on 127.0.0.1."_s);
    EXPECT_EQ(noNamesText({blocked(By::List, 1)}, 0, {}), QString());
}
