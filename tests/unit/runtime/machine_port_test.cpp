#include "runtime/machine_port.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

using Holder = MachinePort::Holder;

/// As ss of iproute2 6.1 printed it in a machine set up like Colima's.
const QString kNameService =
    QStringLiteral("udp UNCONN 0      0        127.0.0.1:53 0.0.0.0:* users:((\"dnsmasq\",pid=17,fd=6))\n"
                   "udp UNCONN 0      0      192.168.5.1:53 0.0.0.0:* users:((\"dnsmasq\",pid=17,fd=4))\n"
                   "udp UNCONN 0      0            [::1]:53    [::]:* users:((\"dnsmasq\",pid=17,fd=8))\n"
                   "tcp LISTEN 0      32       127.0.0.1:53 0.0.0.0:* users:((\"dnsmasq\",pid=17,fd=7))\n");

QString line(const char *local, const char *program)
{
    return QStringLiteral("tcp LISTEN 0 32 %1 0.0.0.0:* users:((\"%2\",pid=8,fd=3))\n")
        .arg(QLatin1String(local), QLatin1String(program));
}

Holder holderIn(const QString &listing) { return MachinePort::parse(listing).holder(); }

TEST(MachinePort, The_name_service_on_the_loopback_is_in_the_way)
{
    EXPECT_EQ(holderIn(kNameService), Holder::NameService);
    EXPECT_TRUE(MachinePort::parse(kNameService).problem().isEmpty());
}

TEST(MachinePort, Other_addresses_are_not_in_the_way)
{
    EXPECT_EQ(holderIn({}), Holder::Nobody);
    for (const char *local : {"192.168.5.1:53", "127.0.0.53%lo:53", "127.0.0.54:53", "[::1]:53", "[::]:53"})
        EXPECT_EQ(holderIn(line(local, "dnsmasq")), Holder::Nobody) << local;
}

TEST(MachinePort, A_program_on_the_loopback_or_everywhere_is_named)
{
    for (const char *local : {"127.0.0.1:53", "0.0.0.0:53", "*:53", "127.0.0.1%lo:53"}) {
        const MachinePort port = MachinePort::parse(kNameService + line(local, "named"));
        EXPECT_EQ(port.holder(), Holder::Program) << local;
        EXPECT_TRUE(port.problem().contains(QLatin1String("by the program 'named'"))) << local;
    }
}

TEST(MachinePort, A_name_service_that_listens_everywhere_is_not_colimas)
{
    EXPECT_EQ(holderIn(line("0.0.0.0:53", "dnsmasq")), Holder::Program);
}

TEST(MachinePort, Dockers_proxy_stands_for_a_container)
{
    EXPECT_EQ(holderIn(line("127.0.0.1:53", "docker-proxy")), Holder::Container);
}

TEST(MachinePort, Rubbish_is_nobody)
{
    for (const char *text : {"a b c d 127.0.0.1:53", "\x01\xff\xfe (((", "::::::::", "127.0.0.1:53 \"dnsmasq\",pid="})
        EXPECT_EQ(holderIn(QString::fromLatin1(text)), Holder::Nobody) << text;
}

} // namespace
} // namespace corvane::test
