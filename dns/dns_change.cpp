#include "dns/admin_script.h"
#include "dns/dns_backup.h"
#include "dns/dns_configurator.h"
#include "dns/server_change.h"
#include "exec/command_runner.h"
#include "facts/addresses.h"

#include <QRegularExpression>

namespace corvane {

namespace {

QStringList piholeServers(bool piholeOnly)
{
    QStringList servers{kPiholeAddress};
    if (!piholeOnly) servers += kBackupServer;
    return servers;
}

QString notKept(const QString &service, const QStringList &shown)
{
    return QStringLiteral("macOS did not keep the new DNS servers for ") + service + QStringLiteral(" (it shows: ") +
           serversText(shown) + QStringLiteral(").");
}

/// Whether a line ends in AppleScript's code for a cancelled prompt. The words before it are in the user's language,
/// and the same digits may be in the name of a service.
bool endsInCancelCode(const QString &said)
{
    static const QRegularExpression pattern(QStringLiteral("\\(-128\\)\\s*($|[\r\n])"));
    return said == u"-128" || pattern.match(said).hasMatch();
}

} // namespace

std::expected<void, QString> DNSConfigurator::saveBackup(const QList<NetworkService> &services)
{
    return DNSBackup::store(DNSBackup::merged(DNSBackup::load(), services));
}

bool DNSConfigurator::hasBackup() { return !DNSBackup::load().isEmpty(); }

QString DNSConfigurator::backupFile() { return DNSBackup::file(); }

QString DNSConfigurator::setCommand(const QString &service, const QStringList &servers)
{
    return AdminScript::setCommand(service, servers);
}

QCoro::Task<CommandResult> DNSConfigurator::administratorRun(QString script)
{
    const Command prompt(QStringLiteral("/usr/bin/osascript"),
                         {QStringLiteral("-e"), AdminScript::appleScript(script)});
    co_return co_await CommandRunner::run(prompt.within(kPromptTimeout));
}

QString DNSConfigurator::friendly(const CommandResult &result)
{
    const QString said = result.combined();
    if (result.timedOut) return QStringLiteral("The administrator prompt timed out.");
    if (said.contains(u"User canceled") || endsInCancelCode(said)) {
        return QStringLiteral("You cancelled the administrator prompt. Nothing was changed.");
    }
    return said.isEmpty() ? QStringLiteral("macOS refused the change.") : said;
}

QCoro::Task<std::optional<QString>> DNSConfigurator::apply(QStringList services, bool piholeOnly)
{
    const QStringList servers = piholeServers(piholeOnly);
    ServerChanges changes;
    for (const QString &service : services)
        changes += {service, servers};

    const std::optional<QString> failure = co_await changeServers(changes);
    if (failure) co_return failure;

    for (const QString &service : services) {
        const QStringList shown = co_await currentServers(service);
        if (shown != servers) co_return notKept(service, shown);
    }
    co_return std::nullopt;
}

} // namespace corvane
