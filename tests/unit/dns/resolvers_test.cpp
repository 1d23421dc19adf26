#include "dns/dns_configurator.h"
#include "tests/support/fake_tool.h"
#include "tests/unit/dns/dns_values.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

const QString kUnreadable = QStringLiteral("Could not read the system's DNS servers from scutil.");

QString first(const char *server)
{
    return QStringLiteral("The first DNS server macOS uses is ") + QString::fromLatin1(server) +
           QStringLiteral(", not Pi-hole (127.0.0.1). A VPN, a configuration profile or the router (IPv6 DNS) may be "
                          "overriding it.");
}

QString others(const char *servers)
{
    return QStringLiteral("macOS also lists other DNS servers (") + QString::fromLatin1(servers) +
           QStringLiteral("). Queries sent to those bypass Pi-hole.");
}

ResolverReport reportOn(const QString &text) { return ResolverReport::of(DNSConfigurator::parseResolvers(text)); }

ResolverReport reportOnServers(const QStringList &servers)
{
    const ResolverBlock block{.nameservers = servers, .domain = std::nullopt};
    return ResolverReport::of({block});
}

TEST(ParsingResolvers, Reads_servers_and_domains_of_each_block_up_to_the_scoped_ones)
{
    const QList<ResolverBlock> expected{
        {.nameservers = list({"127.0.0.1", "fe80::1%en0"}), .domain = std::nullopt, .device = QStringLiteral("en0")},
        {.nameservers = {}, .domain = QStringLiteral("local")},
        {.nameservers = {}, .domain = QStringLiteral("254.169.in-addr.arpa")},
    };
    EXPECT_EQ(DNSConfigurator::parseResolvers(recorded("scutil_pihole_with_ipv6.txt")), expected);
}

TEST(ParsingResolvers, Numbers_may_have_gaps_and_a_search_domain_is_no_domain)
{
    const QList<ResolverBlock> expected{
        {.nameservers = list({"10.0.0.53"}), .domain = QStringLiteral("corp.example.com"), .supplemental = true},
        {.nameservers = list({"127.0.0.1"}), .domain = std::nullopt},
    };
    EXPECT_EQ(DNSConfigurator::parseResolvers(recorded("scutil_local_first.txt")), expected);
}

TEST(ParsingResolvers, Lines_before_the_first_block_are_ignored)
{
    EXPECT_TRUE(DNSConfigurator::parseResolvers(u"nameserver[0] : 1.2.3.4\ndomain : local\n").isEmpty());
}

TEST(ParsingResolvers, Lines_without_a_colon_are_ignored)
{
    const QList<ResolverBlock> expected{{.nameservers = {}, .domain = std::nullopt}};
    EXPECT_EQ(DNSConfigurator::parseResolvers(u"resolver #1\nnameserver[0] 1.2.3.4\ndomain local\n"), expected);
}

TEST(ParsingResolvers, Only_the_first_colon_ends_the_name)
{
    const QList<ResolverBlock> expected{{.nameservers = list({"2001:db8::1"}), .domain = QStringLiteral("a:b")}};
    EXPECT_EQ(DNSConfigurator::parseResolvers(u"\t resolver #7\n\tnameserver[12] :2001:db8::1 \t\n domain: a:b"),
              expected);
}

TEST(ParsingResolvers, Nothing_gives_no_block)
{
    EXPECT_TRUE(DNSConfigurator::parseResolvers(u"").isEmpty());
    EXPECT_TRUE(DNSConfigurator::parseResolvers(recorded("scutil_none.txt")).isEmpty());
}

TEST(ResolverReport, Pihole_followed_by_the_routers_address_is_a_warning)
{
    const ResolverReport report = reportOn(recorded("scutil_pihole_with_ipv6.txt"));
    EXPECT_EQ(report.defaultServers, list({"127.0.0.1", "fe80::1%en0"}));
    EXPECT_TRUE(report.firstIsPihole);
    EXPECT_EQ(report.warnings, QStringList(others("fe80::1%en0")));
}

TEST(ResolverReport, A_vpn_in_front_is_named)
{
    const ResolverReport report = reportOn(recorded("scutil_vpn.txt"));
    EXPECT_EQ(report.defaultServers, list({"10.64.0.1"}));
    EXPECT_FALSE(report.firstIsPihole);
    EXPECT_EQ(report.warnings, QStringList(first("10.64.0.1")));
}

TEST(ResolverReport, A_resolver_of_one_domain_is_not_the_default_one)
{
    const ResolverReport report = reportOn(recorded("scutil_local_first.txt"));
    EXPECT_EQ(report.defaultServers, list({"127.0.0.1"}));
    EXPECT_TRUE(report.firstIsPihole);
    EXPECT_TRUE(report.warnings.isEmpty());
}

TEST(ResolverReport, Scoped_resolvers_never_count)
{
    for (const char *name : {"scutil_offline.txt", "scutil_none.txt"}) {
        const ResolverReport report = reportOn(recorded(name));
        EXPECT_TRUE(report.defaultServers.isEmpty()) << name;
        EXPECT_FALSE(report.firstIsPihole) << name;
        EXPECT_EQ(report.warnings, QStringList(kUnreadable)) << name;
    }
}

TEST(ResolverReport, All_other_servers_are_listed_in_order)
{
    const ResolverReport report = reportOnServers(list({"127.0.0.1", "1.1.1.1", "127.0.0.1", "9.9.9.9"}));
    EXPECT_EQ(report.warnings, QStringList(others("1.1.1.1, 9.9.9.9")));
    EXPECT_EQ(report.defaultServers.size(), 4);
}

TEST(ResolverReport, Pihole_alone_needs_no_warning)
{
    EXPECT_TRUE(reportOnServers(list({"127.0.0.1"})).warnings.isEmpty());
    EXPECT_TRUE(reportOnServers(list({"127.0.0.1", "127.0.0.1"})).warnings.isEmpty());
}

TEST(ResolverReport, Pihole_in_second_place_gives_only_the_first_warning)
{
    EXPECT_EQ(reportOnServers(list({"1.1.1.1", "127.0.0.1"})).warnings, QStringList(first("1.1.1.1")));
}

TEST(ResolverReport, Only_the_exact_address_is_pihole)
{
    for (const char *server : {"127.0.0.11", "127.0.0.1%lo0", "::1", "localhost", "127.0.0.2"}) {
        EXPECT_FALSE(reportOnServers(list({server})).firstIsPihole) << server;
    }
}

} // namespace
} // namespace corvane::test
