#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QAccessible>
#include <QTest>

namespace corvane::test {

namespace {

/// What Return, Space and a held key do.
class ByKeyboard : public Screen {
protected:
    void focus(const char *name) { find(QString::fromLatin1(name))->forceActiveFocus(Qt::TabFocusReason); }
    /// The key goes down, is repeated by the system and comes up again.
    void hold(Qt::Key key)
    {
        QTest::keyPress(window(), key);
        for (int i = 0; i < 4; ++i) {
            QKeyEvent again(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
            QCoreApplication::sendEvent(window(), &again);
        }
        QTest::keyRelease(window(), key);
        QTest::qWait(5);
    }
};

TEST_F(ByKeyboard, Return_held_on_Next_goes_on_by_one_step)
{
    openStep(4);
    focus("nextButton");
    hold(Qt::Key_Return);
    EXPECT_EQ(m_app.step(), 5);
}

TEST_F(ByKeyboard, Return_held_on_a_step_or_a_switch_acts_once)
{
    openStep(4);
    focus("step7");
    hold(Qt::Key_Return);
    EXPECT_EQ(m_app.step(), 6);
    m_app.setBrowserReadAllowed(false);
    m_windows.openSettings();
    lookAt(m_windows.settings());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window()));
    focus("launchAtLoginSwitch");
    hold(Qt::Key_Return);
    lookAt(nullptr);
    EXPECT_TRUE(m_loginItem.enabled);
}

TEST_F(ByKeyboard, Return_in_the_set_up_goes_on)
{
    openStep(4);
    hold(Qt::Key_Return);
    EXPECT_EQ(m_app.step(), 5);
    m_app.go(7);
    settle();
    press(Qt::Key_Return);
    EXPECT_EQ(m_app.step(), 7);
}

TEST_F(ByKeyboard, Return_on_another_button_presses_that_one)
{
    openStep(4);
    focus("backButton");
    press(Qt::Key_Return);
    EXPECT_EQ(m_app.step(), 3);
}

TEST_F(ByKeyboard, Return_in_the_password_field_starts_Pi_hole)
{
    openStep(3);
    m_app.setDockerWorks(true);
    m_app.setPasswordInput(QStringLiteral("short"));
    focus("passwordField");
    press(Qt::Key_Return);
    EXPECT_EQ(m_app.step(), 3);
    EXPECT_TRUE(m_app.notice().isEmpty() && m_app.startMessage().isEmpty()) << "a bad password starts nothing";
    m_app.setPasswordInput(QStringLiteral("long-enough"));
    press(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_app.notice().isEmpty() || !m_app.startMessage().isEmpty(); }));
    EXPECT_EQ(m_app.step(), 3);
}

TEST_F(ByKeyboard, A_click_on_a_button_leaves_the_focus_where_it_was)
{
    openStep(3);
    focus("passwordField");
    const QQuickItem *button = find(QStringLiteral("generateButton"));
    const QString before = m_app.passwordInput();
    const QPointF middle = button->mapToScene(QPointF(button->width() / 2, button->height() / 2));
    QTest::mouseClick(window(), Qt::LeftButton, {}, middle.toPoint());
    EXPECT_NE(m_app.passwordInput(), before);
    EXPECT_EQ(focused(), QStringLiteral("passwordField"));
}

TEST_F(ByKeyboard, A_busy_test_cannot_be_started_again_by_key_or_by_a_screen_reader)
{
    openStep(4);
    focus("blockingTestButton");
    m_app.setBusy({QStringLiteral("blocking")});
    const auto outcomes = m_app.outcomes();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return})
        press(key);
    EXPECT_EQ(m_app.step(), 4) << "a second Return is not meant for Next";
    auto *spoken = QAccessible::queryAccessibleInterface(find(QStringLiteral("blockingTestButton")));
    ASSERT_TRUE(spoken && spoken->actionInterface());
    spoken->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(m_app.busy(), QSet<QString>{QStringLiteral("blocking")});
    EXPECT_EQ(m_app.outcomes(), outcomes);
    m_app.setBusy({});
}

TEST_F(ByKeyboard, A_test_is_started_by_key_and_by_a_screen_reader)
{
    openStep(4);
    focus("blockingTestButton");
    press(Qt::Key_Space);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_app.outcomes().contains(QStringLiteral("blocking")); }));
    m_app.setOutcomes({});
    auto *spoken = QAccessible::queryAccessibleInterface(find(QStringLiteral("blockingTestButton")));
    spoken->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_app.outcomes().contains(QStringLiteral("blocking")); }));
}

TEST_F(ByKeyboard, Copy_says_that_it_copied_and_keeps_its_size)
{
    openStep(3);
    m_app.setPasswordInput(QStringLiteral("correct-horse-9"));
    QQuickItem *copy = find(QStringLiteral("copyPasswordButton"));
    const double width = copy->width();
    focus("copyPasswordButton");
    press(Qt::Key_Space);
    EXPECT_EQ(m_workspace.copiedSecret, QStringLiteral("correct-horse-9"));
    EXPECT_TRUE(m_workspace.copied.isEmpty());
    EXPECT_EQ(copy->property("text").toString(), QStringLiteral("Copied"));
    EXPECT_EQ(copy->width(), width);
    EXPECT_TRUE(QTest::qWaitFor([&] { return copy->property("text").toString() == QStringLiteral("Copy"); }));
}

TEST_F(ByKeyboard, Return_closes_the_sheet)
{
    openDashboard();
    click(QStringLiteral("settingsButton"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return shows(QStringLiteral("closeSettingsButton")); }));
    press(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !shows(QStringLiteral("closeSettingsButton")); }));
}

} // namespace

} // namespace corvane::test
