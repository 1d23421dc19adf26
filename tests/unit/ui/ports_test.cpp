#include "ui/decisions/ports.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

QList<PortReport> ports(PortProbe udp, PortProbe web)
{
    return {{QStringLiteral("53u"), QStringLiteral("UDP 53 on 127.0.0.1"), 53, true, udp, QStringLiteral("dnsmasq")},
            {QStringLiteral("web"), QStringLiteral("TCP 8080 on 127.0.0.1"), 8080, false, web, QStringLiteral("node")}};
}

} // namespace

TEST(Ports, Only_taken_ports_are_listed_with_their_holders)
{
    QList<PortReport> reports = ports(PortProbe::InUse, PortProbe::Free);
    reports.last().holder.clear();
    const QList<Row> rows = takenPorts(reports);
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows.first().title, QStringLiteral("UDP 53 on 127.0.0.1 is in use by:"));
    EXPECT_EQ(rows.first().detail, QStringLiteral("dnsmasq"));
}

TEST(Ports, That_may_not_be_tested_are_listed_when_somebody_is_seen_there)
{
    QList<PortReport> reports = ports(PortProbe::Denied, PortProbe::Denied);
    reports.last().holder.clear();
    const QList<Row> rows = takenPorts(reports);
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows.first().title, QStringLiteral("UDP 53 on 127.0.0.1 may be in use by:"));
    EXPECT_EQ(rows.first().detail, QStringLiteral("dnsmasq"));
    EXPECT_FALSE(dnsPortTaken(reports)) << "that is not sure";
}

TEST(Ports, The_web_port_and_the_DNS_port_are_told_apart)
{
    EXPECT_FALSE(webPortTaken(ports(PortProbe::InUse, PortProbe::Free)));
    EXPECT_TRUE(dnsPortTaken(ports(PortProbe::InUse, PortProbe::Free)));
    EXPECT_TRUE(webPortTaken(ports(PortProbe::Free, PortProbe::InUse)));
    EXPECT_FALSE(dnsPortTaken(ports(PortProbe::Free, PortProbe::InUse)));
    EXPECT_FALSE(webPortTaken(ports(PortProbe::Failed, PortProbe::Denied)));
}

TEST(Ports, For_the_admin_page_are_the_default_and_ten_others)
{
    EXPECT_EQ(webPortChoices().join(QLatin1Char(' ')),
              QStringLiteral("8080 8081 8082 8083 8084 8085 8086 8087 8088 8089 8090"));
}

} // namespace corvane::test
