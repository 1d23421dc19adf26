#include "ui/decisions/dashboard_texts.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace corvane::test {

namespace {

/// The number that the dashboard shows for it.
QString counter(const QString &id, const std::optional<PiholeSummary> &summary)
{
    const QList<Row> rows = counterRows(summary, std::nullopt);
    const auto row = std::ranges::find(rows, id, &Row::id);
    return row == rows.end() ? QString() : row->detail;
}

TEST(DashboardTexts, Without_a_summary_every_counter_is_a_dash)
{
    const QList<Row> rows = counterRows(std::nullopt, std::nullopt);
    EXPECT_EQ(rows.size(), 4);
    for (const Row &row : rows)
        EXPECT_EQ(row.detail, QStringLiteral("-")) << qPrintable(row.id);
}

TEST(DashboardTexts, The_percentage_has_one_digit_after_the_point)
{
    const QString share = QStringLiteral("blockedPercent");
    EXPECT_EQ(counter(share, PiholeSummary{100, 12, 12.345}), QStringLiteral("12.3%"));
    EXPECT_EQ(counter(share, PiholeSummary{0, 0, 0}), QStringLiteral("0.0%"));
    EXPECT_EQ(counter(share, PiholeSummary{1600, 100, 6.25}), QStringLiteral("6.2%"));
    EXPECT_EQ(counter(share, PiholeSummary{1600, 108, 6.75}), QStringLiteral("6.8%"));
    EXPECT_EQ(counter(QStringLiteral("queries"), PiholeSummary{1234567, 0, 0}), QStringLiteral("1234567"));
}

TEST(DashboardTexts, Only_a_log_that_was_not_saved_is_told_of_beside_the_log)
{
    const QString trouble = QStringLiteral("Could not save the log: No space left on device");
    EXPECT_EQ(logTrouble(trouble), trouble);
    EXPECT_EQ(logTrouble(QStringLiteral("Blocking is paused for 5 minutes.")), QString());
    EXPECT_EQ(logTrouble({}), QString());
}

struct Pause {
    double seconds;
    const char *text;
};

class PauseText : public testing::TestWithParam<Pause> {};

TEST_P(PauseText, Counts_a_started_minute_whole)
{
    EXPECT_EQ(blockingText(PiholeBlocking{false, GetParam().seconds}), QString::fromLatin1(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(Seconds, PauseText,
                         testing::Values(Pause{299, "Paused (5 min left)"}, Pause{300, "Paused (6 min left)"},
                                         Pause{60, "Paused (2 min left)"}, Pause{59.9, "Paused (1 min left)"},
                                         Pause{30, "Paused (1 min left)"}, Pause{0, "Paused (1 min left)"},
                                         Pause{-0.1, "Paused (1 min left)"},
                                         Pause{1e300, "Paused (1000000000000001 min left)"}));

TEST(DashboardTexts, Blocking_reads_on_off_or_unknown)
{
    EXPECT_EQ(blockingText(std::nullopt), QStringLiteral("-"));
    EXPECT_EQ(blockingText(PiholeBlocking{true, std::nullopt}), QStringLiteral("On"));
    EXPECT_EQ(blockingText(PiholeBlocking{false, std::nullopt}), QStringLiteral("Off"));
}

TEST(DashboardTexts, Resuming_is_offered_only_when_blocking_is_known_to_be_off)
{
    EXPECT_EQ(pauseLabel(std::nullopt), QStringLiteral("Pause blocking 5 minutes"));
    EXPECT_EQ(pauseLabel(PiholeBlocking{true, std::nullopt}), QStringLiteral("Pause blocking 5 minutes"));
    EXPECT_EQ(pauseLabel(PiholeBlocking{false, 10.0}), QStringLiteral("Resume blocking"));
}

TEST(DashboardTexts, Stopping_is_offered_only_while_Pi_hole_runs)
{
    EXPECT_EQ(startStopLabel(ContainerState::running(QStringLiteral("starting"))), QStringLiteral("Stop Pi-hole"));
    EXPECT_EQ(startStopLabel(ContainerState::dockerDown()), QStringLiteral("Start Pi-hole"));
    EXPECT_EQ(startStopLabel(ContainerState::missing()), QStringLiteral("Start Pi-hole"));
    EXPECT_EQ(startStopLabel(ContainerState::stopped({})), QStringLiteral("Start Pi-hole"));
}

TEST(DashboardTexts, The_dot_is_green_only_when_all_is_well)
{
    EXPECT_EQ(dotTint(MenuIcon::Active), Tint::Green);
    EXPECT_EQ(dotTint(MenuIcon::NotUsed), Tint::Orange);
    EXPECT_EQ(dotTint(MenuIcon::NotAnswering), Tint::Red);
    EXPECT_EQ(dotTint(MenuIcon::Stopped), Tint::Gray);
    EXPECT_EQ(dotTint(MenuIcon::Unknown), Tint::Gray);
}

} // namespace

} // namespace corvane::test
