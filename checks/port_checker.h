#pragma once

#include "checks/port_report.h"
#include "facts/transport.h"

#include <QCoro/QCoroTask>

#include <chrono>

namespace corvane {

/// Finds out which of the ports that Pi-hole needs on 127.0.0.1 are free, and who holds the others.
class PortChecker {
public:
    /// For lsof.
    static constexpr std::chrono::seconds kHolderTimeout{10};

    /// Tries to bind the port; it is never listened on. Returns at once.
    [[nodiscard]] static PortProbe probe(quint16 port, Transport transport);

    /// What lsof says about the port, or a sentence when it says nothing.
    [[nodiscard]] static QCoro::Task<QString> holder(int port, Transport transport);

    /// UDP 53, TCP 53 and the web port, in this order.
    [[nodiscard]] static QCoro::Task<QList<PortReport>> checkAll(int webPort);

    /// Those of the ports in place of the default that can be bound, without `excluding`.
    [[nodiscard]] static QList<int> freeWebPorts(int excluding);
};

} // namespace corvane
