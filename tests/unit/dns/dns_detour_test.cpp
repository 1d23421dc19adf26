#include "dns/dns_configurator.h"
#include "dns/dns_detour.h"
#include "tests/support/fake_tool.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

std::string detourIn(const char *file)
{
    return ResolverReport::of(DNSConfigurator::parseResolvers(recorded(file))).detour.toStdString();
}

std::string detourOf(const QStringList &servers, const char *device = "en0")
{
    const ResolverBlock first{.nameservers = servers, .domain = {}, .device = QString::fromLatin1(device)};
    return dnsDetour(first).toStdString();
}

TEST(DnsDetour, A_vpn_is_told_by_its_interface)
{
    const std::string told = "A VPN (utun4) has put its own DNS server first, so nothing is asked of Pi-hole while it "
                             "is connected. Disconnect it, or switch off its own DNS in its settings.";
    EXPECT_EQ(detourIn("scutil_vpn.txt"), told);
    EXPECT_EQ(detourOf({QStringLiteral("10.64.0.1")}, "utun4"), told) << "also where it replaced the Mac's own servers";
    for (const char *device : {"ppp0", "ipsec0", "tun0", "tap0"})
        EXPECT_TRUE(detourOf({QStringLiteral("10.64.0.1")}, device).starts_with("A VPN (")) << device;
    for (const char *device : {"en0", "bridge100", "tu0", "ta0", "pp0", "utu0", "ipse0"})
        EXPECT_FALSE(detourOf({QStringLiteral("10.64.0.1")}, device).starts_with("A VPN (")) << device;
}

TEST(DnsDetour, A_resolver_that_takes_everything_is_told_where_no_interface_is_named)
{
    EXPECT_EQ(detourIn("scutil_vpn_unnamed.txt"),
              "A VPN or a security program has put its own DNS server (10.200.110.1) before all others, so nothing is "
              "asked of Pi-hole. Quit it, or switch off its own DNS in its settings.");
}

TEST(DnsDetour, The_routers_own_server_is_told_where_it_stands_before_pihole)
{
    EXPECT_EQ(detourOf({QStringLiteral("fe80::1%en0"), QStringLiteral("127.0.0.1")}),
              "Your router announces its own DNS server over IPv6 (fe80::1%en0), and macOS asks it before Pi-hole. "
              "Switch that off in the router's settings.");
    EXPECT_EQ(detourOf({QStringLiteral("fe80::1%en0"), QStringLiteral("192.168.1.1")}), "")
        << "a Mac that was not pointed at Pi-hole yet";
}

TEST(DnsDetour, There_is_none_where_pihole_is_first_or_servers_were_just_not_changed)
{
    EXPECT_EQ(detourIn("scutil_pihole_with_ipv6.txt"), "");
    EXPECT_EQ(detourIn("scutil_local_first.txt"), "") << "a resolver of one domain takes nothing else";
    EXPECT_EQ(detourIn("scutil_offline.txt"), "");
    EXPECT_EQ(detourOf({QStringLiteral("192.168.1.1")}), "");
    EXPECT_EQ(detourOf({QStringLiteral("127.0.0.1")}, "utun4"), "") << "a VPN that asks Pi-hole";
    EXPECT_EQ(detourOf({}), "");
}

} // namespace
} // namespace corvane::test
