#include "dns/dns_restore.h"

#include "dns/dns_backup.h"
#include "dns/dns_configurator.h"
#include "dns/server_change.h"

#include <QFile>

#include <algorithm>

namespace corvane {

namespace {

constexpr QLatin1StringView kNothingToRestore{
    "There is nothing to restore: no saved settings and no service points at Pi-hole."};

/// What a restore changes, and what it has to leave out.
struct Plan {
    ServerChanges changes;
    /// Saved services that this Mac has no more.
    QStringList gone;
    /// Services that may point at Pi-hole or not.
    QStringList unread;

    [[nodiscard]] QString remark() const;
};

QString Plan::remark() const
{
    QStringList sentences;
    const QString comma = QStringLiteral(", ");
    if (!gone.isEmpty()) {
        sentences += QStringLiteral("Not on this Mac any more: ") + gone.join(comma) +
                     QStringLiteral(". The old servers stay saved.");
    }
    if (!unread.isEmpty()) {
        sentences += QStringLiteral("macOS did not tell the DNS servers of ") + unread.join(comma) +
                     QStringLiteral(". Look in System Settings whether 127.0.0.1 is among them.");
    }
    return sentences.join(u'\n');
}

/// `present` is empty when macOS does not list its services; then all are taken to exist.
Plan fromBackup(const QStringList &present)
{
    Plan plan;
    for (const DNSBackupEntry &entry : DNSBackup::load()) {
        if (present.isEmpty() || present.contains(entry.service))
            plan.changes += {entry.service, entry.servers};
        else
            plan.gone += entry.service;
    }
    return plan;
}

bool changes(const Plan &plan, const QString &service)
{
    return std::ranges::find(plan.changes, service, &ServerChange::service) != plan.changes.end();
}

/// Adds what the services need that the plan does not change yet.
void setToAutomatic(Plan &plan, const QList<NetworkService> &services)
{
    for (const NetworkService &service : services) {
        if (changes(plan, service.name)) continue;
        if (service.mayAskPihole()) plan.changes += {service.name, {}};
        if (!service.serversKnown) plan.unread += service.name;
    }
}

QCoro::Task<QList<NetworkService>> servicesReadTwice()
{
    const QList<NetworkService> services = co_await DNSConfigurator::listServices();
    co_return co_await DNSConfigurator::readAgain(services);
}

QCoro::Task<DNSRestore> carryOut(Plan plan)
{
    const std::optional<QString> failure = co_await changeServers(plan.changes);
    co_return DNSRestore{failure, plan.remark()};
}

} // namespace

QCoro::Task<DNSRestore> DNSConfigurator::restore()
{
    const QStringList present = co_await presentServices();
    Plan plan = fromBackup(present);
    if (plan.changes.isEmpty()) {
        const QList<NetworkService> services = co_await servicesReadTwice();
        setToAutomatic(plan, services);
    }
    if (plan.changes.isEmpty()) {
        const QString remark = plan.remark();
        co_return DNSRestore{remark.isEmpty() ? QString(kNothingToRestore) : remark, {}};
    }
    co_return co_await carryOut(plan);
}

QCoro::Task<DNSRestore> DNSConfigurator::restoreForRemoval()
{
    const QStringList present = co_await presentServices();
    Plan plan = fromBackup(present);
    const QList<NetworkService> services = co_await servicesReadTwice();
    setToAutomatic(plan, services);
    if (!plan.changes.isEmpty()) co_return co_await carryOut(plan);

    // Without a list of services only a backup could have said what points at Pi-hole.
    const bool blind = services.isEmpty() && QFile::exists(backupFile());
    if (blind && plan.gone.isEmpty()) co_return DNSRestore{QString(kNothingToRestore), {}};
    co_return DNSRestore{std::nullopt, plan.remark()};
}

} // namespace corvane
