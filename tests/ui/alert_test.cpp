#include "tests/ui/screen.h"

#include <QAccessible>
#include <QTest>

namespace corvane::test {

namespace {

Alert question()
{
    Alert alert;
    alert.title = QStringLiteral("Change it in 1 place(s)?");
    alert.text = QStringLiteral("• Wi-Fi: Automatic  ->  127.0.0.1, then 1.1.1.1\n\nYour old values are saved first in "
                                "dns-backup.json (Application Support/Corvane). The DNS cache is flushed. macOS will "
                                "ask for your administrator password once.");
    alert.accept = QStringLiteral("Change it");
    alert.reject = QStringLiteral("Cancel");
    return alert;
}

class AlertView : public Screen {
protected:
    void ask()
    {
        const QCoro::Task<> noting = note(this, m_dialogs.confirm(m_question));
        ASSERT_TRUE(m_windows.alert());
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_windows.alert()));
        lookAt(m_windows.alert());
    }

    Alert m_question = question();
    std::optional<bool> m_answer;

private:
    static QCoro::Task<> note(AlertView *self, QCoro::Task<bool> asked)
    {
        const bool answer = co_await asked;
        self->m_answer = answer;
    }
};

TEST_F(AlertView, Works_with_every_window_closed)
{
    ask();
    EXPECT_EQ(textOf(QStringLiteral("alertHeading")), question().title);
    EXPECT_EQ(textOf(QStringLiteral("alertMessage")), question().text);
    EXPECT_EQ(textOf(QStringLiteral("alertAccept")), QStringLiteral("Change it"));
    picture(QStringLiteral("alert-light"));
    setDark(true);
    picture(QStringLiteral("alert-dark"));
    click(QStringLiteral("alertAccept"));
    lookAt(nullptr);
    EXPECT_EQ(m_answer, true);
    EXPECT_FALSE(m_windows.alert());
}

TEST_F(AlertView, Return_takes_the_first_answer)
{
    ask();
    press(Qt::Key_Return);
    lookAt(nullptr);
    EXPECT_EQ(m_answer, true);
}

TEST_F(AlertView, Return_takes_the_answer_without_effect_to_a_warning)
{
    m_question.style = Alert::Style::Warning;
    ask();
    press(Qt::Key_Return);
    lookAt(nullptr);
    EXPECT_EQ(m_answer, false);
}

TEST_F(AlertView, Return_goes_to_the_default_button_after_a_click_on_the_text)
{
    ask();
    click(QStringLiteral("alertMessage"));
    EXPECT_EQ(focused(), QStringLiteral("alertMessage"));
    press(Qt::Key_Return);
    lookAt(nullptr);
    EXPECT_EQ(m_answer, true);
}

TEST_F(AlertView, Return_on_a_text_of_a_warning_has_no_effect_either)
{
    m_question.style = Alert::Style::Warning;
    ask();
    click(QStringLiteral("alertMessage"));
    press(Qt::Key_Enter);
    lookAt(nullptr);
    EXPECT_EQ(m_answer, false);
}

TEST_F(AlertView, A_button_reached_by_Tab_takes_Return)
{
    ask();
    find(QStringLiteral("alertReject"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Return);
    lookAt(nullptr);
    EXPECT_EQ(m_answer, false);
}

TEST_F(AlertView, Has_one_size_and_no_second_heading)
{
    ask();
    EXPECT_EQ(window()->minimumSize(), window()->size());
    EXPECT_EQ(window()->maximumSize(), window()->size());
    EXPECT_NE(window()->title(), question().title);
}

TEST_F(AlertView, Tells_a_screen_reader_what_it_is_about)
{
    ask();
    QAccessibleInterface *found = nullptr;
    for (QQuickItem *item : itemsOf(window()->contentItem())) {
        QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(item);
        if (spoken && spoken->role() == QAccessible::Dialog) found = spoken;
    }
    ASSERT_TRUE(found);
    EXPECT_EQ(found->text(QAccessible::Name), question().title);
    EXPECT_EQ(found->text(QAccessible::Description), question().text);
    click(QStringLiteral("alertReject"));
    lookAt(nullptr);
}

TEST_F(AlertView, The_same_question_again_is_a_new_one)
{
    ask();
    const QPointer<QQuickWindow> first = m_windows.alert();
    const QCoro::Task<bool> again = m_dialogs.confirm(question());
    click(QStringLiteral("alertAccept"));
    ASSERT_TRUE(m_windows.alert());
    EXPECT_NE(m_windows.alert(), first);
    lookAt(m_windows.alert());
    EXPECT_TRUE(m_dialogs.alert());
    click(QStringLiteral("alertReject"));
    lookAt(nullptr);
    EXPECT_FALSE(m_windows.alert());
}

TEST_F(AlertView, Brings_Corvane_to_the_front_before_it_is_there)
{
    m_workspace.onActivate = [this] { EXPECT_FALSE(m_windows.alert()); };
    ask();
    EXPECT_EQ(m_workspace.activations, 1);
    m_workspace.onActivate = {};
    click(QStringLiteral("alertReject"));
    lookAt(nullptr);
}

TEST_F(AlertView, Is_brought_back_to_the_front_while_another_question_waits_for_it)
{
    openDashboard();
    ask();
    m_windows.main()->requestActivate();
    m_workspace.activations = 0;
    m_windows.showQuestion();
    EXPECT_EQ(m_workspace.activations, 1);
    EXPECT_TRUE(QTest::qWaitForWindowActive(m_windows.alert()));
    click(QStringLiteral("alertReject"));
    lookAt(nullptr);
    m_windows.showQuestion();
    EXPECT_EQ(m_workspace.activations, 1) << "there is no question";
}

TEST_F(AlertView, Escape_takes_the_other_answer)
{
    ask();
    press(Qt::Key_Escape);
    lookAt(nullptr);
    EXPECT_EQ(m_answer, false);
}

TEST_F(AlertView, The_Macs_own_way_to_cancel_takes_the_other_answer)
{
    ask();
    press(Qt::Key_Period, Qt::ControlModifier);
    lookAt(nullptr);
    EXPECT_EQ(m_answer, false);
}

TEST_F(AlertView, Closing_it_takes_the_other_answer)
{
    ask();
    m_windows.alert()->close();
    lookAt(nullptr);
    EXPECT_EQ(m_answer, false);
    EXPECT_FALSE(m_windows.alert());
}

TEST_F(AlertView, One_question_follows_the_other)
{
    ask();
    Alert second = question();
    second.title = QStringLiteral("Change it back?");
    const QCoro::Task<bool> asked = m_dialogs.confirm(second);
    click(QStringLiteral("alertReject"));
    ASSERT_TRUE(m_windows.alert());
    lookAt(m_windows.alert());
    EXPECT_EQ(textOf(QStringLiteral("alertHeading")), second.title);
    EXPECT_EQ(m_answer, false);
    click(QStringLiteral("alertReject"));
    lookAt(nullptr);
    EXPECT_FALSE(m_windows.alert());
}

} // namespace

} // namespace corvane::test
