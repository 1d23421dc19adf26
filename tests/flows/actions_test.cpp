#include "tests/flows/in_state.h"

#include <QJsonDocument>

namespace corvane::test {

namespace {

/// The Mac asks a Pi-hole whose engine is off.
class DeadEngine : public FlowTest {
protected:
    DeadEngine()
        : FlowTest(QStringLiteral("dead-engine"))
    {}
};

} // namespace

TEST_F(Running, A_pause_lasts_300_seconds_and_says_5_minutes)
{
    run(model().refreshStatus(Stats::Include));
    run(model().togglePause());
    ASSERT_TRUE(model().blocking());
    EXPECT_FALSE(model().blocking()->enabled);
    ASSERT_TRUE(model().blocking()->timerSeconds);
    EXPECT_GT(*model().blocking()->timerSeconds, 290);
    EXPECT_LE(*model().blocking()->timerSeconds, 300);
    EXPECT_TEXT(model().apiMessage(), "Blocking is paused for 5 minutes.");

    run(model().togglePause());
    EXPECT_TRUE(model().blocking()->enabled);
    EXPECT_FALSE(model().blocking()->timerSeconds);
    EXPECT_TEXT(model().apiMessage(), "Blocking is back on.");
}

TEST_F(Running, A_pause_before_the_state_is_known_pauses)
{
    ASSERT_FALSE(model().blocking());
    run(model().togglePause());
    EXPECT_TEXT(model().apiMessage(), "Blocking is paused for 5 minutes.");
    EXPECT_FALSE(model().blocking()->enabled);
}

TEST_F(Running, A_pause_whose_state_cannot_be_read_changes_nothing_and_says_why)
{
    Mac::ctl(QStringLiteral("container stop"));
    run(model().togglePause());
    EXPECT_FALSE(model().blocking());
    EXPECT_TEXT(model().apiMessage(), "Pi-hole did not answer on 127.0.0.1.");
}

TEST_F(Running, A_pause_that_pihole_does_not_hear_is_told)
{
    Mac::ctl(QStringLiteral("container stop"));
    run(model().pauseBlocking());
    EXPECT_TEXT(model().apiMessage(), "Could not pause blocking: Pi-hole did not answer on 127.0.0.1.");
    run(model().resumeBlocking());
    EXPECT_TEXT(model().apiMessage(), "Could not resume blocking: Pi-hole did not answer on 127.0.0.1.");
}

TEST_F(Running, Stop_start_and_restart_do_what_they_say)
{
    run(model().refreshStatus(Stats::Include));
    run(model().toggleStartStop());
    EXPECT_EQ(model().containerState().kind(), ContainerState::Kind::Stopped);
    EXPECT_FALSE(model().answering());
    EXPECT_TEXT(model().startMessage(), "");

    run(model().toggleStartStop());
    EXPECT_TRUE(model().containerState().isRunning());
    run(model().restartPihole());
    EXPECT_TRUE(model().containerState().isRunning());
    const QStringList calls = Mac::calls(QStringLiteral("docker"));
    EXPECT_TRUE(calls.contains(QStringLiteral("stop pihole")));
    EXPECT_TRUE(calls.contains(QStringLiteral("start pihole")));
    EXPECT_TRUE(calls.contains(QStringLiteral("restart pihole")));
}

TEST_F(Running, A_second_press_while_the_container_stops_does_nothing)
{
    run(model().refreshStatus(Stats::Include));
    Flow<> first = model().stopPihole();
    EXPECT_TRUE(model().busy().contains(QStringLiteral("container")));
    run(model().restartPihole());
    run(std::move(first));
    EXPECT_TRUE(model().busy().isEmpty());
    EXPECT_FALSE(Mac::calls(QStringLiteral("docker")).contains(QStringLiteral("restart pihole")));
}

TEST_F(Running, A_refused_restart_is_told_in_plain_words_and_the_next_action_clears_it)
{
    Mac::ctl(QStringLiteral("engine stop"));
    run(model().restartPihole());
    EXPECT_TEXT(model().startMessage(), "Docker is not running. Start Colima first (step 3).");
    const QString start = QStringLiteral("start");
    EXPECT_TRUE(
        model().notes().value(start).toString().contains(QStringLiteral("Cannot connect to the Docker daemon")));
    Mac::ctl(QStringLiteral("engine start"));
    run(model().restartPihole());
    EXPECT_TEXT(model().startMessage(), "");
    EXPECT_TEXT(model().notes().value(start).toString(), "");
}

TEST_F(Running, Starting_without_a_container_names_the_step_that_makes_one)
{
    Mac::ctl(QStringLiteral("container rm"));
    run(model().startPiholeNow());
    EXPECT_TEXT(model().startMessage(), "Pi-hole is not installed yet. Run step 4 of the wizard.");
    EXPECT_TRUE(model().containerState().isMissing());
}

TEST_F(DeadEngine, Start_brings_up_colima_first_and_pihole_after_it)
{
    run(model().refreshStatus(Stats::Include));
    EXPECT_TRUE(model().showDeadDNSBanner());
    run(model().startPiholeNow());
    EXPECT_TEXT(model().maintOp()->title(), "Starting Colima");
    waitForOperation(model().maintOp());
    waitFor([this] { return model().answering(); }, "Pi-hole answers");
    EXPECT_EQ(model().icon(), MenuIcon::Active);
    EXPECT_FALSE(model().showDeadDNSBanner());
    EXPECT_TRUE(Mac::calls(QStringLiteral("colima")).contains(QStringLiteral("start --cpu 2 --memory 2 --disk 10")));
    EXPECT_TRUE(Mac::calls(QStringLiteral("docker")).contains(QStringLiteral("start pihole")));
}

TEST_F(DeadEngine, A_colima_that_does_not_start_is_told_and_pihole_is_left_alone)
{
    Mac::ctl(QStringList{QStringLiteral("colima"), QStringLiteral("fail"), QStringLiteral("error starting vm")});
    run(model().startPiholeNow());
    waitForOperation(model().maintOp());
    EXPECT_TEXT(model().notice(), "Colima did not start. See the log.");
    EXPECT_FALSE(Mac::calls(QStringLiteral("docker")).contains(QStringLiteral("start pihole")));
}

TEST_F(DeadEngine, A_second_start_while_colima_starts_does_nothing)
{
    Mac::ctl(QStringLiteral("fault colima late 0.3"));
    run(model().startPiholeNow());
    run(model().startPiholeNow());
    waitForOperation(model().maintOp());
    EXPECT_EQ(Mac::calls(QStringLiteral("colima")).filter(QStringLiteral("start")).size(), 1);
}

TEST_F(Homebrew, Without_colima_the_wizard_step_is_named)
{
    run(model().startPiholeNow());
    EXPECT_TEXT(model().notice(), "Colima is not installed. Use step 3 of the wizard.");
    EXPECT_FALSE(model().operationRunning());
}

TEST_F(Stopped, The_dashboard_opens_in_the_default_browser)
{
    model().openDashboard();
    waitFor([] { return !Mac::ctl(QStringLiteral("opened")).toArray().isEmpty(); }, "something was opened");
    const QString opened = QString::fromUtf8(QJsonDocument(Mac::ctl(QStringLiteral("opened")).toArray()).toJson());
    EXPECT_TRUE(opened.contains(QStringLiteral("http://127.0.0.1:8080/admin"))) << opened.toStdString();
}

} // namespace corvane::test
