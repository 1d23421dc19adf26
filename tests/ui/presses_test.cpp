#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

namespace corvane::test {

namespace {

/// What pressing leads to, or cannot lead to while its action is under way.
class Presses : public Screen {
protected:
    [[nodiscard]] QPointF placeOf(const char *name) { return find(QString::fromLatin1(name))->mapToScene(QPointF()); }

    /// A window lays its views out when it is drawn.
    void draw() { Q_UNUSED(window()->grabWindow()) }

    /// An action that is under way spins beside its button, which is off, and moves nothing to its right.
    void expectBusy(const char *key, const char *button, const char *rightOfIt = nullptr)
    {
        const QString name = QString::fromLatin1(button);
        settle();
        draw();
        const QPointF before = placeOf(rightOfIt ? rightOfIt : button);
        EXPECT_TRUE(enabled(name + QStringLiteral("Button"))) << key;
        EXPECT_FALSE(shows(name + QStringLiteral("Spinner"))) << key;
        m_app.setBusy({QString::fromLatin1(key)});
        QTest::qWait(20);
        draw();
        EXPECT_FALSE(enabled(name + QStringLiteral("Button"))) << key;
        EXPECT_TRUE(shows(name + QStringLiteral("Spinner"))) << key;
        EXPECT_EQ(placeOf(rightOfIt ? rightOfIt : button), before) << key;
        m_app.setBusy({});
    }
};

TEST_F(Presses, A_busy_button_of_the_dashboard_spins_and_moves_nothing)
{
    openDashboard();
    for (const char *key : {"pihole", "blocking", "system"})
        expectBusy(key, "runTestsAgain", "restoreOldSettingsButton");
    expectBusy("restoredns", "restoreOldSettings");
    expectBusy("updates", "checkForUpdates", "updateButton");
    expectBusy("logs", "refreshLog", "followSwitch");
}

TEST_F(Presses, A_busy_button_of_the_banner_spins_and_moves_nothing)
{
    openDashboard();
    showUsedButDead(m_app);
    m_app.setStartPlace(Place::Banner);
    expectBusy("container", "startPiholeNow", "bannerRestoreButton");
    expectBusy("restoredns", "bannerRestore", "hideBannerButton");
}

TEST_F(Presses, A_busy_button_of_the_set_up_spins_and_moves_nothing)
{
    openStep(0);
    expectBusy("restoredns", "welcomeRestore");
    openStep(1);
    expectBusy("checks", "checks");
    openStep(2);
    expectBusy("docker", "dockerTest", "dockerTestButton");
    openStep(3);
    expectBusy("pihole", "pihole");
    openStep(4);
    expectBusy("blocking", "blockingTest");
    openStep(5);
    showServices(m_app);
    expectBusy("applydns", "applyDns", "dnsRestoreButton");
    expectBusy("restoredns", "dnsRestore", "reloadServicesButton");
    expectBusy("services", "reloadServices");
    expectBusy("system", "systemTest", "systemTestButton");
    openStep(6);
    showBrowsers(m_app);
    expectBusy("browsers", "checkBrowsers");
    expectBusy("browser", "browserTest");
}

TEST_F(Presses, A_busy_button_cannot_be_pressed_by_any_means)
{
    openStep(1);
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_app.busy().isEmpty() && !m_app.systemChecks().isEmpty(); }));
    QQuickItem *button = find(QStringLiteral("checksButton"));
    const QSignalSpy clicks(button, SIGNAL(clicked()));
    const auto pressAll = [&] {
        click(*button);
        press(Qt::Key_Space);
        press(Qt::Key_Return);
        press(Qt::Key_Enter);
        QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(button);
        spoken->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    };
    m_app.setBusy({QStringLiteral("checks")});
    pressAll();
    EXPECT_EQ(clicks.count(), 0);
    m_app.setBusy({});
    click(*button);
    EXPECT_EQ(clicks.count(), 1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_app.busy().isEmpty(); }));
}

TEST_F(Presses, Refresh_is_off_while_the_log_is_followed)
{
    openDashboard();
    EXPECT_TRUE(enabled(QStringLiteral("refreshLogButton")));
    m_app.publishFollowing(true);
    EXPECT_FALSE(enabled(QStringLiteral("refreshLogButton")));
    m_app.publishFollowing(false);
}

TEST_F(Presses, Colima_is_not_restarted_for_UDP_while_something_runs)
{
    openStep(3);
    showPiholeTests(m_app, false);
    m_app.setGrpcFlagSupported(true);
    EXPECT_TRUE(enabled(QStringLiteral("fixUdpButton")));
    for (OperationRunner *runner : {m_app.installOp(), m_app.startOp(), m_app.maintOp()}) {
        const SleepingOperation working(*runner);
        EXPECT_FALSE(enabled(QStringLiteral("fixUdpButton")));
    }
}

TEST_F(Presses, While_the_browsers_are_read_none_is_missed)
{
    m_app.setBrowserReadAllowed(true);
    openStep(6);
    m_app.setBrowsers({});
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("noBrowserText")); }));
    m_app.setBusy({QStringLiteral("browsers")});
    EXPECT_FALSE(shows(QStringLiteral("noBrowserText")));
    m_app.setBusy({});
}

TEST_F(Presses, A_log_that_was_not_saved_brings_its_message_into_sight)
{
    openDashboard();
    window()->resize(860, 620);
    showRunning(m_app);
    find(QStringLiteral("refreshLogButton"))->forceActiveFocus();
    press(Qt::Key_End);
    settle();
    const auto messageInSight = [this] {
        return shows(QStringLiteral("apiMessage")) && placeOf("apiMessage").y() > placeOf("content").y();
    };
    m_app.setApiMessage(QStringLiteral("Something has changed."));
    QTest::qWait(100);
    EXPECT_FALSE(messageInSight()) << "nobody pressed anything";
    m_app.setApiMessage(QStringLiteral("Could not save the log: No space left on device"));
    EXPECT_TRUE(QTest::qWaitFor(messageInSight));
}

TEST_F(Presses, A_failed_operation_says_so_in_red)
{
    openStep(2);
    CommandStep step;
    step.label = QStringLiteral("false");
    step.exe = QStringLiteral("/bin/false");
    m_app.installOp()->start(QStringLiteral("Making something"), {step});
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_app.installOp()->ended() && shows(QStringLiteral("installLog")); }));
    const QString failure = m_app.installOp()->failureText();
    const QList<QQuickItem *> items = itemsOf(find(QStringLiteral("installLog")));
    const auto said =
        std::ranges::find_if(items, [&](QQuickItem *item) { return item->property("text").toString() == failure; });
    ASSERT_NE(said, items.end());
    const QColor ink = (*said)->property("color").value<QColor>();
    EXPECT_GT(ink.red(), 150);
    EXPECT_LT(std::max(ink.green(), ink.blue()), 60);
}

TEST_F(Presses, The_time_zone_is_read_when_the_step_is_opened)
{
    const QByteArray before = qgetenv("TZ");
    qputenv("TZ", "Europe/Zurich");
    openStep(3);
    EXPECT_TRUE(reads(QStringLiteral("Time zone: Europe/Zurich.")));
    qputenv("TZ", "Asia/Tokyo");
    click(QStringLiteral("step1"));
    click(QStringLiteral("step4"));
    EXPECT_TRUE(reads(QStringLiteral("Time zone: Asia/Tokyo.")));
    qputenv("TZ", "America/Lima");
    QEvent activation(QEvent::ApplicationActivate);
    QCoreApplication::sendEvent(QCoreApplication::instance(), &activation);
    EXPECT_TRUE(reads(QStringLiteral("Time zone: America/Lima.")));
    before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
}

} // namespace

} // namespace corvane::test
