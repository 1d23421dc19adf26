#include "dns/admin_script.h"
#include "dns/dns_configurator.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

std::string setting(const char *service, std::initializer_list<const char *> servers)
{
    QStringList list;
    for (const char *server : servers)
        list += QString::fromUtf8(server);
    return DNSConfigurator::setCommand(QString::fromUtf8(service), list).toStdString();
}

TEST(SetCommand, Quotes_the_service_and_every_server)
{
    EXPECT_EQ(setting("Wi-Fi", {"127.0.0.1", "1.1.1.1"}),
              "/usr/sbin/networksetup -setdnsservers 'Wi-Fi' '127.0.0.1' '1.1.1.1'");
}

TEST(SetCommand, Without_servers_sets_the_word_for_automatic)
{
    EXPECT_EQ(setting("Wi-Fi", {}), "/usr/sbin/networksetup -setdnsservers 'Wi-Fi' Empty");
}

TEST(SetCommand, Ends_the_quotes_for_an_apostrophe)
{
    EXPECT_EQ(setting("Anna's LAN", {"1.1.1.1"}), "/usr/sbin/networksetup -setdnsservers 'Anna'\\''s LAN' '1.1.1.1'");
}

TEST(AdminScript, Joins_the_commands_with_a_flush_that_cannot_fail)
{
    EXPECT_EQ(
        AdminScript::joined({QStringLiteral("a"), QStringLiteral("b")}),
        QStringLiteral("a && b && (/usr/bin/dscacheutil -flushcache; /usr/bin/killall -HUP mDNSResponder; true)"));
}

TEST(AdminScript, Escapes_backslashes_before_quotes)
{
    EXPECT_EQ(AdminScript::appleScript(QStringLiteral("a\\b\"c")),
              QStringLiteral("do shell script \"a\\\\b\\\"c\" with administrator privileges"));
}

CommandResult result(qint32 status, const char *output, const char *error = "")
{
    CommandResult made;
    made.status = status;
    made.standardOutput = QString::fromUtf8(output);
    made.standardError = QString::fromUtf8(error);
    return made;
}

const QString kCancelled = QStringLiteral("You cancelled the administrator prompt. Nothing was changed.");

TEST(FriendlyReason, Of_a_prompt_that_nobody_answered_comes_before_everything_else)
{
    CommandResult late = result(15, "", "execution error: User canceled. (-128)");
    late.timedOut = true;
    EXPECT_EQ(DNSConfigurator::friendly(late), QStringLiteral("The administrator prompt timed out."));
}

TEST(FriendlyReason, Of_a_failure_that_only_names_the_code_of_a_cancelled_prompt_is_the_failure)
{
    const QString unknown = QStringLiteral("0:9: execution error: LAN-128 is not a recognized network service. (4)");
    EXPECT_EQ(DNSConfigurator::friendly(result(1, "", unknown.toUtf8().constData())), unknown);
    const QString named = QStringLiteral("execution error: LAN (-128) is not a recognized network service. (4)");
    EXPECT_EQ(DNSConfigurator::friendly(result(1, "", named.toUtf8().constData())), named);
}

TEST(FriendlyReason, Of_a_cancelled_prompt_is_known_by_its_words_or_its_code)
{
    EXPECT_EQ(DNSConfigurator::friendly(result(1, "", "0:50: execution error: User canceled. (-128)")), kCancelled);
    EXPECT_EQ(DNSConfigurator::friendly(result(1, "", "execution error: Abgebrochen durch Benutzer. (-128)")),
              kCancelled);
    EXPECT_EQ(DNSConfigurator::friendly(result(1, "User canceled")), kCancelled);
    EXPECT_EQ(DNSConfigurator::friendly(result(1, "", "error: (-128) \rsee above")), kCancelled);
    EXPECT_EQ(DNSConfigurator::friendly(result(1, "", "-128\n")), kCancelled);
}

TEST(FriendlyReason, Of_silence_is_a_refusal)
{
    EXPECT_EQ(DNSConfigurator::friendly(result(1, " \n", "\t")), QStringLiteral("macOS refused the change."));
    CommandResult notStarted;
    notStarted.launchError = QStringLiteral("No such file");
    EXPECT_EQ(DNSConfigurator::friendly(notStarted), QStringLiteral("macOS refused the change."));
}

TEST(FriendlyReason, Of_anything_else_is_what_was_printed)
{
    EXPECT_EQ(DNSConfigurator::friendly(result(4, "Wi-Fu is not a recognized network service.\n", "err\n")),
              QStringLiteral("Wi-Fu is not a recognized network service.\nerr"));
    const QString half = QStringLiteral("0:50: execution error: User cancele");
    EXPECT_EQ(DNSConfigurator::friendly(result(1, "", half.toUtf8().constData())), half);
}

} // namespace
} // namespace corvane::test
