#include "tests/flows/in_state.h"

#include <QDateTime>

namespace corvane::test {

namespace {

class PauseLengths : public Running {
protected:
    PauseLengths()
    {
        Mac::ctl(QStringLiteral("pihole login-limit 100"));
        run(model().refreshStatus(Stats::Include));
    }

    /// The Mac has slept, and Pi-hole's timer with it, until so long before the pause should end.
    void wakeUp(qint64 secondsBeforeTheEnd)
    {
        settings.setValue(QStringLiteral("pauseEnd"), QDateTime::currentSecsSinceEpoch() + secondsBeforeTheEnd);
    }

    double left() { return model().blocking() ? model().blocking()->timerSeconds.value_or(-1) : -1; }
};

} // namespace

TEST_F(PauseLengths, Each_is_pihole_s_own_timer)
{
    run(model().pauseBlocking(PauseLength::HalfMinute));
    EXPECT_TEXT(model().apiMessage(), "Blocking is paused for 30 seconds.");
    EXPECT_GT(left(), 20);
    EXPECT_LE(left(), 30);
    run(model().pauseBlocking(PauseLength::OneHour));
    EXPECT_TEXT(model().apiMessage(), "Blocking is paused for 1 hour.");
    EXPECT_GT(left(), 3500) << "the newer pause counts";
    run(model().pauseBlocking(PauseLength::UntilMorning));
    EXPECT_TEXT(model().apiMessage(), "Blocking is paused until tomorrow morning, 07:00.");
    EXPECT_GE(left(), 3 * 3600 - 30);
    EXPECT_LE(left(), 27 * 3600);
    run(model().resumeBlocking());
    EXPECT_TRUE(model().blocking()->enabled);
}

TEST_F(PauseLengths, What_is_left_is_read_from_pihole)
{
    run(model().pauseBlocking(PauseLength::OneHour));
    Mac::ctl(QStringLiteral("pihole advance 1800"));
    run(model().refreshBlocking());
    EXPECT_LE(left(), 1800.5);
    EXPECT_GT(left(), 1700);
}

TEST_F(PauseLengths, Tomorrow_morning_comes_also_while_the_mac_sleeps)
{
    run(model().pauseBlocking(PauseLength::UntilMorning));
    wakeUp(600);
    run(model().refreshStatus(Stats::Include));
    EXPECT_LE(left(), 600);
    EXPECT_GT(left(), 500);
    wakeUp(-60);
    run(model().refreshStatus(Stats::Include));
    EXPECT_TRUE(model().blocking()->enabled) << "the morning has come";
}

TEST_F(PauseLengths, An_hour_is_counted_by_pihole_which_sleeps_with_the_mac)
{
    run(model().pauseBlocking(PauseLength::OneHour));
    wakeUp(60);
    run(model().refreshStatus(Stats::Include));
    EXPECT_GT(left(), 3500);
}

TEST_F(PauseLengths, Every_one_still_ends_after_a_restart)
{
    for (const PauseLength::Name length : {PauseLength::HalfMinute, PauseLength::OneHour, PauseLength::UntilMorning}) {
        run(model().pauseBlocking(length));
        const double before = left();
        run(model().restartPihole());
        EXPECT_TRUE(model().blocking()->enabled || (left() > 0 && left() <= before)) << length;
    }
}

TEST_F(PauseLengths, Its_message_goes_when_pihole_does)
{
    run(model().pauseBlocking(PauseLength::OneHour));
    run(model().stopPihole());
    EXPECT_TEXT(model().apiMessage(), "");
}

} // namespace corvane::test
