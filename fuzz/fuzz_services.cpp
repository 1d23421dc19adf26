#include "dns/dns_configurator.h"
#include "fuzz/require.h"

#include <cstdint>

using namespace corvane;

namespace {

bool isOneLine(const QString &text) { return !text.contains(u'\n'); }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));

    const QStringList names = DNSConfigurator::parseServiceNames(text);
    for (const QString &name : names) {
        require(!name.isEmpty() && isOneLine(name) && !name.startsWith(u'*') && !name.contains(QStringLiteral(" (*)")));
    }
    require(DNSConfigurator::parseServiceNames(names.join(u'\n')) == names);

    const QStringList servers = DNSConfigurator::parseServers(text);
    for (const QString &server : servers)
        require(!server.isEmpty() && !server.contains(u' ') && isOneLine(server));

    const QHash<QString, QString> devices = DNSConfigurator::parseServiceDevices(text);
    for (const QString &device : devices) {
        require(!device.isEmpty() && !device.contains(u',') && !device.contains(u')') && isOneLine(device));
    }
    if (const auto device = DNSConfigurator::parseDefaultRoute(text)) require(isOneLine(*device));
    return 0;
}
