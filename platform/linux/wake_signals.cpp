#include "platform/wake_signals.h"

#include <QSocketNotifier>

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

namespace corvane {

namespace {

/// A socket on which the kernel reports changed links, addresses and routes, or -1.
int openRouteSocket()
{
    const int descriptor = socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE);
    if (descriptor < 0) return -1;
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = RTMGRP_LINK | RTMGRP_IPV4_IFADDR | RTMGRP_IPV6_IFADDR | RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE;
    if (bind(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0) return descriptor;
    close(descriptor);
    return -1;
}

/// The network's changes as the kernel reports them. A virtual machine or a server does not sleep.
class RouteSignals final : public WakeSignals {
public:
    RouteSignals()
        : m_socket(openRouteSocket())
    {
        if (m_socket < 0) return;
        m_notifier = std::make_unique<QSocketNotifier>(m_socket, QSocketNotifier::Read);
        connect(m_notifier.get(), &QSocketNotifier::activated, this, &RouteSignals::read);
    }

    ~RouteSignals() override
    {
        m_notifier.reset();
        if (m_socket >= 0) close(m_socket);
    }

private:
    void read()
    {
        std::array<char, 8192> message;
        while (recv(m_socket, message.data(), message.size(), 0) > 0) {
        }
        noticeChange();
    }

    int m_socket;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace

std::unique_ptr<WakeSignals> systemWakeSignals() { return std::make_unique<RouteSignals>(); }

} // namespace corvane
