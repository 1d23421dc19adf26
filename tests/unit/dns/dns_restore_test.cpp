#include "dns/admin_script.h"
#include "dns/dns_backup.h"
#include "dns/dns_configurator.h"
#include "tests/support/fake_tool.h"
#include "tests/support/home_folder.h"
#include "tests/support/result_of.h"
#include "tests/unit/dns/changing_dns.h"

#include <QFile>
#include <gtest/gtest.h>

namespace corvane::test {
namespace {

QString automatic(const char *service) { return DNSConfigurator::setCommand(QString::fromUtf8(service), {}); }

/// A networksetup that lists the services A, B and C, and shows the servers that the lines of `cases` give them.
QByteArray services(const QByteArray &cases)
{
    return "case \"$1:$2\" in -listallnetworkservices:*) printf 'An asterisk (*) means off.\nA\nB\n*C\n' ;;\n" + cases +
           "\nesac";
}

class WithBackup : public testing::Test {
protected:
    const FakeTool osascript{kOsascript, ""};

private:
    HomeFolder m_home;
};

class Restoring : public WithBackup {};
class RestoringForRemoval : public WithBackup {};

TEST_F(Restoring, Puts_every_saved_service_back_with_one_prompt_and_checks_nothing)
{
    ASSERT_TRUE(DNSBackup::store({{kLan, list({"9.9.9.9", "8.8.8.8"})}, {kWifi, {}}}));
    const FakeTool networksetup(kNetworksetup, "[ $1 = -listallnetworkservices ] && printf \"Wi-Fi\\nAnna's LAN\\n\"");
    const DNSRestore restored = resultOf(DNSConfigurator::restore());
    EXPECT_EQ(restored.failure, kSuccess);
    EXPECT_EQ(restored.remark, QString());
    EXPECT_EQ(osascript.calls(), onePrompt({DNSConfigurator::setCommand(kLan, list({"9.9.9.9", "8.8.8.8"})),
                                            DNSConfigurator::setCommand(kWifi, {})}));
    EXPECT_TRUE(DNSConfigurator::hasBackup());
}

TEST_F(Restoring, Leaves_out_a_service_that_is_gone_names_it_and_keeps_its_entry)
{
    const DNSBackup::Entries saved{{kLan, list({"9.9.9.9"})}, {QStringLiteral("A"), {}}, {QStringLiteral("C"), {}}};
    ASSERT_TRUE(DNSBackup::store(saved));
    const FakeTool networksetup(kNetworksetup, services(""));
    const DNSRestore restored = resultOf(DNSConfigurator::restore());
    EXPECT_EQ(restored.failure, kSuccess);
    EXPECT_EQ(restored.remark, QStringLiteral("Not on this Mac any more: Anna's LAN. The old servers stay saved."));
    EXPECT_EQ(osascript.calls(), onePrompt({automatic("A"), automatic("C")})) << "a service that is off is there";
    EXPECT_EQ(DNSBackup::load(), saved);
}

TEST_F(Restoring, When_only_services_that_are_gone_are_saved_whatever_points_at_pihole_becomes_automatic)
{
    ASSERT_TRUE(DNSBackup::store({{kLan, list({"9.9.9.9"})}}));
    const FakeTool networksetup(kNetworksetup, services("*:A) echo 9.9.9.9 ;; *:B) echo 127.0.0.1 ;;"));
    const DNSRestore restored = resultOf(DNSConfigurator::restore());
    EXPECT_EQ(restored.failure, kSuccess);
    EXPECT_TRUE(restored.remark.contains(kLan));
    EXPECT_EQ(osascript.calls(), onePrompt({automatic("B")}));
}

TEST_F(Restoring, With_nothing_but_a_service_that_is_gone_says_so_and_shows_no_prompt)
{
    ASSERT_TRUE(DNSBackup::store({{kLan, list({"9.9.9.9"})}}));
    const FakeTool networksetup(kNetworksetup, services("*:?) echo 9.9.9.9 ;;"));
    EXPECT_EQ(resultOf(DNSConfigurator::restore()).failure,
              QStringLiteral("Not on this Mac any more: Anna's LAN. The old servers stay saved."));
    EXPECT_TRUE(osascript.calls().isEmpty());
}

TEST_F(Restoring, Puts_all_saved_services_back_when_macos_does_not_tell_its_services)
{
    ASSERT_TRUE(DNSBackup::store({{kLan, list({"9.9.9.9"})}}));
    const FakeTool networksetup(kNetworksetup, "exit 1");
    EXPECT_EQ(resultOf(DNSConfigurator::restore()).failure, kSuccess);
    EXPECT_EQ(osascript.calls(), onePrompt({DNSConfigurator::setCommand(kLan, list({"9.9.9.9"}))}));
}

TEST_F(Restoring, With_nothing_saved_sets_services_at_pihole_to_automatic)
{
    const FakeTool networksetup(kNetworksetup,
                                "case \"$1:$2\" in -listall*) printf 'A\\nB\\nC\\n' ;; *:A) echo 127.0.0.1 ;;\n"
                                "*:B) echo 9.9.9.9 ;; *:C) printf '9.9.9.9\\n127.0.0.1\\n' ;; esac");
    EXPECT_EQ(resultOf(DNSConfigurator::restore()).failure, kSuccess);
    EXPECT_EQ(osascript.calls(), onePrompt({automatic("A"), automatic("C")}));
}

TEST_F(Restoring, With_nothing_to_restore_says_so_and_shows_no_prompt)
{
    const FakeTool networksetup(kNetworksetup, "case $1 in -listall*) echo A ;; *) echo 9.9.9.9 ;; esac");
    EXPECT_EQ(resultOf(DNSConfigurator::restore()).failure,
              QStringLiteral("There is nothing to restore: no saved settings and no service points at Pi-hole."));
    EXPECT_TRUE(osascript.calls().isEmpty());
}

TEST_F(Restoring, A_service_that_cannot_be_read_is_read_twice_and_never_counts_as_done)
{
    const FakeTool networksetup(kNetworksetup, services("*:A) exit 4 ;; *:B) echo 9.9.9.9 ;;"));
    EXPECT_EQ(resultOf(DNSConfigurator::restore()).failure,
              QStringLiteral("macOS did not tell the DNS servers of A. Look in System Settings whether 127.0.0.1 is "
                             "among them."));
    EXPECT_EQ(networksetup.calls().count({QStringLiteral("-getdnsservers"), QStringLiteral("A")}), 2);
    EXPECT_EQ(networksetup.calls().count({QStringLiteral("-getdnsservers"), QStringLiteral("B")}), 1);
    EXPECT_TRUE(osascript.calls().isEmpty());
}

TEST_F(RestoringForRemoval, Takes_pihole_from_every_service_with_one_prompt)
{
    ASSERT_TRUE(DNSBackup::store({{QStringLiteral("A"), list({"9.9.9.9"})}, {kLan, {}}}));
    const FakeTool networksetup(kNetworksetup,
                                services("*:A) echo 127.0.0.1 ;; *:B) printf '1.1.1.1\\n127.0.0.1\\n' ;;"));
    const DNSRestore restored = resultOf(DNSConfigurator::restoreForRemoval());
    EXPECT_EQ(restored.failure, kSuccess);
    EXPECT_TRUE(restored.remark.contains(kLan)) << "it holds nothing up";
    EXPECT_EQ(osascript.calls(),
              onePrompt({DNSConfigurator::setCommand(QStringLiteral("A"), list({"9.9.9.9"})), automatic("B")}));
}

TEST_F(RestoringForRemoval, Asks_nothing_when_nothing_points_at_pihole)
{
    const FakeTool networksetup(kNetworksetup, services("*:?) echo 9.9.9.9 ;;"));
    const DNSRestore restored = resultOf(DNSConfigurator::restoreForRemoval());
    EXPECT_EQ(restored.failure, kSuccess);
    EXPECT_EQ(restored.remark, QString());
    EXPECT_TRUE(osascript.calls().isEmpty());
}

TEST_F(RestoringForRemoval, Names_a_service_that_cannot_be_read)
{
    const FakeTool networksetup(kNetworksetup, services("*:A) exit 4 ;; *:B) echo 9.9.9.9 ;;"));
    const DNSRestore restored = resultOf(DNSConfigurator::restoreForRemoval());
    EXPECT_EQ(restored.failure, kSuccess);
    EXPECT_TRUE(restored.remark.startsWith(QStringLiteral("macOS did not tell the DNS servers of A.")))
        << restored.remark.toStdString();
}

TEST_F(RestoringForRemoval, Does_not_pass_over_a_damaged_backup_when_macos_tells_nothing)
{
    QFile backup(DNSConfigurator::backupFile());
    ASSERT_TRUE(backup.open(QIODevice::WriteOnly));
    backup.write("[{");
    backup.close();
    {
        const FakeTool networksetup(kNetworksetup, "exit 1");
        EXPECT_TRUE(resultOf(DNSConfigurator::restoreForRemoval()).failure);
    }
    const FakeTool networksetup(kNetworksetup, services("*:?) echo 9.9.9.9 ;;"));
    EXPECT_EQ(resultOf(DNSConfigurator::restoreForRemoval()).failure, kSuccess) << "known to be unused";
}

TEST(RefusedRestore, Is_said)
{
    const HomeFolder home;
    ASSERT_TRUE(DNSBackup::store({{kWifi, {}}}));
    EXPECT_EQ(resultOf(DNSConfigurator::restore()).failure, QStringLiteral("macOS refused the change."))
        << "there is no osascript";
    const FakeTool osascript(kOsascript, "exit 1");
    EXPECT_EQ(resultOf(DNSConfigurator::restore()).failure, QStringLiteral("macOS refused the change."));
}

} // namespace
} // namespace corvane::test
