#include "dns/dns_configurator.h"
#include "tests/support/fake_tool.h"
#include "tests/unit/dns/dns_values.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

TEST(ServiceNames, Leave_the_explanation_and_disabled_services_out)
{
    EXPECT_EQ(DNSConfigurator::parseServiceNames(recorded("services.txt")),
              list({"Wi-Fi", "Anna's Hotspot: (büro)", "10.0.0.1", "USB 10/100/1000 LAN"}));
}

TEST(ServiceNames, Lose_only_blanks_at_their_ends)
{
    EXPECT_EQ(DNSConfigurator::parseServiceNames(u" \tA  B\t\n\n \t \n *off\nC*"), list({"A  B", "C*"}));
}

TEST(ServiceNames, Of_nothing_are_none) { EXPECT_TRUE(DNSConfigurator::parseServiceNames(u"").isEmpty()); }

TEST(ServiceDevices, Are_found_for_numbered_and_disabled_services)
{
    const QHash<QString, QString> expected{
        {QStringLiteral("Wi-Fi"), QStringLiteral("en0")},
        {QStringLiteral("Anna's Hotspot: (büro)"), QStringLiteral("en7")},
        {QStringLiteral("Thunderbolt Bridge"), QStringLiteral("bridge0")},
        {QStringLiteral("USB 10/100/1000 LAN"), QStringLiteral("en8")},
    };
    EXPECT_EQ(DNSConfigurator::parseServiceDevices(recorded("service_order.txt")), expected);
}

TEST(ServiceDevices, A_later_entry_of_the_same_name_counts)
{
    const QString text =
        QStringLiteral("(1) A\n(Hardware Port: x, Device: en1)\n(2) A\n(Hardware Port: x, Device: en2)\n");
    const QHash<QString, QString> expected{{QStringLiteral("A"), QStringLiteral("en2")}};
    EXPECT_EQ(DNSConfigurator::parseServiceDevices(text), expected);
}

TEST(ServiceDevices, The_name_of_a_port_may_look_like_a_device)
{
    const QHash<QString, QString> expected{{QStringLiteral("A"), QStringLiteral("en8")}};
    EXPECT_EQ(DNSConfigurator::parseServiceDevices(u"(1) A\n(Hardware Port: Docking, Device: left, Device: en8)\n"),
              expected);
}

TEST(ServiceDevices, A_port_before_any_service_belongs_to_none)
{
    EXPECT_TRUE(DNSConfigurator::parseServiceDevices(u"(Hardware Port: x, Device: en1)\n(1) A\n").isEmpty());
}

TEST(ServiceDevices, A_line_that_only_looks_like_a_port_is_a_service)
{
    const QHash<QString, QString> expected{{QStringLiteral("Hardware Port: fake"), QStringLiteral("en3")}};
    EXPECT_EQ(DNSConfigurator::parseServiceDevices(u"(1) Hardware Port: fake\n(Hardware Port: y, Device: en3, more)"),
              expected);
}

TEST(DefaultRoute, Is_the_interface_line)
{
    EXPECT_EQ(DNSConfigurator::parseDefaultRoute(recorded("route_wifi.txt")), QStringLiteral("en0"));
}

TEST(DefaultRoute, Is_none_without_a_network)
{
    EXPECT_EQ(DNSConfigurator::parseDefaultRoute(recorded("route_none.txt")), std::nullopt);
    EXPECT_EQ(DNSConfigurator::parseDefaultRoute(u""), std::nullopt);
}

TEST(DefaultRoute, Is_the_first_of_several_interface_lines)
{
    EXPECT_EQ(DNSConfigurator::parseDefaultRoute(u"x interface: a\n\tinterface:\ten5 \n interface: en6"),
              QStringLiteral("en5"));
}

TEST(Servers, Are_listed_in_order)
{
    EXPECT_EQ(DNSConfigurator::parseServers(recorded("servers_pihole.txt")), list({"127.0.0.1", "1.1.1.1"}));
    EXPECT_EQ(DNSConfigurator::parseServers(u"fe80::1%en0\n\n 2001:db8::1\t\n"), list({"fe80::1%en0", "2001:db8::1"}));
}

TEST(Servers, Of_an_automatic_service_are_none)
{
    EXPECT_TRUE(DNSConfigurator::parseServers(recorded("servers_automatic.txt")).isEmpty());
    EXPECT_TRUE(DNSConfigurator::parseServers(u"There aren't any DNS Servers set on\n10.0.0.1\n").isEmpty());
}

TEST(Servers, Are_never_taken_from_an_error_sentence)
{
    EXPECT_TRUE(DNSConfigurator::parseServers(recorded("servers_unknown_service.txt")).isEmpty());
}

} // namespace
} // namespace corvane::test
