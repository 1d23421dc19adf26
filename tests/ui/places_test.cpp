#include "app/operation_title.h"
#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QTest>

namespace corvane::test {

namespace {

/// Where the user sees how a start goes: where it was pressed, and nowhere else.
class Places : public Screen {
protected:
    /// What is pressed here finds no tools; what would start with them is started by the test.
    void press(const char *button)
    {
        click(QString::fromLatin1(button));
        ASSERT_TRUE(QTest::qWaitFor([this] { return m_app.busy().isEmpty(); }));
        m_app.setNotice({});
    }
    void expectOnly(const char *shown, const char *other)
    {
        const QString log = QString::fromLatin1(shown);
        EXPECT_TRUE(QTest::qWaitFor([&] { return shows(log); })) << shown;
        EXPECT_TRUE(shows(log + QStringLiteral("Cancel"))) << shown;
        EXPECT_FALSE(shows(QString::fromLatin1(other))) << other;
    }
};

TEST_F(Places, The_dashboards_start_shows_its_progress_on_the_dashboard_beneath_the_banner_too)
{
    openDashboard();
    showUsedButDead(m_app);
    press("startButton");
    const SleepingOperation colima(*m_app.maintOp(), AppModel::kStartingColima);
    expectOnly("colimaLog", "bannerMaintLog");
}

TEST_F(Places, The_banners_start_shows_its_progress_in_the_banner)
{
    openDashboard();
    showUsedButDead(m_app);
    press("startPiholeNowButton");
    const SleepingOperation colima(*m_app.maintOp(), AppModel::kStartingColima);
    expectOnly("bannerMaintLog", "colimaLog");
    m_app.setBannerDismissed(true);
    expectOnly("colimaLog", "bannerMaintLog");
}

TEST_F(Places, The_menus_start_shows_its_progress_in_the_banner_or_else_on_the_dashboard)
{
    openDashboard();
    showUsedButDead(m_app);
    m_commands.toggleStartStop();
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_app.busy().isEmpty(); }));
    const SleepingOperation colima(*m_app.maintOp(), AppModel::kStartingColima);
    expectOnly("bannerMaintLog", "colimaLog");
    m_app.setUsedByMac(false);
    expectOnly("colimaLog", "bannerMaintLog");
}

TEST_F(Places, A_window_that_is_opened_again_shows_the_progress_where_it_began)
{
    openDashboard();
    showUsedButDead(m_app);
    press("startPiholeNowButton");
    const SleepingOperation colima(*m_app.maintOp(), AppModel::kStartingColima);
    m_windows.main()->close();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !m_windows.main(); }));
    openDashboard();
    expectOnly("bannerMaintLog", "colimaLog");
}

TEST_F(Places, In_the_set_up_the_banner_shows_what_began_on_the_dashboard)
{
    openDashboard();
    showUsedButDead(m_app);
    press("startButton");
    const SleepingOperation colima(*m_app.maintOp(), AppModel::kStartingColima);
    expectOnly("colimaLog", "bannerMaintLog");
    m_app.setShowWizard(true);
    expectOnly("bannerMaintLog", "colimaLog");
}

TEST_F(Places, Pi_hole_that_is_being_started_spins_where_it_was_pressed)
{
    openDashboard();
    showUsedButDead(m_app);
    for (const Place::Name place : {Place::Banner, Place::Dashboard}) {
        m_app.setStartPlace(place);
        m_app.setBusy({QStringLiteral("container")});
        EXPECT_EQ(shows(QStringLiteral("startPiholeNowSpinner")), place == Place::Banner);
        EXPECT_EQ(shows(QStringLiteral("controllingSpinner")), place == Place::Dashboard);
        EXPECT_FALSE(enabled(QStringLiteral("startPiholeNowButton")));
        m_app.setBusy({});
        EXPECT_TRUE(enabled(QStringLiteral("startPiholeNowButton")));
    }
}

TEST_F(Places, A_message_stands_once_where_it_was_asked_for)
{
    openDashboard();
    showUsedButDead(m_app);
    m_app.setStartMessage(QStringLiteral("Docker reported an error."));
    m_app.setDnsMessage(QStringLiteral("Nothing was changed."));
    for (const Place::Name place : {Place::Banner, Place::Dashboard}) {
        m_app.setStartPlace(place);
        m_app.setDnsPlace(place);
        EXPECT_TRUE(QTest::qWaitFor([&] { return shows(QStringLiteral("startMessage")) == (place != Place::Banner); }));
        EXPECT_EQ(texts().count(m_app.startMessage()), 1) << place;
        EXPECT_EQ(texts().count(m_app.dnsMessage()), 1) << place;
        EXPECT_EQ(shows(QStringLiteral("bannerStartMessage")), place == Place::Banner);
        EXPECT_EQ(shows(QStringLiteral("bannerDnsMessage")), place == Place::Banner);
    }
}

/// An operation whose end belongs to one screen.
class Ends : public Screen {
protected:
    void fail(OperationRunner &runner, const QString &title)
    {
        CommandStep step;
        step.label = QStringLiteral("false");
        step.exe = QStringLiteral("/bin/false");
        runner.start(title, {step});
        ASSERT_TRUE(QTest::qWaitFor([&] { return runner.ended(); }));
    }
    void TearDown() override
    {
        lookAt(nullptr);
        Screen::TearDown();
    }
};

TEST_F(Ends, Another_screens_failure_is_not_told_beside_the_ports)
{
    for (const QString &title : {QString(AppModel::kStartingColima), QStringLiteral("Changing something")}) {
        fail(*m_app.maintOp(), title);
        openStep(1);
        EXPECT_FALSE(shows(QStringLiteral("checksMaintLog"))) << title.toStdString();
        openStep(3);
        EXPECT_FALSE(shows(QStringLiteral("portLog"))) << title.toStdString();
        openSettings();
        EXPECT_FALSE(shows(QStringLiteral("settingsMaintLog"))) << title.toStdString();
        lookAt(nullptr);
    }
    fail(*m_app.maintOp(), QStringLiteral("Recreating Pi-hole on port 8085"));
    openStep(1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("checksMaintLog")); }));
    openStep(3);
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("portLog")); }));
    openSettings();
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("settingsMaintLog")); }));
}

TEST_F(Ends, A_failed_installation_is_not_told_beside_the_switch_for_Colima)
{
    openSettings();
    fail(*m_app.installOp(), QStringLiteral("Making something"));
    EXPECT_FALSE(shows(QStringLiteral("settingsInstallLog")));
    fail(*m_app.installOp(), QString(OperationTitle::kTurningColimaOn));
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("settingsInstallLog")); }));
}

TEST_F(Ends, What_runs_for_another_screen_is_seen_wherever_it_keeps_controls_off)
{
    openSettings();
    const SleepingOperation update(*m_app.maintOp(), QStringLiteral("Changing something"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("settingsMaintLog")); }));
    EXPECT_FALSE(enabled(QStringLiteral("webPortPicker")));
}

} // namespace

} // namespace corvane::test
