#include "dns/dns_backup.h"
#include "fuzz/require.h"

#include <cstdint>

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray json(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const DNSBackup::Entries entries = DNSBackup::decode(json);
    require(DNSBackup::decode(DNSBackup::encode(entries)) == entries);

    // The text as a service's name comes back too, and a service at Pi-hole never loses its first servers.
    const QString name = QString::fromUtf8(json);
    const QStringList pihole{QStringLiteral("127.0.0.1")};
    const QStringList own{name};
    const DNSBackup::Entries first = DNSBackup::merged({}, {NetworkService{name, own, false}});
    require(DNSBackup::decode(DNSBackup::encode(first)) == first);
    if (name != pihole.first()) require(DNSBackup::merged(first, {NetworkService{name, pihole, false}}) == first);
    return 0;
}
