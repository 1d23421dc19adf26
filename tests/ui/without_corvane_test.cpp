#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QFileInfo>
#include <QTest>

namespace corvane::test {

namespace {

const QString kScript = QStringLiteral("/Users/ada/Library/Application Support/Corvane/Restore DNS.command");

QString longReport()
{
    QString report = QStringLiteral("Versions\n--------\nCorvane: 0.1.0\nmacOS: 15.6\n");
    for (int i = 0; i < 60; ++i)
        report += QStringLiteral("  time=\"<time>\" level=info msg=\"line %1 of <name> at <address>\"\n").arg(i);
    return report;
}

/// The way to the script that restores without Corvane, and the report.
class WithoutCorvane : public Screen {
protected:
    [[nodiscard]] bool readsFromTheTop() const
    {
        return find(QStringLiteral("reportTextCanvas"))->property("position").toDouble() < 0.001;
    }
    void TearDown() override
    {
        lookAt(nullptr);
        Screen::TearDown();
    }
};

TEST_F(WithoutCorvane, Nothing_is_said_of_a_script_that_is_not_there)
{
    openStep(7);
    EXPECT_FALSE(shows(QStringLiteral("doneRestoreScript")));
    openDashboard();
    showUsedButDead(m_app);
    EXPECT_FALSE(shows(QStringLiteral("bannerDetailsHeader")));
}

TEST_F(WithoutCorvane, The_last_step_shows_the_script_and_opens_its_folder)
{
    m_app.setRestoreScript(kScript);
    openStep(7);
    showRunning(m_app);
    showAllPassed(m_app);
    EXPECT_EQ(textOf(QStringLiteral("doneRestoreScriptPath")), kScript);
    bothPictures(QStringLiteral("step8-restore-script"));
    click(QStringLiteral("doneRestoreScriptButton"));
    EXPECT_EQ(m_workspace.opened, QList<QUrl>{QUrl::fromLocalFile(QFileInfo(kScript).path())});
}

TEST_F(WithoutCorvane, The_banner_keeps_the_script_in_its_details)
{
    m_app.setRestoreScript(kScript);
    openDashboard();
    showUsedButDead(m_app);
    EXPECT_FALSE(shows(QStringLiteral("bannerRestoreScript")));
    bothPictures(QStringLiteral("banner-details-closed"));
    click(QStringLiteral("bannerDetailsHeader"));
    EXPECT_EQ(textOf(QStringLiteral("bannerRestoreScriptPath")), kScript);
    bothPictures(QStringLiteral("banner-details-open"));
    click(QStringLiteral("bannerDetailsHeader"));
    EXPECT_FALSE(shows(QStringLiteral("bannerRestoreScript")));
}

TEST_F(WithoutCorvane, A_report_covers_Settings_until_it_is_closed)
{
    openSettings();
    EXPECT_FALSE(shows(QStringLiteral("reportText")));
    find(QStringLiteral("makeReportButton"))->forceActiveFocus();
    bothPictures(QStringLiteral("settings-report-button"));
    m_app.setReport(longReport());
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("reportText")); }));
    bothPictures(QStringLiteral("settings-report"));
    click(QStringLiteral("dropReportButton"));
    EXPECT_EQ(m_app.report(), QString());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !shows(QStringLiteral("reportText")); }));

    m_app.setReport(longReport());
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("reportText")); })) << "a second time too";
    press(Qt::Key_Escape);
    EXPECT_EQ(m_app.report(), QString());
    EXPECT_TRUE(m_windows.settings()->isVisible()) << "the window stays";
}

TEST_F(WithoutCorvane, A_report_is_made_by_its_button_once)
{
    openSettings();
    m_app.setBusy({QStringLiteral("report")});
    EXPECT_FALSE(enabled(QStringLiteral("makeReportButton")));
    m_app.setBusy({});
    EXPECT_TRUE(enabled(QStringLiteral("makeReportButton")));
}

TEST_F(WithoutCorvane, The_sheet_of_the_main_window_shows_the_report_as_well)
{
    openDashboard();
    click(QStringLiteral("settingsButton"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("closeSettingsButton")); }));
    m_app.setReport(longReport());
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("reportText")); }));
    EXPECT_FALSE(shows(QStringLiteral("closeSettingsButton"))) << "one button to close is enough";
    EXPECT_TRUE(QTest::qWaitFor([this] { return readsFromTheTop(); }));
    bothPictures(QStringLiteral("settings-sheet-report"));
    click(QStringLiteral("dropReportButton"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !shows(QStringLiteral("reportText")); }));
    EXPECT_TRUE(shows(QStringLiteral("closeSettingsButton")));
}

} // namespace

} // namespace corvane::test
