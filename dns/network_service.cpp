#include "dns/network_service.h"

#include "facts/addresses.h"

namespace corvane {

QString serversText(const QStringList &servers)
{
    return servers.isEmpty() ? QStringLiteral("Automatic") : servers.join(QStringLiteral(", "));
}

bool NetworkService::asksPiholeFirst() const { return !servers.isEmpty() && servers.first() == kPiholeAddress; }

bool NetworkService::mayAskPihole() const { return servers.contains(kPiholeAddress); }

} // namespace corvane
