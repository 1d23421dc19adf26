#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QTest>

namespace corvane::test {

namespace {

class SettingsScreen : public Screen {
protected:
    void TearDown() override
    {
        lookAt(nullptr);
        Screen::TearDown();
    }
};

TEST_F(SettingsScreen, Is_520_by_520_and_offers_eleven_ports)
{
    openSettings();
    EXPECT_EQ(window()->size(), QSize(520, 520));
    EXPECT_EQ(find(QStringLiteral("webPortPicker"))->property("count").toInt(), 11);
}

TEST_F(SettingsScreen, Is_520_by_520_whatever_it_shows)
{
    openSettings();
    m_app.setNotice(QStringLiteral("A sentence that goes on and on. ").repeated(40));
    const SleepingOperation installing(*m_app.installOp(), QStringLiteral("Making something"));
    const SleepingOperation moving(*m_app.maintOp(), QStringLiteral("Recreating Pi-hole on port 8083"));
    QTest::qWait(30);
    EXPECT_EQ(window()->size(), QSize(520, 520));
}

TEST_F(SettingsScreen, The_sheet_is_520_by_520_whatever_it_shows)
{
    openDashboard();
    m_app.setNotice(QStringLiteral("A sentence that goes on and on. ").repeated(20));
    const SleepingOperation installing(*m_app.installOp(), QStringLiteral("Making something"));
    click(QStringLiteral("settingsButton"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("closeSettingsButton")); }));
    const QQuickItem *sheet = find(QStringLiteral("closeSettingsButton"));
    while (sheet->parentItem() && !sheet->inherits("QQuickPopupItem"))
        sheet = sheet->parentItem();
    EXPECT_EQ(sheet->size(), QSizeF(520, 520));
}

TEST_F(SettingsScreen, Launch_at_login_shows_what_the_system_says)
{
    openSettings();
    click(QStringLiteral("launchAtLoginSwitch"));
    EXPECT_TRUE(m_loginItem.enabled);
    EXPECT_TRUE(find(QStringLiteral("launchAtLoginSwitch"))->property("checked").toBool());
    m_loginItem.refuses = true;
    click(QStringLiteral("launchAtLoginSwitch"));
    EXPECT_TRUE(find(QStringLiteral("launchAtLoginSwitch"))->property("checked").toBool());
    EXPECT_EQ(textOf(QStringLiteral("noticeText")), m_app.notice());
    EXPECT_FALSE(m_app.notice().isEmpty());
}

TEST_F(SettingsScreen, The_port_is_picked_from_eleven)
{
    openSettings();
    click(QStringLiteral("webPortPicker"));
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_app.webPort() == 8081; })) << m_app.webPort();
}

TEST_F(SettingsScreen, What_would_get_into_the_way_of_an_operation_waits_for_its_end)
{
    openSettings();
    for (const char *control : {"autostartColimaSwitch", "webPortPicker", "removePiholeButton"})
        EXPECT_TRUE(enabled(QString::fromLatin1(control))) << control;
    const SleepingOperation start(*m_app.startOp());
    for (const char *control : {"autostartColimaSwitch", "webPortPicker", "removePiholeButton"})
        EXPECT_FALSE(enabled(QString::fromLatin1(control))) << control;
    EXPECT_TRUE(enabled(QStringLiteral("launchAtLoginSwitch")));
}

TEST_F(SettingsScreen, A_notice_stands_above_and_can_be_dismissed)
{
    openSettings();
    m_app.setNotice(QStringLiteral("It was done."));
    EXPECT_EQ(textOf(QStringLiteral("noticeText")), QStringLiteral("It was done."));
    click(QStringLiteral("dismissButton"));
    EXPECT_FALSE(shows(QStringLiteral("noticeText")));
}

TEST_F(SettingsScreen, Removal_cannot_be_asked_for_twice)
{
    openSettings();
    m_app.setBusy({QStringLiteral("restoredns")});
    EXPECT_FALSE(enabled(QStringLiteral("removePiholeButton")));
    m_app.setBusy({});
}

TEST_F(SettingsScreen, Removal_asks_first)
{
    openSettings();
    click(QStringLiteral("removePiholeButton"));
    ASSERT_TRUE(m_windows.alert());
    lookAt(m_windows.alert());
    EXPECT_EQ(textOf(QStringLiteral("alertHeading")), m_dialogs.alert()->title);
    click(QStringLiteral("alertReject"));
}

TEST_F(SettingsScreen, The_sheet_of_the_main_window_shows_the_same_and_closes)
{
    openDashboard();
    click(QStringLiteral("settingsButton"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("closeSettingsButton")); }));
    EXPECT_TRUE(shows(QStringLiteral("launchAtLoginSwitch")));
    click(QStringLiteral("closeSettingsButton"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !shows(QStringLiteral("closeSettingsButton")); }));
    click(QStringLiteral("settingsButton"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("closeSettingsButton")); }));
    press(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !shows(QStringLiteral("closeSettingsButton")); }));
}

} // namespace

} // namespace corvane::test
