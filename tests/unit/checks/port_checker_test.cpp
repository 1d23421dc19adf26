#include "checks/port_checker.h"
#include "tests/support/fake_tool.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <linux/capability.h>
#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <memory>
#include <vector>

namespace corvane::test {
namespace {

const QString kLsof = QStringLiteral("/usr/sbin/lsof");
const QString kNobody =
    QStringLiteral("No process is visible to this app (it may belong to the system or another user).");

/// A program that holds a port on 127.0.0.1.
class Holder {
public:
    Holder(quint16 port, bool udp, const char *host = "127.0.0.1")
        : m_socket(::socket(AF_INET, udp ? SOCK_DGRAM : SOCK_STREAM, 0))
    {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = inet_addr(host);
        EXPECT_EQ(::bind(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0) << port;
        EXPECT_TRUE(udp || ::listen(m_socket, 1) == 0);
    }
    ~Holder() { ::close(m_socket); }
    Holder(const Holder &) = delete;
    Holder &operator=(const Holder &) = delete;

private:
    int m_socket;
};

/// Gives up the right to bind the ports below 1024 while it lives.
class WithoutLowPorts {
public:
    WithoutLowPorts() { set(0); }
    ~WithoutLowPorts() { set(1U << CAP_NET_BIND_SERVICE); }
    WithoutLowPorts(const WithoutLowPorts &) = delete;
    WithoutLowPorts &operator=(const WithoutLowPorts &) = delete;

private:
    static void set(__u32 right)
    {
        __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
        __user_cap_data_struct data[2] = {};
        ASSERT_EQ(::syscall(SYS_capget, &header, data), 0);
        data[0].effective = (data[0].effective & ~(1U << CAP_NET_BIND_SERVICE)) | right;
        ASSERT_EQ(::syscall(SYS_capset, &header, data), 0);
    }
};

QList<PortReport> checkAll(int webPort) { return QCoro::waitFor(PortChecker::checkAll(webPort)); }

TEST(Probing, A_port_that_nobody_holds_is_free_and_stays_so)
{
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(PortChecker::probe(53, Transport::Udp), PortProbe::Free);
        EXPECT_EQ(PortChecker::probe(53, Transport::Tcp), PortProbe::Free);
        EXPECT_EQ(PortChecker::probe(8080, Transport::Tcp), PortProbe::Free);
    }
}

TEST(Probing, A_listener_is_in_the_way_only_of_its_own_protocol)
{
    const Holder udp(53, true);
    EXPECT_EQ(PortChecker::probe(53, Transport::Udp), PortProbe::InUse);
    EXPECT_EQ(PortChecker::probe(53, Transport::Tcp), PortProbe::Free);
    const Holder tcp(53, false);
    EXPECT_EQ(PortChecker::probe(53, Transport::Tcp), PortProbe::InUse);
}

TEST(Probing, A_listener_on_every_address_is_in_the_way_too)
{
    const Holder everywhere(8080, false, "0.0.0.0");
    EXPECT_EQ(PortChecker::probe(8080, Transport::Tcp), PortProbe::InUse);
}

TEST(Probing, Without_the_right_to_the_port_is_denied)
{
    const WithoutLowPorts without;
    EXPECT_EQ(PortChecker::probe(53, Transport::Udp), PortProbe::Denied);
    EXPECT_EQ(PortChecker::probe(53, Transport::Tcp), PortProbe::Denied);
    EXPECT_EQ(PortChecker::probe(8080, Transport::Tcp), PortProbe::Free);
}

TEST(Probing, Without_a_socket_it_has_failed)
{
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{0, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    const PortProbe probe = PortChecker::probe(8080, Transport::Tcp);
    const QList<int> free = PortChecker::freeWebPorts(0);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(probe, PortProbe::Failed);
    EXPECT_TRUE(free.isEmpty());
}

TEST(Probing, Leaves_no_socket_open)
{
    const int before = ::dup(0);
    ::close(before);
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(PortChecker::probe(8080, i % 2 == 0 ? Transport::Udp : Transport::Tcp), PortProbe::Free);
    const int after = ::dup(0);
    ::close(after);
    EXPECT_EQ(after, before);
}

TEST(HolderOfAPort, Is_what_lsof_prints_whatever_its_status)
{
    const FakeTool lsof(kLsof, "echo; echo 'COMMAND PID USER'; echo 'dnsmasq 812 nobody  '; exit 1");
    EXPECT_EQ(QCoro::waitFor(PortChecker::holder(53, Transport::Udp)),
              QStringLiteral("COMMAND PID USER\ndnsmasq 812 nobody"));
    EXPECT_FALSE(QCoro::waitFor(PortChecker::holder(8080, Transport::Tcp)).isEmpty());
    const QList<QStringList> calls{
        {QStringLiteral("-nP"), QStringLiteral("-iUDP:53")},
        {QStringLiteral("-nP"), QStringLiteral("-iTCP:8080"), QStringLiteral("-sTCP:LISTEN")},
    };
    EXPECT_EQ(lsof.calls(), calls);
}

TEST(HolderOfAPort, Is_unknown_when_lsof_says_nothing_on_standard_output)
{
    EXPECT_EQ(QCoro::waitFor(PortChecker::holder(53, Transport::Udp)), kNobody);
    const FakeTool lsof(kLsof, "echo ' '; echo 'lsof: warning' >&2; exit 1");
    EXPECT_EQ(QCoro::waitFor(PortChecker::holder(53, Transport::Udp)), kNobody);
}

TEST(CheckingAllPorts, Reports_three_free_ports_without_asking_lsof)
{
    const FakeTool lsof(kLsof, "echo held");
    const QList<PortReport> expected{
        {QStringLiteral("53u"), QStringLiteral("UDP 53 on 127.0.0.1"), 53, true, PortProbe::Free, {}},
        {QStringLiteral("53t"), QStringLiteral("TCP 53 on 127.0.0.1"), 53, false, PortProbe::Free, {}},
        {QStringLiteral("web"), QStringLiteral("TCP 8080 on 127.0.0.1"), 8080, false, PortProbe::Free, {}},
    };
    EXPECT_EQ(checkAll(8080), expected);
    EXPECT_TRUE(lsof.calls().isEmpty());
}

TEST(CheckingAllPorts, Names_the_holder_of_the_busy_one_only)
{
    const FakeTool lsof(kLsof, "echo held");
    const Holder udp(53, true);
    const QList<PortReport> reports = checkAll(8080);
    EXPECT_EQ(reports[0].probe, PortProbe::InUse);
    EXPECT_EQ(reports[0].holder, QStringLiteral("held"));
    EXPECT_EQ(reports[1].probe, PortProbe::Free);
    EXPECT_EQ(reports[1].holder, QString());
    EXPECT_EQ(lsof.calls(), (QList<QStringList>{{QStringLiteral("-nP"), QStringLiteral("-iUDP:53")}}));
}

TEST(CheckingAllPorts, Names_whoever_is_seen_at_a_port_that_may_not_be_tested)
{
    const FakeTool lsof(kLsof, "[ $2 = -iTCP:53 ] && echo held");
    const WithoutLowPorts without;
    const QList<PortReport> reports = checkAll(8080);
    EXPECT_EQ(reports[0].probe, PortProbe::Denied);
    EXPECT_EQ(reports[0].holder, QString()) << "nobody is seen there";
    EXPECT_EQ(reports[1].probe, PortProbe::Denied);
    EXPECT_EQ(reports[1].holder, QStringLiteral("held"));
    EXPECT_EQ(lsof.calls().size(), 2) << "the web port is free";
}

TEST(HolderOfAPort, Is_looked_for_for_ten_seconds) { EXPECT_EQ(PortChecker::kHolderTimeout, std::chrono::seconds(10)); }

TEST(CheckingAllPorts, A_web_port_beyond_the_last_one_is_probed_as_the_last_one)
{
    const Holder last(65535, false);
    const FakeTool lsof(kLsof, "echo held");
    const PortReport web = checkAll(70000)[2];
    EXPECT_EQ(web.label, QStringLiteral("TCP 70000 on 127.0.0.1"));
    EXPECT_EQ(web.port, 70000);
    EXPECT_EQ(web.probe, PortProbe::InUse);
    EXPECT_EQ(web.holder, QStringLiteral("held"));
    EXPECT_EQ(checkAll(-1)[2].label, QStringLiteral("TCP -1 on 127.0.0.1"));
}

TEST(FreeWebPorts, Are_ten_in_order_without_the_excluded_one)
{
    EXPECT_EQ(PortChecker::freeWebPorts(8080),
              (QList<int>{8081, 8082, 8083, 8084, 8085, 8086, 8087, 8088, 8089, 8090}));
    EXPECT_EQ(PortChecker::freeWebPorts(8081), (QList<int>{8082, 8083, 8084, 8085, 8086, 8087, 8088, 8089, 8090}));
}

TEST(FreeWebPorts, Leave_busy_ones_out)
{
    const Holder one(8083, false);
    const Holder udpDoesNotCount(8084, true);
    EXPECT_EQ(PortChecker::freeWebPorts(8090), (QList<int>{8081, 8082, 8084, 8085, 8086, 8087, 8088, 8089}));
}

TEST(FreeWebPorts, Are_none_when_all_are_taken)
{
    std::vector<std::unique_ptr<Holder>> holders;
    for (quint16 port = 8081; port <= 8090; ++port)
        holders.push_back(std::make_unique<Holder>(port, false));
    EXPECT_TRUE(PortChecker::freeWebPorts(0).isEmpty());
}

} // namespace
} // namespace corvane::test
