#include "ui/decisions/ports.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

QList<PortReport> ports(PortProbe udp, PortProbe web)
{
    return {{QStringLiteral("53u"), QStringLiteral("UDP 53 on 127.0.0.1"), 53, true, udp, QStringLiteral("dnsmasq")},
            {QStringLiteral("web"), QStringLiteral("TCP 8080 on 127.0.0.1"), 8080, false, web, QStringLiteral("node")}};
}

/// The only row when nobody is seen at the web port: its title and its detail.
std::string onlyRow(PortProbe udp, PortProbe web)
{
    QList<PortReport> reports = ports(udp, web);
    reports.last().holder.clear();
    const QList<Row> rows = takenPorts(reports);
    return rows.size() == 1 ? (rows.first().title + u' ' + rows.first().detail).toStdString() : "not one row";
}

} // namespace

TEST(Ports, Only_taken_ports_are_listed_with_their_holders)
{
    EXPECT_EQ(onlyRow(PortProbe::InUse, PortProbe::Free), "UDP 53 on 127.0.0.1 is in use by: dnsmasq");
}

TEST(Ports, That_may_not_be_tested_are_listed_when_somebody_is_seen_there)
{
    EXPECT_EQ(onlyRow(PortProbe::Denied, PortProbe::Denied), "UDP 53 on 127.0.0.1 may be in use by: dnsmasq");
    EXPECT_FALSE(dnsPortTaken(ports(PortProbe::Denied, PortProbe::Denied))) << "that is not sure";
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
