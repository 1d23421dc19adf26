#include "dns/dns_configurator.h"
#include "fuzz/require.h"

#include <cstdint>

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QList<ResolverBlock> blocks = DNSConfigurator::parseResolvers(text);
    require(blocks.size() <= text.count(u'\n') + 1);

    const ResolverReport report = ResolverReport::of(blocks);
    require(report.warnings.size() <= 1);
    require(!report.defaultServers.isEmpty() || !report.warnings.isEmpty());
    require(report.firstIsPihole == (report.defaultServers.value(0) == u"127.0.0.1"));
    require(report.firstIsPihole || !report.warnings.isEmpty());

    // What comes after the scoped resolvers begin changes nothing.
    const QString scoped = QStringLiteral("\nDNS configuration (for scoped queries)\n");
    require(DNSConfigurator::parseResolvers(text + scoped + text) == DNSConfigurator::parseResolvers(text + scoped));
    return 0;
}
