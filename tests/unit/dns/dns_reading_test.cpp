#include "dns/dns_configurator.h"
#include "tests/support/fake_tool.h"
#include "tests/support/result_of.h"
#include "tests/unit/dns/dns_values.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

const QString kNetworksetup = QStringLiteral("/usr/sbin/networksetup");
const QString kRoute = QStringLiteral("/sbin/route");
const QString kScutil = QStringLiteral("/usr/sbin/scutil");

QByteArray tool(const char *name) { return printing(recorded(name).toUtf8()); }

/// Lists the recorded services; Wi-Fi points at Pi-hole, all others are automatic.
QByteArray networksetupBody()
{
    return "services() { " + printing(recorded("services.txt").toUtf8()) + "\n}\norder() { " +
           printing(recorded("service_order.txt").toUtf8()) +
           "\n}\ncase $1 in -listallnetworkservices) services ;; -listnetworkserviceorder) order ;; esac\n"
           "[ \"$2\" = Wi-Fi ] && printf '127.0.0.1\\n1.1.1.1\\n' && exit\n"
           "echo \"There aren't any DNS Servers set on $2.\"";
}

TEST(ListingServices, Gives_each_its_servers_and_marks_the_one_with_the_default_route)
{
    const FakeTool networksetup(kNetworksetup, networksetupBody());
    const FakeTool route(kRoute, tool("route_wifi.txt"));
    const QList<NetworkService> expected{
        {QStringLiteral("Wi-Fi"), list({"127.0.0.1", "1.1.1.1"}), true},
        {QStringLiteral("Anna's Hotspot: (büro)"), {}, false},
        {QStringLiteral("10.0.0.1"), {}, false},
        {QStringLiteral("USB 10/100/1000 LAN"), {}, false},
    };
    EXPECT_EQ(resultOf(DNSConfigurator::listServices()), expected);

    const QList<QStringList> calls{
        list({"-listallnetworkservices"}),    list({"-listnetworkserviceorder"}),
        list({"-getdnsservers", "Wi-Fi"}),    list({"-getdnsservers", "Anna's Hotspot: (büro)"}),
        list({"-getdnsservers", "10.0.0.1"}), list({"-getdnsservers", "USB 10/100/1000 LAN"}),
    };
    EXPECT_EQ(networksetup.calls(), calls);
    EXPECT_EQ(route.calls(), QList<QStringList>{list({"-n", "get", "default"})});
}

TEST(ListingServices, Without_a_default_route_none_is_marked)
{
    const FakeTool networksetup(kNetworksetup, networksetupBody());
    const FakeTool route(kRoute, printing("route: writing to routing socket: not in table", 1));
    const QList<NetworkService> services = resultOf(DNSConfigurator::listServices());
    ASSERT_EQ(services.size(), 4);
    for (const NetworkService &service : services)
        EXPECT_FALSE(service.isDefaultRoute) << service.name.toStdString();
}

TEST(ListingServices, A_default_route_over_no_listed_device_marks_none)
{
    const FakeTool networksetup(kNetworksetup, networksetupBody());
    const FakeTool route(kRoute, printing("  interface: utun4"));
    for (const NetworkService &service : resultOf(DNSConfigurator::listServices()))
        EXPECT_FALSE(service.isDefaultRoute);
}

TEST(ListingServices, Gives_nothing_when_the_tool_fails_or_is_missing)
{
    EXPECT_TRUE(resultOf(DNSConfigurator::listServices()).isEmpty());
    const FakeTool networksetup(kNetworksetup, printing("Wi-Fi", 4));
    EXPECT_TRUE(resultOf(DNSConfigurator::listServices()).isEmpty());
    EXPECT_EQ(networksetup.calls().size(), 1);
}

TEST(ListingServices, Shows_servers_that_macos_does_not_tell_as_automatic_and_says_so)
{
    const FakeTool networksetup(kNetworksetup, "case $1:$2 in -listall*) printf 'A\nB\nC\n' ;; *:A) exit 4 ;; "
                                               "*:B) echo \"There aren't any DNS Servers set on B.\" ;; esac");
    const QList<NetworkService> services = resultOf(DNSConfigurator::listServices());
    ASSERT_EQ(services.size(), 3);
    EXPECT_TRUE(services[0].servers.isEmpty());
    EXPECT_FALSE(services[0].serversKnown);
    EXPECT_TRUE(services[1].serversKnown);
    EXPECT_FALSE(services[2].serversKnown) << "silence is no answer";
}

TEST(ReadingAgain, Asks_only_for_what_is_not_known)
{
    NetworkService unread;
    unread.name = QStringLiteral("A");
    unread.serversKnown = false;
    const NetworkService known{.name = QStringLiteral("B"), .servers = {QStringLiteral("9.9.9.9")}};
    const FakeTool networksetup(kNetworksetup, "echo 8.8.8.8");
    const QList<NetworkService> services = resultOf(DNSConfigurator::readAgain({unread, known}));
    EXPECT_EQ(services[0].servers, QStringList{QStringLiteral("8.8.8.8")});
    EXPECT_TRUE(services[0].serversKnown);
    EXPECT_EQ(services[1], known);
    EXPECT_EQ(networksetup.calls().size(), 1);
}

TEST(ReadingAfresh, Takes_what_each_service_has_now)
{
    const NetworkService before{.name = QStringLiteral("A"), .servers = {QStringLiteral("9.9.9.9")}};
    const FakeTool networksetup(kNetworksetup, "echo 8.8.8.8");
    const QList<NetworkService> services = resultOf(DNSConfigurator::readAfresh({before}));
    EXPECT_EQ(services[0].servers, QStringList{QStringLiteral("8.8.8.8")});
}

TEST(ReadingAfresh, Keeps_what_was_known_where_nothing_can_be_read)
{
    const NetworkService before{.name = QStringLiteral("A"), .servers = {QStringLiteral("9.9.9.9")}};
    const FakeTool networksetup(kNetworksetup, printing("127.0.0.1", 1));
    EXPECT_EQ(resultOf(DNSConfigurator::readAfresh({before})), QList<NetworkService>{before});
}

TEST(ReadingAfresh, Takes_no_rubbish_for_the_servers_of_the_user)
{
    const NetworkService before{.name = QStringLiteral("A"), .servers = {QStringLiteral("9.9.9.9")}};
    for (const char *printed : {"", " \n", "%$#x", "8.8.8.8\nrubbish", "999.1.1.1"}) {
        const FakeTool networksetup(kNetworksetup, printing(printed));
        EXPECT_EQ(resultOf(DNSConfigurator::readAfresh({before})), QList<NetworkService>{before}) << printed;
    }
    const FakeTool networksetup(kNetworksetup, printing("fe80::1%en0\n2001:db8::1"));
    EXPECT_EQ(resultOf(DNSConfigurator::readAfresh({before})).first().servers.size(), 2);
}

TEST(CurrentServers, Of_a_tool_that_fails_are_none)
{
    const FakeTool networksetup(kNetworksetup, printing("127.0.0.1", 1));
    EXPECT_TRUE(resultOf(DNSConfigurator::currentServers(QStringLiteral("Wi-Fi"))).isEmpty());
}

TEST(ReadingTheReport, Does_not_look_at_the_exit_status)
{
    const FakeTool scutil(kScutil, printing(recorded("scutil_pihole_with_ipv6.txt").toUtf8(), 1));
    EXPECT_TRUE(resultOf(DNSConfigurator::resolverReport()).firstIsPihole);
    EXPECT_EQ(scutil.calls(), QList<QStringList>{list({"--dns"})});
}

TEST(ReadingTheReport, Without_scutil_says_that_it_could_not_be_read)
{
    const ResolverReport report = resultOf(DNSConfigurator::resolverReport());
    EXPECT_EQ(report.warnings, QStringList(QStringLiteral("Could not read the system's DNS servers from scutil.")));
}

TEST(ReadingTheReport, Of_a_mac_without_a_network_says_what_is_the_matter)
{
    const QString offline =
        QStringLiteral("macOS lists no DNS server at the moment: this Mac seems to have no network.");
    for (const char *report : {"scutil_offline.txt", "scutil_none.txt"}) {
        const FakeTool scutil(kScutil, tool(report));
        EXPECT_EQ(resultOf(DNSConfigurator::resolverReport()).explanation, offline) << report;
    }
    EXPECT_EQ(resultOf(DNSConfigurator::resolverReport()).explanation, QString()) << "without scutil nothing is known";
    const FakeTool scutil(kScutil, tool("scutil_vpn.txt"));
    EXPECT_EQ(resultOf(DNSConfigurator::resolverReport()).explanation, QString());
}

TEST(TimeLimits, Of_the_tools_are_ten_seconds_and_three_minutes_for_a_password)
{
    EXPECT_EQ(DNSConfigurator::kReadTimeout, std::chrono::seconds(10));
    EXPECT_EQ(DNSConfigurator::kPromptTimeout, std::chrono::seconds(180));
}

TEST(SystemLookup, Tells_whether_the_name_has_an_address)
{
    EXPECT_TRUE(resultOf(DNSConfigurator::systemResolve(QStringLiteral("127.0.0.1"))));
    EXPECT_FALSE(resultOf(DNSConfigurator::systemResolve(QStringLiteral("no such name"))));
}

} // namespace
} // namespace corvane::test
