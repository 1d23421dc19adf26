#include "dns/admin_script.h"
#include "dns/dns_backup.h"
#include "dns/dns_configurator.h"
#include "tests/support/fake_tool.h"
#include "tests/support/home_folder.h"
#include "tests/support/result_of.h"
#include "tests/unit/dns/changing_dns.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace corvane::test {
namespace {

class ChangingDns : public testing::Test {
protected:
    HomeFolder m_home;
};

class Applying : public ChangingDns {};

TEST_F(Applying, Asks_once_for_all_services_and_checks_each)
{
    const FakeTool osascript(kOsascript, "");
    const FakeTool networksetup(kNetworksetup, printing("127.0.0.1\n1.1.1.1"));
    const QStringList servers = list({"127.0.0.1", "1.1.1.1"});
    EXPECT_EQ(resultOf(DNSConfigurator::apply({kWifi, kLan}, false)), kSuccess);
    EXPECT_EQ(osascript.calls(),
              onePrompt({DNSConfigurator::setCommand(kWifi, servers), DNSConfigurator::setCommand(kLan, servers)}));
    const QList<QStringList> each{{QStringLiteral("-getdnsservers"), kWifi}, {QStringLiteral("-getdnsservers"), kLan}};
    EXPECT_EQ(networksetup.calls(), each + each) << "before and after";
}

TEST_F(Applying, Pihole_only_sets_no_second_server)
{
    const FakeTool osascript(kOsascript, "");
    const FakeTool networksetup(kNetworksetup, printing("127.0.0.1"));
    EXPECT_EQ(resultOf(DNSConfigurator::apply({kWifi}, true)), kSuccess);
    EXPECT_EQ(osascript.calls(), onePrompt({DNSConfigurator::setCommand(kWifi, list({"127.0.0.1"}))}));
}

TEST_F(Applying, Names_the_first_service_that_macos_did_not_change)
{
    const FakeTool osascript(kOsascript, "");
    {
        const FakeTool networksetup(kNetworksetup, printing("127.0.0.1"));
        EXPECT_EQ(resultOf(DNSConfigurator::apply({kWifi, kLan}, false)),
                  QStringLiteral("macOS did not keep the new DNS servers for Wi-Fi (it shows: 127.0.0.1)."));
        EXPECT_EQ(networksetup.calls().last(), (QStringList{QStringLiteral("-getdnsservers"), kWifi}));
    }
    {
        const FakeTool networksetup(kNetworksetup, "[ \"$2\" = Wi-Fi ] && echo 127.0.0.1 && echo 1.1.1.1 && exit\n"
                                                   "printf '1.1.1.1\\n127.0.0.1\\n'");
        EXPECT_EQ(
            resultOf(DNSConfigurator::apply({kWifi, kLan}, false)),
            QStringLiteral("macOS did not keep the new DNS servers for Anna's LAN (it shows: 1.1.1.1, 127.0.0.1)."));
    }
    const FakeTool networksetup(kNetworksetup, printing("There aren't any DNS Servers set on Wi-Fi."));
    EXPECT_EQ(resultOf(DNSConfigurator::apply({kWifi}, false)),
              QStringLiteral("macOS did not keep the new DNS servers for Wi-Fi (it shows: Automatic)."));
}

TEST_F(Applying, A_cancelled_prompt_is_said_and_nothing_is_checked)
{
    const FakeTool osascript(kOsascript, "echo '0:50: execution error: User canceled. (-128)' >&2; exit 1");
    const FakeTool networksetup(kNetworksetup, "");
    EXPECT_EQ(resultOf(DNSConfigurator::apply({kWifi}, false)),
              QStringLiteral("You cancelled the administrator prompt. Nothing was changed."));
    EXPECT_TRUE(networksetup.calls().isEmpty());
}

TEST_F(Applying, A_change_that_stops_half_way_names_what_was_changed)
{
    QTemporaryDir folder;
    const QByteArray changed = QFile::encodeName(folder.filePath(QStringLiteral("changed")));
    const FakeTool osascript(kOsascript,
                             "touch " + changed + "; echo '0:9: execution error: LAN is gone. (4)' >&2; exit 1");
    const FakeTool networksetup(kNetworksetup, "[ \"$2\" = Wi-Fi ] || { echo 9.9.9.9; exit; }\n[ -e " + changed +
                                                   " ] && echo 127.0.0.1 || echo 8.8.8.8");
    const QStringList services{kWifi, kLan, QStringLiteral("USB")};
    EXPECT_EQ(resultOf(DNSConfigurator::apply(services, true)),
              QStringLiteral("0:9: execution error: LAN is gone. (4)\nChanged before that: Wi-Fi."));
}

TEST_F(Applying, A_service_that_was_at_pihole_before_was_not_changed_by_a_change_that_failed)
{
    const FakeTool osascript(kOsascript,
                             "echo '0:9: execution error: The password was incorrect. (-60007)' >&2; exit 1");
    const FakeTool networksetup(kNetworksetup, printing("127.0.0.1"));
    EXPECT_EQ(resultOf(DNSConfigurator::apply({kWifi, kLan}, true)),
              QStringLiteral("0:9: execution error: The password was incorrect. (-60007)"));
}

TEST_F(Applying, What_networksetup_complained_about_is_shown)
{
    const FakeTool osascript(kOsascript, printing("Wi-Fu is not a recognized network service.", 1));
    EXPECT_EQ(resultOf(DNSConfigurator::apply({QStringLiteral("Wi-Fu")}, false)),
              QStringLiteral("Wi-Fu is not a recognized network service."));
}

} // namespace
} // namespace corvane::test
