#include "app/launch.h"
#include "tests/ui/screen.h"

#include <QTest>

namespace corvane {

namespace {

Alert question()
{
    Alert alert;
    alert.title = QStringLiteral("Change DNS on 1 network service(s)?");
    alert.text = QStringLiteral("• Wi-Fi: Automatic  ->  127.0.0.1, then 1.1.1.1\n\nYour old values are saved first in "
                                "dns-backup.json (Application Support/Corvane). The DNS cache is flushed. macOS will "
                                "ask for your administrator password once.");
    alert.accept = QStringLiteral("Change DNS");
    alert.reject = QStringLiteral("Cancel");
    return alert;
}

class AlertView : public Screen {
protected:
    void ask()
    {
        launch(note(this, m_dialogs.confirm(m_question)));
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
    EXPECT_EQ(textOf(QStringLiteral("alertAccept")), QStringLiteral("Change DNS"));
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

TEST_F(AlertView, Escape_takes_the_other_answer)
{
    ask();
    press(Qt::Key_Escape);
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
    second.title = QStringLiteral("Restore my old DNS settings?");
    launch(
        [](Dialogs *dialogs, Alert alert) -> QCoro::Task<> { co_await dialogs->confirm(alert); }(&m_dialogs, second));
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

} // namespace corvane
