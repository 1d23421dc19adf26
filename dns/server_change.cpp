#include "dns/server_change.h"

#include "dns/admin_script.h"
#include "dns/dns_configurator.h"

namespace corvane {

namespace {

using Reading = std::optional<QStringList>;

QCoro::Task<QList<Reading>> serversOf(ServerChanges changes)
{
    QList<Reading> readings;
    for (const ServerChange &change : changes) {
        const Reading servers = co_await DNSConfigurator::readServers(change.service);
        readings += servers;
    }
    co_return readings;
}

/// A service that had the wanted servers before was not changed.
QStringList changedServices(const ServerChanges &changes, const QList<Reading> &before, const QList<Reading> &after)
{
    QStringList names;
    for (qsizetype i = 0; i < changes.size(); ++i) {
        if (after[i] == changes[i].servers && after[i] != before[i]) names += changes[i].service;
    }
    return names;
}

} // namespace

QCoro::Task<std::optional<QString>> changeServers(ServerChanges changes)
{
    QStringList commands;
    for (const ServerChange &change : changes)
        commands += DNSConfigurator::setCommand(change.service, change.servers);

    // A single change is made or not made; only a row of them can stop in the middle.
    const ServerChanges row = changes.size() > 1 ? changes : ServerChanges();
    const QList<Reading> before = co_await serversOf(row);
    const CommandResult result = co_await DNSConfigurator::administratorRun(AdminScript::joined(commands));
    if (result.succeeded()) co_return std::nullopt;

    const QList<Reading> after = co_await serversOf(row);
    const QStringList changed = changedServices(row, before, after);
    QString failure = DNSConfigurator::friendly(result);
    if (!changed.isEmpty()) {
        failure += QStringLiteral("\nChanged before that: ") + changed.join(QStringLiteral(", ")) + u'.';
    }
    co_return failure;
}

} // namespace corvane
