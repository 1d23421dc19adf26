#include "exec/command_runner.h"
#include "tests/flows/in_state.h"

namespace corvane::test {

namespace {

/// A Mac that is ready for the change, and a user before the administrator prompt.
class Prompt : public Running {
protected:
    Prompt()
    {
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
        run(model().refreshStatus(Stats::Leave));
        run(model().loadServices());
    }

    void expectUnchanged(const char *sentence)
    {
        EXPECT_TEXT(model().dnsMessage(), sentence);
        const QJsonArray services = Mac::ctl(QStringLiteral("services")).toArray();
        for (const QJsonValue &service : services)
            EXPECT_TRUE(service[QLatin1String("servers")].toArray().isEmpty());
        EXPECT_EQ(Mac::calls(QStringLiteral("networksetup")).filter(QStringLiteral("-setdnsservers")).size(), 0);
        EXPECT_FALSE(model().outcomes().contains(QStringLiteral("system")));
        EXPECT_TRUE(quiet());
    }
};

const char *const kCancelled = "You cancelled the administrator prompt. Nothing was changed.";

} // namespace

TEST_F(Prompt, Cancelling_it_changes_nothing_in_any_language)
{
    for (const char *language : {"en", "de", "fr", "es"}) {
        Mac::ctl(QStringLiteral("language ") + QLatin1String(language));
        Mac::ctl(QStringLiteral("prompt cancel once"));
        const auto lists = Mac::calls(QStringLiteral("networksetup")).filter(QStringLiteral("-listall")).size();
        run(model().applyDNS());
        expectUnchanged(kCancelled);
        EXPECT_EQ(Mac::calls(QStringLiteral("networksetup")).filter(QStringLiteral("-listall")).size(), lists + 2)
            << "for the list, and for whether the browsers' rule is needed";
    }
    EXPECT_EQ(Mac::prompts(), 4);
}

TEST_F(Prompt, A_wrong_password_is_told_in_macos_own_words)
{
    Mac::ctl(QStringLiteral("prompt refuse once"));
    run(model().applyDNS());
    EXPECT_TRUE(model().dnsMessage().contains(
        QStringLiteral("The administrator user name or password was incorrect. (-60007)")))
        << model().dnsMessage().toStdString();
    expectUnchanged(model().dnsMessage().toUtf8().constData());
}

TEST_F(Prompt, One_that_says_nothing_is_a_refusal)
{
    Mac::ctl(QStringLiteral("fault osascript fail"));
    run(model().applyDNS());
    expectUnchanged("macOS refused the change.");
}

TEST_F(Prompt, One_that_cannot_be_shown_is_a_refusal)
{
    Mac::ctl(QStringLiteral("fault osascript vanish"));
    run(model().applyDNS());
    expectUnchanged("macOS refused the change.");
}

TEST_F(Prompt, Cancelling_it_for_a_restore_keeps_pihole_in_use)
{
    run(model().applyDNS());
    ASSERT_TRUE(passed(model().outcomes(), QStringLiteral("system")));
    Mac::ctl(QStringLiteral("prompt cancel"));
    run(model().restoreOldSettings());
    EXPECT_TEXT(model().dnsMessage(), kCancelled);
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("system")));
    EXPECT_TEXT(model().notice(), "");
    run(model().refreshStatus(Stats::Leave));
    EXPECT_TRUE(model().usedByMac());
    EXPECT_TRUE(quiet());
}

TEST_F(Prompt, An_open_one_holds_nothing_else_up)
{
    Mac::ctl(QStringLiteral("prompt hang"));
    launch(model().applyDNS());
    waitFor([] { return Mac::prompts() == 1; }, "the prompt is shown");
    run(model().refreshStatus(Stats::Include));
    EXPECT_TRUE(model().answering()) << "the status goes on";
    EXPECT_TRUE(model().busy().contains(QStringLiteral("applydns")));
    EXPECT_TEXT(model().dnsMessage(), "");
    CommandRunner::terminateAll(); // as when the program is quit
    waitFor([this] { return quiet(); }, "the change ends");
    expectUnchanged("macOS refused the change.");
}

} // namespace corvane::test
