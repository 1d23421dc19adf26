#include "tests/flows/in_state.h"

#include <QDateTime>
#include <QDir>

namespace corvane::test {

namespace {

/// A Pi-hole that blocks, and may be logged in to as often as these tests do.
class Pauses : public Running {
protected:
    Pauses()
    {
        Mac::ctl(QStringLiteral("pihole login-limit 100"));
        run(model().refreshStatus(Stats::Include));
    }

    /// Docker, or the Mac, starts Pi-hole again behind Corvane's back; its timer is gone.
    void restartBehindOurBack()
    {
        Mac::ctl(QStringLiteral("container stop"));
        Mac::ctl(QStringLiteral("container start"));
    }

    void expectPausedForAWhile()
    {
        ASSERT_TRUE(model().blocking());
        EXPECT_FALSE(model().blocking()->enabled);
        ASSERT_TRUE(model().blocking()->timerSeconds) << "off for good";
        EXPECT_LE(*model().blocking()->timerSeconds, 300);
        EXPECT_GT(*model().blocking()->timerSeconds, 200);
    }

    void expectBlocking()
    {
        ASSERT_TRUE(model().blocking());
        EXPECT_TRUE(model().blocking()->enabled);
        EXPECT_FALSE(model().blocking()->timerSeconds);
    }

    /// As if the pause had ended this long ago.
    void pauseEnded(qint64 secondsAgo)
    {
        settings.setValue(QStringLiteral("pauseEnd"), QDateTime::currentSecsSinceEpoch() - secondsAgo);
    }
};

} // namespace

TEST_F(Pauses, A_pause_still_ends_after_a_restart)
{
    run(model().pauseBlocking());
    run(model().restartPihole());
    expectPausedForAWhile();
}

TEST_F(Pauses, A_pause_still_ends_when_docker_restarts_pihole)
{
    run(model().pauseBlocking());
    restartBehindOurBack();
    run(model().refreshStatus(Stats::Include));
    expectPausedForAWhile();
}

TEST_F(Pauses, A_pause_still_ends_when_corvane_was_started_anew)
{
    run(model().pauseBlocking());
    relaunch();
    restartBehindOurBack();
    run(model().refreshStatus(Stats::Include));
    expectPausedForAWhile();
}

TEST_F(Pauses, A_pause_that_was_over_before_pihole_came_back_is_ended)
{
    run(model().pauseBlocking());
    Mac::ctl(QStringLiteral("container stop"));
    pauseEnded(3600);
    relaunch();
    Mac::ctl(QStringLiteral("container start"));
    run(model().refreshStatus(Stats::Include));
    expectBlocking();
}

TEST_F(Pauses, A_clock_that_is_set_back_makes_no_pause_longer)
{
    run(model().pauseBlocking());
    pauseEnded(-86'400);
    restartBehindOurBack();
    run(model().refreshStatus(Stats::Include));
    expectPausedForAWhile();
}

TEST_F(Pauses, A_pause_that_was_ended_does_not_come_back)
{
    run(model().pauseBlocking());
    run(model().resumeBlocking());
    restartBehindOurBack();
    run(model().refreshStatus(Stats::Include));
    expectBlocking();
}

TEST_F(Pauses, A_pause_that_ran_out_concerns_no_later_one)
{
    run(model().pauseBlocking());
    Mac::ctl(QStringLiteral("pihole advance 301"));
    run(model().refreshStatus(Stats::Include));
    expectBlocking();
    EXPECT_TRUE(QCoro::waitFor(model().api().setBlocking(false, std::nullopt)));
    run(model().refreshStatus(Stats::Include));
    ASSERT_TRUE(model().blocking());
    EXPECT_FALSE(model().blocking()->enabled) << "somebody else switched it off, on Pi-hole's own page";
    EXPECT_TEXT(model().statusNote(), "Blocking is off until you resume it.");
}

TEST_F(Pauses, A_backup_that_is_made_during_a_pause_does_not_carry_it)
{
    run(model().pauseBlocking());
    user.picks(QDir::home().filePath(QStringLiteral("paused.zip")));
    run(model().exportBackup());
    run(model().refreshStatus(Stats::Include));
    expectPausedForAWhile();

    run(model().resumeBlocking());
    run(model().importBackup());
    ASSERT_TEXT(model().notice(), "Backup restored.");
    expectBlocking();
}

TEST_F(Pauses, A_backup_that_is_restored_during_a_pause_leaves_it_its_end)
{
    user.picks(QDir::home().filePath(QStringLiteral("mine.zip")));
    run(model().exportBackup());
    run(model().pauseBlocking());
    run(model().importBackup());
    ASSERT_TEXT(model().notice(), "Backup restored.");
    ASSERT_TRUE(model().blocking());
    EXPECT_TRUE(model().blocking()->enabled || model().blocking()->timerSeconds) << "off for good";
}

TEST_F(Pauses, A_pause_that_pihole_refused_is_none)
{
    const QString password = model().adminPassword();
    model().setAdminPassword(QStringLiteral("not-the-password"));
    run(model().pauseBlocking());
    model().setAdminPassword(password);
    model().configureAPI();
    EXPECT_TRUE(QCoro::waitFor(model().api().setBlocking(false, std::nullopt)));
    run(model().refreshStatus(Stats::Include));
    ASSERT_TRUE(model().blocking());
    EXPECT_FALSE(model().blocking()->enabled);
    EXPECT_FALSE(model().blocking()->timerSeconds);
}

} // namespace corvane::test
