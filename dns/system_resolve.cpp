#include "dns/dns_configurator.h"
#include "exec/background.h"

#include <netdb.h>

namespace corvane {

namespace {

bool resolves(const QByteArray &name)
{
    addrinfo *addresses = nullptr;
    const bool found = ::getaddrinfo(name.constData(), nullptr, nullptr, &addresses) == 0;
    if (found) ::freeaddrinfo(addresses);
    return found;
}

} // namespace

QCoro::Task<bool> DNSConfigurator::systemResolve(QString name)
{
    BackgroundWork<bool> lookup([host = name.toUtf8()] { return resolves(host); });
    co_return co_await lookup;
}

} // namespace corvane
