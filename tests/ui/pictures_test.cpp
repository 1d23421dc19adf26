#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QApplication>
#include <QTest>

namespace corvane::test {

namespace {

/// Pictures of every screen for people to look at. What is tested is that each can be drawn without a warning, and that
/// light and dark differ.
class Pictures : public Screen {
protected:
    /// The texts that end in dots or reach over a side of the window.
    [[nodiscard]] QStringList cutOff() const
    {
        QStringList found;
        for (const QQuickItem *item : itemsOf(window()->contentItem())) {
            const QString text = item->property("text").toString();
            if (!inSight(item) || text.isEmpty()) continue;
            const QRectF area = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
            if (item->property("truncated").toBool() || area.left() < 0 || area.right() > window()->width())
                found << text;
        }
        return found;
    }
    void resize(int width, int height)
    {
        window()->resize(width, height);
        QTest::qWait(30);
    }
};

TEST_F(Pictures, Of_the_dashboard)
{
    openDashboard();
    bothPictures(QStringLiteral("dashboard-checking"));
    showRunning(m_app);
    bothPictures(QStringLiteral("dashboard-running"));
    showStopped(m_app);
    bothPictures(QStringLiteral("dashboard-stopped"));
    showNotUsed(m_app);
    bothPictures(QStringLiteral("dashboard-not-used"));
    showPaused(m_app, 299);
    bothPictures(QStringLiteral("dashboard-paused"));
    m_app.setNotice(QStringLiteral("Your old DNS settings are back."));
    showUsedButDead(m_app);
    bothPictures(QStringLiteral("dashboard-banner"));
}

TEST_F(Pictures, Of_the_dashboard_in_other_sizes)
{
    openDashboard();
    showRunning(m_app);
    resize(860, 620);
    bothPictures(QStringLiteral("dashboard-860x620"));
    resize(1600, 1000);
    bothPictures(QStringLiteral("dashboard-1600x1000"));
}

TEST_F(Pictures, Of_every_step)
{
    openStep(0);
    bothPictures(QStringLiteral("step1-welcome"));
    openStep(1);
    showChecks(m_app, false);
    bothPictures(QStringLiteral("step2-checks"));
    showChecks(m_app, true);
    bothPictures(QStringLiteral("step2-ports-taken"));
    openStep(2);
    bothPictures(QStringLiteral("step3-no-homebrew"));
    m_app.setHasBrew(true);
    m_app.setHasColima(true);
    m_app.setHasDocker(true);
    m_app.setDockerWorks(true);
    showOutcome(m_app, QStringLiteral("docker"), true, QStringLiteral("docker info works"));
    bothPictures(QStringLiteral("step3-install"));
    openStep(3);
    m_app.setDockerWorks(true);
    bothPictures(QStringLiteral("step4-password"));
    m_app.setPasswordInput(QStringLiteral("a b"));
    showPiholeTests(m_app, false);
    m_app.setGrpcFlagSupported(true);
    bothPictures(QStringLiteral("step4-errors"));
    openStep(4);
    BlockingTestResult result;
    result.blockedDomain = QStringLiteral("ads.example.net");
    result.blockedKind = QStringLiteral("answered 0.0.0.0 (nowhere)");
    result.allowedAnswer = QStringLiteral("93.184.216.34");
    result.queries = 120;
    result.blockedToday = 17;
    m_app.setBlockingTest(result);
    bothPictures(QStringLiteral("step5-blocking"));
    openStep(5);
    showServices(m_app);
    m_app.setPiholeOnly(true);
    m_app.setDnsMessage(QStringLiteral("You cancelled the administrator prompt. Nothing was changed."));
    bothPictures(QStringLiteral("step6-dns"));
    openStep(6);
    bothPictures(QStringLiteral("step7-consent"));
    showBrowsers(m_app);
    bothPictures(QStringLiteral("step7-browsers"));
    openStep(7);
    bothPictures(QStringLiteral("step8-almost"));
    showRunning(m_app);
    showAllPassed(m_app);
    bothPictures(QStringLiteral("step8-done"));
}

TEST_F(Pictures, With_long_texts)
{
    openDashboard();
    showRunning(m_app);
    const QString message = QStringLiteral("Could not read the statistics: the answer of Pi-hole was not understood, "
                                           "because it ended in the middle. ");
    m_app.setApiMessage(message.repeated(4));
    m_app.setNotice(message.repeated(4));
    m_app.setStartMessage(message.repeated(3));
    for (const QString &line : logLines(40))
        m_app.followOp()->append(line);
    m_app.followOp()->append(QString(5000, u'x'));
    m_app.publishFollowing(true);
    bothPictures(QStringLiteral("dashboard-long-texts"));
    m_app.publishFollowing(false);
    resize(860, 620);
    openStep(5);
    NetworkService service;
    service.name = QStringLiteral("Thunderbolt Ethernet Slot 2, Port 1 of the studio in Zuerich (3)");
    service.isDefaultRoute = true;
    service.servers = {QStringLiteral("2001:4860:4860:0000:0000:0000:0000:8888"),
                       QStringLiteral("2001:4860:4860:0000:0000:0000:0000:8844")};
    m_app.setServices({service});
    bothPictures(QStringLiteral("step6-long-texts"));
}

TEST_F(Pictures, Of_Settings)
{
    m_windows.openSettings();
    lookAt(m_windows.settings());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window()));
    bothPictures(QStringLiteral("settings"));
    lookAt(nullptr);
    openDashboard();
    click(QStringLiteral("settingsButton"));
    bothPictures(QStringLiteral("settings-sheet"));
}

TEST_F(Pictures, Of_an_operation_and_its_log)
{
    openStep(2);
    m_app.setHasBrew(true);
    CommandStep step;
    step.label = QStringLiteral("brew install colima docker");
    step.exe = QStringLiteral("/bin/sleep");
    step.args = {QStringLiteral("30")};
    m_app.installOp()->start(QStringLiteral("Installing Colima and Docker"), {step});
    for (const QString &line : logLines(30))
        m_app.installOp()->append(line);
    click(QStringLiteral("installLogDetailsHeader"));
    bothPictures(QStringLiteral("operation-running"));
    m_app.installOp()->cancel();
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_app.installOp()->ended(); }));
    bothPictures(QStringLiteral("operation-cancelled"));
}

// Whatever is shown is shown whole: no text ends in dots, and each is between the sides of the window.
TEST_F(Pictures, Nothing_is_cut_off_in_the_smallest_window_with_text_enlarged_by_half)
{
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPixelSize(20);
    QApplication::setFont(large);
    for (int step = 0; step < kStepCount; ++step) {
        openStep(step);
        resize(860, 620);
        showChecks(m_app, true);
        showServices(m_app);
        showBrowsers(m_app);
        showAllPassed(m_app);
        settle();
        EXPECT_EQ(cutOff(), QStringList()) << "step " << step + 1;
        picture(QStringLiteral("smallest-large-text-step%1").arg(step + 1));
    }
    openDashboard();
    showRunning(m_app);
    showPaused(m_app, 299);
    settle();
    EXPECT_EQ(cutOff(), QStringList());
    picture(QStringLiteral("smallest-large-text-dashboard"));
    QApplication::setFont(usual);
}

TEST_F(Pictures, With_text_enlarged_by_half)
{
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPixelSize(20);
    QApplication::setFont(large);
    openDashboard();
    showRunning(m_app);
    bothPictures(QStringLiteral("dashboard-large-text"));
    m_windows.main()->close();
    QTest::qWait(50);
    openStep(5);
    showServices(m_app);
    bothPictures(QStringLiteral("step6-large-text"));
    QApplication::setFont(usual);
}

} // namespace

} // namespace corvane::test
