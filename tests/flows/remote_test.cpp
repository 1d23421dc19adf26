#include "dns/dns_backup.h"
#include "dns/restore_script.h"
#include "exec/background.h"
#include "remote/errand.h"
#include "remote/exit_status.h"
#include "remote/receiver.h"
#include "tests/flows/in_state.h"

#include <QFile>
#include <QJsonDocument>

#include <thread>

namespace corvane::test {

namespace {

using namespace remote;

const QString kWifi = QStringLiteral("Wi-Fi");

/// What a command printed, and how it ended.
struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

std::string contentOf(std::FILE *file)
{
    std::string content;
    std::rewind(file);
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file))
        content += static_cast<char>(c);
    std::fclose(file);
    return content;
}

/// Commands, given in a terminal beside the application.
class Commands : public FlowTest {
protected:
    Commands()
        : FlowTest(QStringLiteral("protected"))
    {
        QFile::remove(DNSBackup::file());
        QFile::remove(RestoreScript::file());
        listen();
    }

    void in(const char *state)
    {
        Mac::reset(QString::fromLatin1(state));
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
        m_receiver.reset();
        relaunch();
        listen();
        run(model().refreshStatus(Stats::Include));
    }
    void listen()
    {
        m_receiver = std::make_unique<Receiver>(model(), [this] { ++m_cameForward; });
        ASSERT_TRUE(m_receiver->open());
    }
    void endCorvane() { m_receiver.reset(); }

    Outcome give(const QByteArrayList &words)
    {
        Terminal terminal{std::tmpfile(), std::tmpfile()};
        Outcome outcome;
        bool ended = false;
        std::thread thread([&] {
            outcome.status = runErrand(CommandLine::of(words), QStringLiteral("1.2.3"), terminal);
            postToMainThread([&ended] { ended = true; });
        });
        waitFor([&ended] { return ended; }, "the command ends");
        thread.join();
        outcome.out = contentOf(terminal.out);
        outcome.err = contentOf(terminal.err);
        return outcome;
    }
    QJsonObject facts()
    {
        return QJsonDocument::fromJson(QByteArray::fromStdString(give({"status", "--json"}).out)).object();
    }

    std::unique_ptr<Receiver> m_receiver;
    int m_cameForward = 0;
};

} // namespace

TEST_F(Commands, Status_is_one_line_and_its_exit_status_follows_the_dot)
{
    struct Case {
        const char *state;
        int status;
        const char *line;
        const char *dot;
    };
    for (const Case &each : {Case{"protected", 0, "Pi-hole is answering and this Mac uses it\n", "green"},
                             Case{"running", 1, "Pi-hole is answering, but this Mac does not use it\n", "orange"},
                             Case{"dead", 2, "This Mac uses Pi-hole, but Pi-hole is not answering\n", "red"},
                             Case{"stopped", 3, "Stopped (Docker/Colima is not running)\n", "gray"}}) {
        in(each.state);
        const Outcome outcome = give({"status"});
        EXPECT_EQ(outcome.status, each.status);
        EXPECT_EQ(outcome.out, each.line);
        EXPECT_EQ(outcome.err, "");
        EXPECT_EQ(give({"status", "--json"}).status, each.status);
        EXPECT_TEXT(facts()[QLatin1String("dot")].toString(), each.dot);
    }
    relaunch();
    endCorvane();
    listen();
    EXPECT_EQ(give({"status"}).status, 4) << "not looked yet";
}

TEST_F(Commands, Status_for_a_program_holds_what_the_dashboard_shows)
{
    in("protected");
    QJsonObject told = facts();
    ASSERT_TRUE(model().summary());
    EXPECT_EQ(told[QLatin1String("running")], true);
    EXPECT_EQ(told[QLatin1String("answering")], true);
    EXPECT_EQ(told[QLatin1String("usedByMac")], true);
    EXPECT_EQ(told[QLatin1String("blocking")], QStringLiteral("on"));
    EXPECT_EQ(told[QLatin1String("pauseSecondsLeft")], QJsonValue::Null);
    EXPECT_EQ(told[QLatin1String("queriesToday")], model().summary()->total);
    EXPECT_EQ(told[QLatin1String("blockedToday")], model().summary()->blocked);
    in("stopped");
    told = facts();
    EXPECT_EQ(told[QLatin1String("blocking")], QJsonValue::Null);
    EXPECT_EQ(told[QLatin1String("queriesToday")], QJsonValue::Null);
}

TEST_F(Commands, A_pause_has_the_length_that_was_asked_for_and_can_be_ended)
{
    in("protected");
    const Outcome paused = give({"pause", "30s"});
    EXPECT_EQ(paused.status, kDone);
    EXPECT_EQ(paused.out, "Blocking is paused for 30 seconds.\n");
    ASSERT_TRUE(model().blocking() && model().blocking()->timerSeconds);
    EXPECT_FALSE(model().blocking()->enabled);
    EXPECT_LE(*model().blocking()->timerSeconds, 30);
    EXPECT_GT(*model().blocking()->timerSeconds, 0);
    EXPECT_EQ(facts()[QLatin1String("blocking")], QStringLiteral("paused"));
    EXPECT_GT(facts()[QLatin1String("pauseSecondsLeft")].toDouble(), 0);

    EXPECT_EQ(give({"pause", "1h"}).out, "Blocking is paused for 1 hour.\n");
    EXPECT_EQ(give({"pause", "300s"}).out, "Blocking is paused for 5 minutes.\n");
    const Outcome resumed = give({"resume"});
    EXPECT_EQ(resumed.status, kDone);
    EXPECT_EQ(resumed.out, "Blocking is back on.\n");
    EXPECT_TRUE(model().blocking()->enabled);
}

TEST_F(Commands, What_Pi_hole_does_not_do_is_told_with_its_reason)
{
    in("stopped");
    for (const QByteArrayList &words : {QByteArrayList{"pause", "5m"}, QByteArrayList{"resume"}}) {
        const Outcome outcome = give(words);
        EXPECT_EQ(outcome.status, kNotDone);
        EXPECT_EQ(outcome.out, "");
        EXPECT_TRUE(outcome.err.starts_with("Could not ")) << outcome.err;
    }
}

TEST_F(Commands, The_old_servers_are_put_back_once_the_user_has_agreed_in_the_window)
{
    in("protected");
    ASSERT_TRUE(DNSBackup::store({{kWifi, {QStringLiteral("9.9.9.9")}}}));
    user.cancels();
    const Outcome cancelled = give({"restore-dns"});
    EXPECT_EQ(cancelled.status, kNotDone);
    EXPECT_EQ(cancelled.err, "Corvane asks you in its window.\nNothing was changed.\n");
    EXPECT_EQ(Mac::prompts(), 0);

    user.agrees();
    const Outcome restored = give({"restore-dns"});
    EXPECT_EQ(restored.status, kDone);
    EXPECT_EQ(restored.out, "Your old DNS settings are back.\n");
    EXPECT_EQ(m_cameForward, 2);
    EXPECT_EQ(user.alerts().size(), 2);
    EXPECT_EQ(Mac::prompts(), 1);

    Mac::ctl(QStringLiteral("prompt cancel once"));
    const Outcome refused = give({"restore-dns"});
    EXPECT_EQ(refused.status, kNotDone);
    EXPECT_EQ(refused.err, "Corvane asks you in its window.\n"
                           "You cancelled the administrator prompt. Nothing was changed.\n");
}

TEST_F(Commands, A_second_restore_is_told_that_there_is_one_and_takes_no_message_away)
{
    in("protected");
    ASSERT_TRUE(DNSBackup::store({{kWifi, {QStringLiteral("9.9.9.9")}}}));
    model().setNotice(QStringLiteral("What was said last."));
    Outcome second;
    user.beforeAnswering([this, &second] {
        second = give({"restore-dns"});
        EXPECT_TEXT(model().notice(), "What was said last.");
    });
    run(model().restoreOldSettings());
    EXPECT_EQ(second.status, kNotDone);
    EXPECT_EQ(second.err, "The old DNS settings are being restored already. See Corvane's window.\n");
    EXPECT_EQ(m_cameForward, 1);
    EXPECT_TEXT(model().notice(), "Your old DNS settings are back.");
}

TEST_F(Commands, Without_Corvane_each_says_what_there_is_to_do)
{
    endCorvane();
    Outcome outcome = give({"status"});
    EXPECT_EQ(outcome.status, kNotRunning);
    EXPECT_EQ(outcome.out, "Corvane is not running.\n");
    outcome = give({"status", "--json"});
    EXPECT_EQ(outcome.status, kNotRunning);
    EXPECT_EQ(outcome.out, "{\"running\":false,\"text\":\"Corvane is not running.\"}\n");
    for (const QByteArrayList &words : {QByteArrayList{"pause", "5m"}, QByteArrayList{"resume"}}) {
        outcome = give(words);
        EXPECT_EQ(outcome.status, kNotRunning);
        EXPECT_EQ(outcome.err, "Corvane is not running. Open it first.\n");
    }
    outcome = give({"restore-dns"});
    EXPECT_EQ(outcome.status, kNotRunning);
    EXPECT_EQ(outcome.err, "Corvane is not running. It has saved no DNS servers that could be put back.\n");

    ASSERT_TRUE(DNSBackup::store({{kWifi, {}}}));
    outcome = give({"restore-dns"});
    EXPECT_EQ(outcome.status, kNotRunning);
    EXPECT_EQ(outcome.err, "Corvane is not running. This puts your old DNS servers back without it; open it in Finder "
                           "or run it:\n\"" +
                               RestoreScript::file().toStdString() + "\"\n");
    EXPECT_EQ(Mac::prompts(), 0);
}

TEST_F(Commands, Help_and_version_need_no_Corvane)
{
    endCorvane();
    EXPECT_EQ(give({"--version"}).out, "Corvane 1.2.3\n");
    const Outcome help = give({"--help"});
    EXPECT_EQ(help.status, kDone);
    EXPECT_EQ(help.out, CommandLine::help().toStdString());
    const Outcome wrong = give({"dance"});
    EXPECT_EQ(wrong.status, kWrongUse);
    EXPECT_EQ(wrong.err, "Corvane does not know the word \"dance\". \"Corvane --help\" tells what it does.\n");
}

TEST_F(Commands, A_Corvane_that_goes_away_while_it_works_leaves_nobody_waiting)
{
    in("protected");
    Mac::ctl(QStringLiteral("fault osascript late 0.3 --at 1"));
    ASSERT_TRUE(DNSBackup::store({{kWifi, {}}}));
    user.beforeAnswering([this] { m_receiver.reset(); });
    const Outcome outcome = give({"restore-dns"});
    EXPECT_EQ(outcome.status, kNoAnswer);
    quit();
}

} // namespace corvane::test
