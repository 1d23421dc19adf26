#include "tests/flows/in_state.h"
#include "tests/flows/pihole_files.h"

#include <QDir>

namespace corvane::test {

namespace {

using std::chrono::seconds;

/// Every colour and banner that was shown since it was made.
class Shown : public QObject {
public:
    explicit Shown(AppModel &model)
    {
        connect(&model, &AppModel::iconChanged, this, [this, &model] { m_icons.append(model.icon()); });
        connect(&model, &AppModel::showDeadDNSBannerChanged, this,
                [this, &model] { m_banners += model.showDeadDNSBanner() ? 1 : 0; });
        connect(&model, &AppModel::statusNoteChanged, this, [this, &model] { m_notes.append(model.statusNote()); });
    }

    [[nodiscard]] bool red() const { return m_icons.contains(MenuIcon::NotAnswering) || m_banners > 0; }
    [[nodiscard]] const QStringList &notes() const { return m_notes; }

private:
    QList<MenuIcon> m_icons;
    QStringList m_notes;
    int m_banners = 0;
};

/// A Mac that asks its Pi-hole, which takes the time that a real one takes to start.
class TrueTimes : public Protected {
protected:
    TrueTimes()
    {
        Mac::ctl(QStringLiteral("pihole times real"));
        Mac::ctl(QStringLiteral("pihole login-limit 100"));
        relaunchInRealTime();
        run(model().refreshStatus(Stats::Include));
    }

    void expectProtectedWithCounters()
    {
        EXPECT_EQ(model().icon(), MenuIcon::Active) << model().statusLine().toStdString();
        EXPECT_TRUE(model().summary()) << model().apiMessage().toStdString();
        EXPECT_TEXT(model().apiMessage(), "");
        EXPECT_FALSE(model().starting());
        EXPECT_TEXT(model().statusNote(), "");
    }
};

const QString kStarting = QStringLiteral("Pi-hole is starting. It answers in a moment.");

} // namespace

TEST_F(TrueTimes, A_restart_ends_in_green_with_counters_and_never_shows_red)
{
    const Shown shown(model());
    run(model().restartPihole());
    expectProtectedWithCounters();
    EXPECT_FALSE(shown.red());
    EXPECT_TRUE(shown.notes().contains(kStarting));
}

TEST_F(TrueTimes, A_pause_of_five_minutes_has_less_than_five_left_at_once)
{
    run(model().pauseBlocking(PauseLength::FiveMinutes));
    ASSERT_TRUE(model().blocking() && model().blocking()->timerSeconds);
    EXPECT_LT(*model().blocking()->timerSeconds, 300);
}

TEST_F(TrueTimes, A_start_ends_in_green_with_counters)
{
    run(model().stopPihole());
    EXPECT_EQ(model().icon(), MenuIcon::NotAnswering);
    const Shown shown(model());
    run(model().startPiholeNow());
    expectProtectedWithCounters();
    EXPECT_FALSE(shown.red()) << "from red to starting, and from there to green";
    EXPECT_TRUE(shown.notes().contains(kStarting));
}

TEST_F(TrueTimes, A_restored_backup_ends_in_green_with_counters_and_never_shows_red)
{
    user.picks(QDir::home().filePath(QStringLiteral("mine.zip")));
    run(model().exportBackup());
    const Shown shown(model());
    run(model().importBackup());
    EXPECT_TEXT(model().notice(), "Backup restored.");
    expectProtectedWithCounters();
    EXPECT_FALSE(shown.red());
}

TEST_F(TrueTimes, A_new_web_port_ends_in_green_with_counters_and_never_shows_red)
{
    const Shown shown(model());
    run(model().changeWebPort(8085));
    waitForOperation(model().maintOp());
    waitFor([this] { return model().statusChecked() && model().summary().has_value(); }, "Pi-hole is counted again");
    expectProtectedWithCounters();
    EXPECT_FALSE(shown.red());
}

TEST_F(TrueTimes, A_stop_while_pihole_starts_is_told_at_once)
{
    Mac::ctl(QStringLiteral("fault dig fail 9"));
    launch(model().refreshAfterStart());
    waitFor([this] { return model().starting(); }, "Pi-hole starts");
    run(model().stopPihole());
    EXPECT_FALSE(model().starting());
    EXPECT_TRUE(model().statusChecked());
    EXPECT_EQ(model().icon(), MenuIcon::NotAnswering);
}

TEST_F(TrueTimes, A_removal_while_pihole_starts_is_told_at_once)
{
    Mac::ctl(QStringLiteral("fault dig fail 9"));
    launch(model().refreshAfterStart());
    waitFor([this] { return model().starting(); }, "Pi-hole starts");
    run(model().removePihole());
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
    EXPECT_FALSE(model().starting());
    EXPECT_TRUE(model().statusChecked());
}

TEST_F(Protected, A_pihole_that_does_not_come_is_told_after_ten_seconds)
{
    run(model().refreshStatus(Stats::Include));
    const auto before = clock.waited();
    Mac::ctl(QStringLiteral("fault dig fail 9"));
    auto restart = model().restartPihole();
    waitFor([this] { return model().starting(); }, "Pi-hole starts");
    EXPECT_EQ(model().icon(), MenuIcon::Unknown);
    EXPECT_FALSE(model().showDeadDNSBanner());
    EXPECT_TEXT(model().statusNote(), kStarting.toStdString());
    run(std::move(restart));
    EXPECT_EQ(clock.waited() - before, seconds(10));
    EXPECT_EQ(model().icon(), MenuIcon::NotAnswering);
    EXPECT_TRUE(model().showDeadDNSBanner());
    EXPECT_TEXT(model().statusNote(), "Its container runs, but Pi-hole does not answer.");
}

TEST_F(Protected, A_container_that_does_not_run_is_not_waited_for)
{
    run(model().refreshStatus(Stats::Include));
    const auto before = clock.waited();
    Mac::ctl(QStringLiteral("container stop"));
    run(model().refreshAfterStart());
    EXPECT_LT(clock.waited() - before, seconds(1)) << "which is what it waits between two looks";
    EXPECT_EQ(model().icon(), MenuIcon::NotAnswering);
}

TEST_F(Protected, A_pihole_that_answers_at_once_is_not_waited_for)
{
    const auto before = clock.waited();
    run(model().refreshAfterStart());
    EXPECT_LT(clock.waited() - before, seconds(1)) << "which is what it waits between two looks";
    EXPECT_TRUE(model().statusChecked());
    EXPECT_TRUE(model().summary());
}

TEST_F(Protected, A_refresh_that_finds_nothing_while_pihole_starts_says_nothing)
{
    run(model().refreshStatus(Stats::Include));
    Mac::ctl(QStringLiteral("fault dig fail 9"));
    auto watch = model().refreshAfterStart();
    waitFor([this] { return model().starting(); }, "Pi-hole starts");
    run(model().refreshStatus(Stats::Include));
    EXPECT_EQ(model().icon(), MenuIcon::Unknown);
    Mac::ctl(QStringLiteral("fault clear"));
    run(std::move(watch));
    EXPECT_EQ(model().icon(), MenuIcon::Active);
}

TEST_F(Running, A_refresh_asked_for_during_a_refresh_is_done_right_after_it)
{
    Mac::ctl(QStringLiteral("fault docker late 0.3 --at 1"));
    auto first = model().refreshStatus(Stats::Leave);
    run(model().refreshStatus(Stats::Include));
    EXPECT_FALSE(model().statusChecked()) << "the second does not wait for the first";
    run(std::move(first));
    EXPECT_EQ(Mac::calls(QStringLiteral("scutil")).size(), 2);
    EXPECT_TRUE(model().summary()) << "with the counters that were asked for";
}

TEST_F(Running, An_answer_that_comes_back_brings_its_counters_with_it)
{
    Mac::ctl(QStringLiteral("container stop"));
    launch(model().bootstrap());
    waitFor([this] { return model().statusChecked(); }, "the first pass found nothing");
    Mac::ctl(QStringLiteral("container start"));
    waitFor([this] { return model().answering(); }, "a pass finds it answering");
    const auto passes = Mac::calls(QStringLiteral("scutil")).size();
    waitFor([this] { return model().summary().has_value(); }, "the counters are there");
    EXPECT_EQ(Mac::calls(QStringLiteral("scutil")).size(), passes) << "without another pass";
}

} // namespace corvane::test
