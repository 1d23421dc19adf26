#pragma once

#include "dns/network_service.h"

#include <QByteArray>
#include <QList>

#include <expected>

namespace corvane {

/// One service's DNS servers as they were before Corvane changed them; no servers means automatic.
struct DNSBackupEntry {
    QString service;
    QStringList servers;

    bool operator==(const DNSBackupEntry &) const = default;
};

/// The file "dns-backup.json", from which the old DNS servers can always be put back.
class DNSBackup {
public:
    using Entries = QList<DNSBackupEntry>;

    [[nodiscard]] static QString file();
    /// Empty when the file is missing, cannot be read or is not ours.
    [[nodiscard]] static Entries load();
    /// Replaces the file whole, and with it the script that restores the same servers, or leaves both as they were; the
    /// reason when they cannot be written.
    [[nodiscard]] static std::expected<void, QString> store(const Entries &entries);

    /// The entries with the servers of services that are about to be changed. What a service had before the first
    /// change stays, however often it is pointed at Pi-hole, and whenever what it has now is not known.
    [[nodiscard]] static Entries merged(Entries entries, const QList<NetworkService> &services);

    [[nodiscard]] static QByteArray encode(const Entries &entries);
    /// Empty when any part of the text is not what encode() writes.
    [[nodiscard]] static Entries decode(const QByteArray &json);
};

} // namespace corvane
