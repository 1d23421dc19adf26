#pragma once

#include <QList>
#include <QString>

namespace corvane {

/// The result of trying to bind one port.
enum class PortProbe {
    Free,   ///< The bind succeeded; nothing holds the port.
    InUse,  ///< Something holds the port.
    Denied, ///< This program was not allowed to test the port.
    Failed, ///< No socket could be made, or the bind failed for another reason.
};

/// What was found out about one port on 127.0.0.1.
struct PortReport {
    /// "53u", "53t" or "web".
    QString id;
    /// For example "UDP 53 on 127.0.0.1".
    QString label;
    int port = 0;
    bool udp = false;
    PortProbe probe = PortProbe::Failed;
    /// Who holds the port. Empty when it is free, and when it could not be tested and nobody is seen there.
    QString holder;

    bool operator==(const PortReport &) const = default;
};

} // namespace corvane
