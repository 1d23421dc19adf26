#include "dns/dns_backup.h"

#include "dns/restore_script.h"
#include "exec/app_paths.h"
#include "exec/replace_file.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <optional>

namespace corvane {

namespace {

/// Hundreds of times what a Mac full of network services needs; a larger file is not ours.
constexpr qint64 kMaxFileSize = 1024 * 1024;

constexpr QLatin1StringView kService("service");
constexpr QLatin1StringView kServers("servers");

QJsonObject toJson(const DNSBackupEntry &entry)
{
    return {{kService, entry.service}, {kServers, QJsonArray::fromStringList(entry.servers)}};
}

std::optional<DNSBackupEntry> fromJson(const QJsonObject &object)
{
    const QJsonValue service = object[kService];
    const QJsonValue servers = object[kServers];
    if (!service.isString() || !servers.isArray()) return std::nullopt;

    DNSBackupEntry entry;
    entry.service = service.toString();
    const QJsonArray addresses = servers.toArray();
    for (const QJsonValue server : addresses) {
        if (!server.isString()) return std::nullopt;
        entry.servers += server.toString();
    }
    return entry;
}

} // namespace

QString DNSBackup::file() { return AppPaths::supportDir().filePath(QStringLiteral("dns-backup.json")); }

DNSBackup::Entries DNSBackup::load()
{
    QFile file(DNSBackup::file());
    if (!QFileInfo(file).isFile() || file.size() > kMaxFileSize || !file.open(QIODevice::ReadOnly)) return {};
    return decode(file.read(kMaxFileSize));
}

std::expected<void, QString> DNSBackup::store(const Entries &entries)
{
    const std::scoped_lock locked(RestoreScript::lock());
    return replaceFiles({RestoreScript::content(entries), {DNSBackup::file(), encode(entries)}});
}

DNSBackup::Entries DNSBackup::merged(Entries entries, const QList<NetworkService> &services)
{
    for (const NetworkService &service : services) {
        const auto known = std::ranges::find(entries, service.name, &DNSBackupEntry::service);
        if (known == entries.end()) {
            entries += {service.name, service.asksPiholeFirst() ? QStringList() : service.servers};
        } else if (service.serversKnown && !service.asksPiholeFirst()) {
            known->servers = service.servers;
        }
    }
    return entries;
}

QByteArray DNSBackup::encode(const Entries &entries)
{
    QJsonArray array;
    for (const DNSBackupEntry &entry : entries)
        array.append(toJson(entry));
    return QJsonDocument(array).toJson(QJsonDocument::Indented);
}

DNSBackup::Entries DNSBackup::decode(const QByteArray &json)
{
    Entries entries;
    const QJsonArray array = QJsonDocument::fromJson(json).array();
    for (const QJsonValue value : array) {
        const auto entry = fromJson(value.toObject());
        if (!entry) return {};
        entries += *entry;
    }
    return entries;
}

} // namespace corvane
