#include "tests/flows/in_state.h"

#include <QSignalSpy>

namespace corvane::test {

namespace {

/// The questions for names of the world; Pi-hole's own name is asked for beside them.
qsizetype digs()
{
    QStringList calls = Mac::calls(QStringLiteral("dig"));
    calls.removeIf([](const QString &call) { return call.contains(QStringLiteral(" pi.hole ")); });
    return calls.size();
}

const char *const kStatistics = "Could not read the statistics: ";
const char *const kNothingBlocked =
    "None of the test domains was blocked. The block lists are downloaded on the first start, which takes about a "
    "minute. Press Test again soon.";

} // namespace

TEST_F(Running, A_tracker_is_blocked_with_0_0_0_0_and_a_normal_name_is_not)
{
    auto test = model().runBlockingTest();
    EXPECT_TRUE(model().busy().contains(QStringLiteral("blocking")));
    run(std::move(test));
    const auto result = model().blockingTest();
    ASSERT_TRUE(result);
    EXPECT_EQ(result->blockedKind, QStringLiteral("answered 0.0.0.0 (nowhere)"));
    EXPECT_EQ(result->blockedDomain, Mac::calls(QStringLiteral("dig")).first().section(u' ', -2, -2));
    EXPECT_EQ(digs(), 2) << "the first blocked name ends the search";
    EXPECT_FALSE(result->allowedAnswer.isEmpty());
    EXPECT_FALSE(result->allowedAnswer.startsWith(QStringLiteral("no answer")));
    ASSERT_TRUE(result->queries);
    EXPECT_GE(*result->queries, 2);
    ASSERT_TRUE(result->blockedToday);
    EXPECT_GE(*result->blockedToday, 1);
    EXPECT_FALSE(result->note);
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("blocking")));
    EXPECT_TEXT(model().outcomes().value(QStringLiteral("blocking")).summary,
                "A tracker domain was blocked and a normal one allowed");
    EXPECT_TRUE(quiet());
}

TEST_F(Running, A_tracker_that_does_not_exist_counts_as_blocked)
{
    Mac::ctl(QStringLiteral("pihole block-mode nxdomain"));
    run(model().runBlockingTest());
    EXPECT_EQ(model().blockingTest()->blockedKind, QStringLiteral("NXDOMAIN (the name does not exist)"));
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("blocking")));
}

TEST_F(Running, Statistics_that_cannot_be_read_are_noted_and_the_test_still_passes)
{
    Mac::ctl(QStringLiteral("pihole login-limit 1000"));
    model().setAdminPassword(QStringLiteral("not-the-password"));
    run(model().runBlockingTest());
    ASSERT_TRUE(model().blockingTest()->note);
    EXPECT_TEXT(*model().blockingTest()->note, std::string(kStatistics) + "Pi-hole refused the admin password.");
    EXPECT_FALSE(model().blockingTest()->queries);
    EXPECT_FALSE(model().blockingTest()->blockedToday);
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("blocking")));
}

TEST_F(Running, When_nothing_is_blocked_that_note_comes_before_all_others)
{
    Mac::ctl(QStringLiteral("pihole login-limit 1000"));
    run(model().pauseBlocking());
    ASSERT_TEXT(model().apiMessage(), "Blocking is paused for 5 minutes.");
    model().setAdminPassword(QStringLiteral("not-the-password"));
    const auto before = digs();
    run(model().runBlockingTest());
    EXPECT_FALSE(model().blockingTest()->blockedDomain);
    EXPECT_FALSE(model().blockingTest()->blockedKind);
    EXPECT_TEXT(*model().blockingTest()->note, kNothingBlocked);
    EXPECT_EQ(digs() - before, 3 + 1) << "three trackers, one normal name";
    EXPECT_FALSE(passed(model().outcomes(), QStringLiteral("blocking")));
    EXPECT_TEXT(model().outcomes().value(QStringLiteral("blocking")).summary, "Blocking test did not pass");
}

TEST_F(Running, A_silent_pihole_gives_no_answer_by_timeout)
{
    Mac::ctl(QStringLiteral("pihole silent on"));
    for (const char *tracker : {"doubleclick", "google"}) // whose three seconds each prove nothing more
        Mac::ctl(QStringLiteral("fault dig fail 9 --when *%1*").arg(QLatin1String(tracker)));
    run(model().runBlockingTest());
    EXPECT_TEXT(model().blockingTest()->allowedAnswer, "no answer (timeout)");
    EXPECT_TEXT(*model().blockingTest()->note, kNothingBlocked);
}

TEST_F(Running, A_normal_name_that_does_not_resolve_is_told_with_its_status)
{
    Mac::ctl(QStringLiteral("internet off"));
    run(model().runBlockingTest());
    EXPECT_TRUE(model().blockingTest()->blockedDomain);
    EXPECT_TEXT(model().blockingTest()->allowedAnswer, "no answer (SERVFAIL)");
    EXPECT_FALSE(passed(model().outcomes(), QStringLiteral("blocking")));
}

TEST_F(Running, A_second_blocking_test_during_the_first_does_nothing)
{
    QSignalSpy results(&model(), &AppModel::blockingTestChanged);
    auto first = model().runBlockingTest();
    run(model().runBlockingTest());
    EXPECT_EQ(results.count(), 0);
    run(std::move(first));
    EXPECT_EQ(results.count(), 1);
    EXPECT_EQ(digs(), 2);
}

} // namespace corvane::test
