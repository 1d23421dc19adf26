#include "ui/decisions/lists_texts.h"
#include "ui/decisions/pause_texts.h"

#include <gtest/gtest.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

const QDateTime kNow(QDate(2026, 11, 22), QTime(12, 0), Qt::UTC);
constexpr qint64 kHour = 3600;
constexpr qint64 kDay = 24 * kHour;

PiholeSummary listsOf(qint64 names, qint64 age)
{
    PiholeSummary summary;
    summary.domainsBlocked = names;
    summary.listsRun = kNow.toSecsSinceEpoch() - age;
    return summary;
}

std::string text(qint64 names, qint64 age) { return listsText(listsOf(names, age), kNow).toStdString(); }

} // namespace

TEST(TimeLeft, Counts_down_as_a_clock)
{
    EXPECT_EQ(timeLeft(299.2), u"5:00"_s);
    EXPECT_EQ(timeLeft(299), u"4:59"_s);
    EXPECT_EQ(timeLeft(9), u"0:09"_s);
    EXPECT_EQ(timeLeft(3600), u"1:00:00"_s);
    EXPECT_EQ(timeLeft(27 * 3600 + 61), u"27:01:01"_s);
    EXPECT_EQ(timeLeft(-0.1), u"0:00"_s);
    EXPECT_EQ(timeLeft(1e300), u"99:59:59"_s) << "a timer may hold any number";
}

TEST(TimeLeft, Is_spoken_in_words)
{
    EXPECT_EQ(spokenTimeLeft(299), u"4 minutes 59 seconds"_s);
    EXPECT_EQ(spokenTimeLeft(61), u"1 minute 1 second"_s);
    EXPECT_EQ(spokenTimeLeft(30), u"30 seconds"_s);
    EXPECT_EQ(spokenTimeLeft(3600), u"1 hour 0 minutes 0 seconds"_s);
}

TEST(ListsText, Says_how_many_names_and_how_old)
{
    EXPECT_EQ(text(150'025, 3 * kDay), "150,025 blocked names, refreshed 3 days ago.");
    EXPECT_EQ(text(26, 10), "26 blocked names, refreshed just now.");
    EXPECT_EQ(text(26, 600), "26 blocked names, refreshed 10 minutes ago.");
    EXPECT_EQ(text(1, 5 * kHour), "One blocked name, refreshed 5 hours ago.");
    EXPECT_EQ(text(26, -90), "26 blocked names, refreshed just now.") << "Pi-hole's clock is ahead";
}

TEST(ListsText, Knows_a_pihole_that_never_had_any)
{
    PiholeSummary never;
    never.domainsBlocked = -2;
    never.listsRun = 0;
    EXPECT_EQ(listsText(never, kNow), u"0 blocked names, never refreshed."_s);
    EXPECT_EQ(listsText(std::nullopt, kNow), u"Pi-hole has not told about its lists yet."_s);
    EXPECT_EQ(listsText(PiholeSummary{}, kNow), u"Pi-hole has not told about its lists yet."_s);
}

TEST(ListsHint, Comes_when_the_lists_are_over_eight_days_old)
{
    EXPECT_EQ(listsHint(listsOf(26, 8 * kDay), kNow), QString());
    EXPECT_TRUE(listsHint(listsOf(26, 8 * kDay + 1), kNow).startsWith(u"The lists are more than 8 days old."_s));
    EXPECT_EQ(listsHint(std::nullopt, kNow), QString());
    EXPECT_EQ(listsHint(listsOf(-2, kNow.toSecsSinceEpoch()), kNow), QString()) << "never had any";
}
