#include "ui/decisions/rows.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

struct CheckLook {
    CheckState state;
    const char *symbol;
    Tint::Name tint;
};

class CheckBadge : public testing::TestWithParam<CheckLook> {};

TEST_P(CheckBadge, Has_the_symbol_of_its_state)
{
    const Badge badge = checkBadge(GetParam().state);
    EXPECT_EQ(badge.symbol, QString::fromLatin1(GetParam().symbol));
    EXPECT_EQ(badge.tint, GetParam().tint);
    EXPECT_FALSE(badge.spoken.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(States, CheckBadge,
                         testing::Values(CheckLook{CheckState::Unknown, "circle", Tint::Secondary},
                                         CheckLook{CheckState::Running, "", Tint::Secondary},
                                         CheckLook{CheckState::Ok, "checkmark.circle.fill", Tint::Green},
                                         CheckLook{CheckState::Warning, "exclamationmark.triangle.fill", Tint::Orange},
                                         CheckLook{CheckState::Failed, "xmark.octagon.fill", Tint::Red}));

TEST(BlockingRows, Are_empty_before_the_first_test)
{
    EXPECT_TRUE(blockingRows(std::nullopt).isEmpty());
    EXPECT_TRUE(blockingCounts(std::nullopt).isEmpty());
}

TEST(BlockingRows, Name_what_was_blocked_and_what_was_not)
{
    BlockingTestResult result;
    result.blockedDomain = QStringLiteral("ads.example.net");
    result.blockedKind = QStringLiteral("NXDOMAIN (the name does not exist)");
    result.allowedAnswer = QStringLiteral("1.2.3.4");
    const QList<Row> rows = blockingRows(result);
    EXPECT_EQ(rows.at(0).title, QStringLiteral("Blocked: ads.example.net NXDOMAIN (the name does not exist)"));
    EXPECT_EQ(rows.at(0).badge.tint, Tint::Green);
    EXPECT_EQ(rows.at(1).title, QStringLiteral("Allowed: example.com"));
    EXPECT_EQ(rows.at(1).detail, QStringLiteral("Answer: 1.2.3.4"));
}

TEST(BlockingRows, Say_when_nothing_was_blocked_and_why_that_may_be)
{
    BlockingTestResult result;
    result.allowedAnswer = QStringLiteral("no answer (timeout)");
    result.note = QStringLiteral("None of the test domains was blocked.");
    const QList<Row> rows = blockingRows(result);
    EXPECT_EQ(rows.at(0).title, QStringLiteral("Nothing was blocked"));
    EXPECT_TRUE(rows.at(0).detail.startsWith(QStringLiteral("No test tracker domain was blocked yet.")));
    EXPECT_TRUE(rows.at(0).detail.endsWith(*result.note));
    EXPECT_EQ(rows.at(0).badge.tint, Tint::Red);
    EXPECT_EQ(rows.at(1).detail, QStringLiteral("no answer (timeout)"));
    EXPECT_EQ(rows.at(1).badge.tint, Tint::Red);
}

TEST(BlockingRows, Count_only_what_could_be_read)
{
    BlockingTestResult result;
    result.queries = 120;
    EXPECT_TRUE(blockingCounts(result).isEmpty());
    result.blockedToday = 0;
    EXPECT_EQ(blockingCounts(result), QStringLiteral("From Pi-hole's API: Queries today: 120. Blocked today: 0"));
}

TEST(Services, Say_which_one_carries_the_connection_and_what_each_uses)
{
    const QList<Row> rows =
        serviceRows({{QStringLiteral("Wi-Fi %1"), {}, true},
                     {QStringLiteral("LAN"), {QStringLiteral("9.9.9.9"), QStringLiteral("::1")}, false}});
    EXPECT_EQ(rows.at(0).id, QStringLiteral("Wi-Fi %1"));
    EXPECT_EQ(rows.at(0).title, QStringLiteral("Wi-Fi %1  (used for your internet connection)"));
    EXPECT_EQ(rows.at(0).detail, QStringLiteral("DNS: Automatic"));
    EXPECT_EQ(rows.at(1).title, QStringLiteral("LAN"));
    EXPECT_EQ(rows.at(1).detail, QStringLiteral("DNS: 9.9.9.9, ::1"));
}

TEST(Services, Unknown_servers_are_called_unknown)
{
    EXPECT_EQ(serversInUse(std::nullopt), QStringLiteral("DNS servers macOS uses now: unknown"));
    EXPECT_EQ(serversInUse(ResolverReport()), QStringLiteral("DNS servers macOS uses now: unknown"));
    EXPECT_EQ(serversInUse(ResolverReport{{QStringLiteral("127.0.0.1"), QStringLiteral("1.1.1.1")}, true, {}}),
              QStringLiteral("DNS servers macOS uses now: 127.0.0.1, 1.1.1.1"));
}

TEST(OutcomeRows, Stand_in_the_order_of_the_steps_and_own_up_to_what_was_not_tested)
{
    Outcomes outcomes;
    outcomes.insert(QStringLiteral("pihole"), TestOutcome{true, QStringLiteral("all passed"), {}});
    outcomes.insert(QStringLiteral("system"), TestOutcome{false, QStringLiteral("0 of 3"), {}});
    const QList<Row> rows = outcomeRows(outcomes);
    ASSERT_EQ(rows.size(), 5);
    EXPECT_EQ(rows.at(0).detail, QStringLiteral("Not tested in this session."));
    EXPECT_EQ(rows.at(0).badge.symbol, QStringLiteral("circle"));
    EXPECT_EQ(rows.at(1).detail, QStringLiteral("all passed"));
    EXPECT_EQ(rows.at(1).badge.tint, Tint::Green);
    EXPECT_EQ(rows.at(3).badge.tint, Tint::Red);
    EXPECT_EQ(rows.at(4).title, QStringLiteral("Browser (step 7)"));
}

TEST(SystemVerdict, Is_silent_before_the_test)
{
    EXPECT_TRUE(systemVerdict({}).isEmpty());
    EXPECT_EQ(systemVerdict({{QStringLiteral("system"), TestOutcome{true, {}, {}}}}),
              QStringLiteral("This Mac uses Pi-hole"));
    EXPECT_EQ(systemVerdict({{QStringLiteral("system"), TestOutcome{false, {}, {}}}}), QStringLiteral("Not confirmed"));
}

TEST(TestResults, Are_those_of_the_dashboards_own_tests)
{
    EXPECT_TRUE(testResults({}).isEmpty());
    Outcomes outcomes;
    outcomes.insert(QStringLiteral("system"), TestOutcome{true, QStringLiteral("3 of 3"), {}});
    outcomes.insert(QStringLiteral("browser"), TestOutcome{true, QStringLiteral("found"), {}});
    const QList<Row> rows = testResults(outcomes);
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows.at(0).detail, QStringLiteral("3 of 3"));
}

TEST(ResolverWarning, Is_silent_before_the_test)
{
    ResolverReport report{{QStringLiteral("9.9.9.9")}, false, {QStringLiteral("not Pi-hole")}};
    const Outcomes tested{{QStringLiteral("system"), TestOutcome{false, {}, {}}}};
    EXPECT_TRUE(resolverWarning(report, {}).isEmpty());
    EXPECT_TRUE(resolverWarning(std::nullopt, tested).isEmpty());
    EXPECT_EQ(resolverWarning(report, tested), QStringLiteral("not Pi-hole"));
    report.explanation = QStringLiteral("no network");
    EXPECT_EQ(resolverWarning(report, tested), QStringLiteral("not Pi-hole\nno network"));
}

TEST(Tools, Show_what_is_there)
{
    const Row found = toolRow(QStringLiteral("Homebrew"), true);
    EXPECT_EQ(found.title, QStringLiteral("Homebrew"));
    EXPECT_EQ(found.badge.tint, Tint::Green);
    EXPECT_EQ(found.badge.spoken, QStringLiteral("found"));
    const Row missing = toolRow(QStringLiteral("colima"), false);
    EXPECT_EQ(missing.title, QStringLiteral("colima"));
    EXPECT_EQ(missing.badge.symbol, QStringLiteral("circle"));
    EXPECT_EQ(missing.badge.spoken, QStringLiteral("not found"));
}

TEST(Rows, A_failed_test_of_Docker_says_what_to_do)
{
    const QString test = QStringLiteral("docker");
    EXPECT_EQ(dockerHint({}, true), QString());
    EXPECT_EQ(dockerHint({{test, {true, {}, {}}}}, true), QString());
    EXPECT_EQ(dockerHint({{test, {false, {}, {}}}}, true),
              QStringLiteral("Docker does not answer. Start Colima, then test again."));
    EXPECT_EQ(dockerHint({{test, {false, {}, {}}}}, false),
              QStringLiteral("docker was not found. Install Colima and Docker first."));
}

} // namespace

} // namespace corvane::test
