#pragma once

#include "dns/dns_backup.h"

#include <initializer_list>

namespace corvane::test {

[[nodiscard]] inline QStringList list(std::initializer_list<const char *> items)
{
    QStringList result;
    for (const char *item : items)
        result += QString::fromUtf8(item);
    return result;
}

[[nodiscard]] inline NetworkService service(const char *name, std::initializer_list<const char *> servers)
{
    return {.name = QString::fromUtf8(name), .servers = list(servers), .isDefaultRoute = false};
}

[[nodiscard]] inline DNSBackupEntry entry(const char *name, std::initializer_list<const char *> servers)
{
    return {.service = QString::fromUtf8(name), .servers = list(servers)};
}

/// Two services whose names and servers are hard to write down.
inline const DNSBackup::Entries kTwo{entry("Anna's \"LAN\" \\ ü 🙂", {"9.9.9.9", "fe80::1%en0"}),
                                     entry("Wi-Fi", {})};

} // namespace corvane::test
