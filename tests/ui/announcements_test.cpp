#include "tests/ui/screen.h"
#include "tests/ui/states.h"
#include "ui/announcements.h"

#include <QTest>

namespace corvane::test {

namespace {

class NotedAnnouncer final : public Announcer {
public:
    void announce(const QString &sentence) override { said << sentence; }

    QStringList said;
};

class Spoken : public Screen {
protected:
    /// What a screen reader was told since it was asked last.
    [[nodiscard]] QStringList said()
    {
        QTest::qWait(120);
        // A frame that took all this time has left no room for the burst's end.
        QCoreApplication::processEvents();
        return std::exchange(m_announcer.said, {});
    }
    void test(const char *name, bool passed, const char *summary, int minute)
    {
        Outcomes outcomes = m_app.outcomes();
        outcomes.insert(QString::fromLatin1(name),
                        {passed, QString::fromLatin1(summary), QDateTime({2026, 11, 21}, QTime(12, minute))});
        m_app.setOutcomes(outcomes);
    }

    NotedAnnouncer m_announcer;
    Announcements m_announcements{m_app, m_dialogs, m_commands, m_announcer};
};

TEST_F(Spoken, A_message_is_said_once_however_many_windows_show_it)
{
    openDashboard();
    m_windows.openSettings();
    m_app.setNotice(QStringLiteral("It was done."));
    EXPECT_EQ(said(), QStringList(QStringLiteral("It was done.")));
    m_app.setNotice({});
    EXPECT_EQ(said(), QStringList());
}

TEST_F(Spoken, Every_message_field_is_said)
{
    const std::pair<void (AppModel::*)(const QString &), const char *> fields[] = {
        {&AppModel::setNotice, "a"},     {&AppModel::setStartMessage, "b"},  {&AppModel::setApiMessage, "c"},
        {&AppModel::setDnsMessage, "d"}, {&AppModel::setUpdateMessage, "e"},
    };
    for (const auto &[set, text] : fields) {
        (m_app.*set)(QString::fromLatin1(text));
        EXPECT_EQ(said(), QStringList(QString::fromLatin1(text)));
    }
}

TEST_F(Spoken, What_comes_together_is_said_in_one_breath_and_not_twice)
{
    m_app.setStartMessage(QStringLiteral("It is not there."));
    m_app.setNotice(QStringLiteral("It is not there."));
    m_app.setDnsMessage(QStringLiteral("Nothing was changed."));
    EXPECT_EQ(said(), QStringList(QStringLiteral("It is not there. Nothing was changed.")));
}

TEST_F(Spoken, The_banner_is_said_when_it_comes)
{
    openDashboard();
    showUsedButDead(m_app);
    const QStringList heard = said();
    ASSERT_EQ(heard.size(), 1);
    EXPECT_TRUE(texts().contains(heard.first())) << heard.first().toStdString();
    m_app.setAnswering(true);
    EXPECT_EQ(said(), QStringList());
}

TEST_F(Spoken, A_question_is_said_with_what_it_is_about)
{
    Alert alert;
    alert.title = QStringLiteral("Remove it?");
    alert.text = QStringLiteral("This removes all of it.");
    const QCoro::Task<bool> asked = m_dialogs.confirm(alert);
    EXPECT_EQ(said(), QStringList(QStringLiteral("Remove it? This removes all of it.")));
    m_dialogs.answer(false);
    EXPECT_EQ(said(), QStringList());
}

TEST_F(Spoken, A_copy_is_confirmed)
{
    m_app.setAdminPassword(QStringLiteral("kR7vWq2mXz9bTn4c"));
    m_commands.copyAdminPassword();
    EXPECT_EQ(said(), QStringList(QStringLiteral("Copied.")));
}

TEST_F(Spoken, A_test_says_its_verdict_each_time_it_ends)
{
    test("system", true, "3 of 3 lookups were seen.", 1);
    EXPECT_EQ(said(), QStringList(QStringLiteral("This Mac uses Pi-hole (step 6): passed. 3 of 3 lookups were seen.")));
    test("system", true, "3 of 3 lookups were seen.", 2);
    EXPECT_EQ(said().size(), 1);
    test("docker", false, "No answer.", 3);
    EXPECT_EQ(said(), QStringList(QStringLiteral("Docker engine: failed. No answer.")));
    m_app.setOutcomes({});
    EXPECT_EQ(said(), QStringList());
}

TEST_F(Spoken, The_checks_say_how_they_ended)
{
    m_app.setBusy({QStringLiteral("checks")});
    showChecks(m_app, true);
    EXPECT_EQ(said(), QStringList());
    m_app.setBusy({});
    EXPECT_EQ(said(), QStringList(QStringLiteral(
                          "Homebrew: warning. Not found, but you do not need it right now. Ports 53 and 8080: failed. "
                          "At least one port is already in use. Details are below.")));
}

TEST_F(Spoken, An_operation_says_how_it_ended)
{
    {
        const SleepingOperation installing(*m_app.installOp(), QStringLiteral("Making something"));
        EXPECT_EQ(said(), QStringList());
    }
    EXPECT_EQ(said(), QStringList(QStringLiteral("Making something: Cancelled.")));
}

} // namespace

} // namespace corvane::test
