#include "api/pihole_types.h"

namespace corvane {

QString PiholeAPIError::description() const
{
    switch (m_kind) {
    case Kind::Unreachable:
        return QStringLiteral("Pi-hole did not answer on 127.0.0.1.");
    case Kind::Unauthorized:
        return QStringLiteral("Pi-hole refused the admin password.");
    case Kind::Http:
        return QStringLiteral("Pi-hole answered with HTTP %1").arg(m_code);
    case Kind::NoPassword:
        return QStringLiteral(
            "Your Keychain has not given Corvane the admin password yet. macOS may be asking for it in "
            "another window.");
    case Kind::BadResponse:
        break;
    }
    return QStringLiteral("Pi-hole sent an answer this app does not understand.");
}

} // namespace corvane
