#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QTest>

namespace corvane::test {

namespace {

class Dashboard : public Screen {};

TEST_F(Dashboard, Without_a_summary_all_counters_read_a_dash)
{
    openDashboard();
    for (const char *name : {"queriesValue", "blockedValue", "blockedPercentValue", "blockingValue"})
        EXPECT_EQ(textOf(QString::fromLatin1(name)), QStringLiteral("-")) << name;
}

TEST_F(Dashboard, Shows_the_status_and_the_numbers_of_today)
{
    openDashboard();
    showRunning(m_app);
    EXPECT_EQ(textOf(QStringLiteral("statusLine")), m_app.statusLine());
    EXPECT_EQ(textOf(QStringLiteral("queriesValue")), QStringLiteral("18342"));
    EXPECT_EQ(textOf(QStringLiteral("blockedValue")), QStringLiteral("4127"));
    EXPECT_EQ(textOf(QStringLiteral("blockedPercentValue")), QStringLiteral("22.5%"));
    EXPECT_EQ(textOf(QStringLiteral("blockingValue")), QStringLiteral("On"));
}

TEST_F(Dashboard, A_pause_shows_its_minutes_and_the_way_to_end_it)
{
    openDashboard();
    showPaused(m_app, 299);
    EXPECT_TRUE(textOf(QStringLiteral("blockingValue")).contains(QStringLiteral("5 min")));
    EXPECT_EQ(textOf(QStringLiteral("pauseButton")), m_looks.pauseLabel());
    EXPECT_EQ(textOf(QStringLiteral("apiMessage")), m_app.apiMessage());
}

TEST_F(Dashboard, While_Pi_hole_runs_only_stop_and_restart_are_on)
{
    openDashboard();
    showRunning(m_app);
    EXPECT_FALSE(enabled(QStringLiteral("startButton")));
    EXPECT_TRUE(enabled(QStringLiteral("stopButton")));
    EXPECT_TRUE(enabled(QStringLiteral("restartButton")));
    showStopped(m_app);
    EXPECT_TRUE(enabled(QStringLiteral("startButton")));
    EXPECT_FALSE(enabled(QStringLiteral("stopButton")));
    EXPECT_FALSE(enabled(QStringLiteral("restartButton")));
}

TEST_F(Dashboard, While_an_operation_runs_the_actions_are_off)
{
    openDashboard();
    showRunning(m_app);
    m_app.setLatestTag(QStringLiteral("2026.10.0"));
    CommandStep wait;
    wait.label = QStringLiteral("sleep 30");
    wait.exe = QStringLiteral("/bin/sleep");
    wait.args = {QStringLiteral("30")};
    m_app.maintOp()->start(QStringLiteral("Updating"), {wait});
    for (const char *name : {"pauseButton", "openDashboardButton", "startButton", "stopButton", "restartButton",
                             "checkForUpdatesButton", "updateButton", "backUpButton", "restoreBackupButton"})
        EXPECT_FALSE(enabled(QString::fromLatin1(name))) << name;
    EXPECT_TRUE(shows(QStringLiteral("maintLogCancel")));
    click(QStringLiteral("maintLogCancel"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_app.maintOp()->running(); }));
    EXPECT_TRUE(enabled(QStringLiteral("stopButton")));
    EXPECT_TRUE(reads(QStringLiteral("Cancelled.")));
    EXPECT_TRUE(shows(QStringLiteral("maintLogDetailsHeader")));
}

TEST_F(Dashboard, An_update_is_on_offer_only_when_there_is_a_newer_version)
{
    openDashboard();
    EXPECT_FALSE(enabled(QStringLiteral("updateButton")));
    m_app.setLatestTag(QStringLiteral("2026.10.0"));
    m_app.setUpdateMessage(QStringLiteral("A newer one."));
    EXPECT_TRUE(enabled(QStringLiteral("updateButton")));
    EXPECT_TRUE(shows(QStringLiteral("updateMessage")));
}

TEST_F(Dashboard, The_tests_cannot_be_run_again_while_one_of_them_runs)
{
    openDashboard();
    for (const char *key : {"pihole", "blocking", "system"}) {
        m_app.setBusy({QString::fromLatin1(key)});
        EXPECT_FALSE(enabled(QStringLiteral("runTestsAgainButton"))) << key;
    }
    m_app.setBusy({});
    EXPECT_TRUE(enabled(QStringLiteral("runTestsAgainButton")));
}

TEST_F(Dashboard, The_admin_page_opens_in_the_browser)
{
    openDashboard();
    click(QStringLiteral("openDashboardButton"));
    EXPECT_EQ(m_workspace.opened, QList<QUrl>{QUrl(QStringLiteral("http://127.0.0.1:8080/admin"))});
}

TEST_F(Dashboard, Log_buttons_wait_for_a_log)
{
    openDashboard();
    EXPECT_TRUE(enabled(QStringLiteral("refreshLogButton")));
    EXPECT_FALSE(enabled(QStringLiteral("copyLogButton")));
    EXPECT_FALSE(enabled(QStringLiteral("saveLogButton")));
}

TEST_F(Dashboard, The_buttons_stay_in_their_place_when_a_message_comes)
{
    openDashboard();
    showRunning(m_app);
    settle();
    const QPointF before = find(QStringLiteral("pauseButton"))->mapToScene(QPointF());
    m_app.setApiMessage(QStringLiteral("How it went."));
    settle();
    EXPECT_TRUE(shows(QStringLiteral("apiMessage")));
    EXPECT_EQ(find(QStringLiteral("pauseButton"))->mapToScene(QPointF()), before);
}

TEST_F(Dashboard, While_Pi_hole_is_started_or_stopped_it_shows_and_waits)
{
    openDashboard();
    showRunning(m_app);
    EXPECT_TRUE(enabled(QStringLiteral("stopButton")));
    EXPECT_FALSE(shows(QStringLiteral("controllingSpinner")));
    m_app.setBusy({QStringLiteral("container")});
    EXPECT_FALSE(enabled(QStringLiteral("stopButton")));
    EXPECT_FALSE(enabled(QStringLiteral("restartButton")));
    EXPECT_TRUE(shows(QStringLiteral("controllingSpinner")));
    m_app.setBusy({});
}

TEST_F(Dashboard, Colima_that_starts_for_Pi_hole_is_seen_where_it_was_started)
{
    openDashboard();
    showDockerDown(m_app);
    EXPECT_FALSE(shows(QStringLiteral("colimaLog")));
    const SleepingOperation colima(*m_app.maintOp(), AppModel::kStartingColima);
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("colimaLogCancel")); }));
}

TEST_F(Dashboard, Following_without_docker_switches_back_and_says_why)
{
    openDashboard();
    click(QStringLiteral("followSwitch"));
    EXPECT_FALSE(m_app.following());
    EXPECT_FALSE(find(QStringLiteral("followSwitch"))->property("checked").toBool());
    EXPECT_FALSE(m_app.notice().isEmpty());
    EXPECT_EQ(textOf(QStringLiteral("noticeText")), m_app.notice());
    click(QStringLiteral("dismissButton"));
    EXPECT_FALSE(shows(QStringLiteral("noticeText")));
}

TEST_F(Dashboard, The_header_leads_to_the_set_up_and_back)
{
    openDashboard();
    const QString toSetUp = textOf(QStringLiteral("toggleWizardButton"));
    click(QStringLiteral("toggleWizardButton"));
    EXPECT_TRUE(shows(QStringLiteral("nextButton")));
    EXPECT_NE(textOf(QStringLiteral("toggleWizardButton")), toSetUp);
    click(QStringLiteral("toggleWizardButton"));
    EXPECT_TRUE(shows(QStringLiteral("statusLine")));
}

class Banner : public Screen {};

TEST_F(Banner, Warns_when_this_Mac_asks_a_Pi_hole_that_is_dead)
{
    openDashboard();
    EXPECT_FALSE(shows(QStringLiteral("startPiholeNowButton")));
    showUsedButDead(m_app);
    for (const char *control : {"startPiholeNowButton", "bannerRestoreButton", "hideBannerButton"})
        EXPECT_TRUE(enabled(QString::fromLatin1(control))) << control;
}

TEST_F(Banner, Stays_away_once_hidden)
{
    openDashboard();
    showUsedButDead(m_app);
    click(QStringLiteral("hideBannerButton"));
    EXPECT_FALSE(shows(QStringLiteral("startPiholeNowButton")));
}

TEST_F(Banner, Is_red_at_10_percent_on_the_window)
{
    openDashboard();
    showUsedButDead(m_app);
    const QColor tint = find(QStringLiteral("deadDNSBanner"))->property("color").value<QColor>();
    EXPECT_NEAR(tint.alphaF(), 0.1, 0.005);
    EXPECT_GT(tint.red(), tint.green() + 150);
}

TEST_F(Banner, Says_why_nothing_was_started)
{
    openDashboard();
    showUsedButDead(m_app);
    click(QStringLiteral("startPiholeNowButton"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("noticeText")); }));
    EXPECT_EQ(textOf(QStringLiteral("noticeText")), m_app.notice());
}

} // namespace

} // namespace corvane::test
