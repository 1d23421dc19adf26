#include "dns/dns_configurator.h"
#include "exec/command_runner.h"

#include <QHostAddress>

#include <algorithm>

namespace corvane {

namespace {

QCoro::Task<CommandResult> run(QString exe, QStringList args)
{
    const Command command(exe, args);
    co_return co_await CommandRunner::run(command.within(DNSConfigurator::kReadTimeout));
}

QCoro::Task<CommandResult> networksetup(QStringList args)
{
    const QString exe = QStringLiteral("/usr/sbin/networksetup");
    co_return co_await run(exe, args);
}

QCoro::Task<CommandResult> askForServers(QString service)
{
    const QStringList question{QStringLiteral("-getdnsservers"), service};
    co_return co_await networksetup(question);
}

/// Whether this is an answer at all: addresses, or the sentence that there are none. Anything else would be saved as
/// the user's servers.
bool isAnswer(const QString &printed, const QStringList &servers)
{
    const auto isAddress = [](const QString &server) { return !QHostAddress(server).isNull(); };
    if (servers.isEmpty()) return printed.contains(DNSConfigurator::kNoServers);
    return std::ranges::all_of(servers, isAddress);
}

} // namespace

QCoro::Task<QList<NetworkService>> DNSConfigurator::listServices()
{
    const QStringList list{QStringLiteral("-listallnetworkservices")};
    const CommandResult listing = co_await networksetup(list);
    if (!listing.succeeded()) co_return QList<NetworkService>();

    const QHash<QString, QString> devices = co_await serviceDevices();
    const std::optional<QString> defaultDevice = co_await defaultRouteDevice();

    const QStringList names = parseServiceNames(listing.standardOutput);
    QList<NetworkService> services;
    for (const QString &name : names) {
        NetworkService service;
        service.name = name;
        const std::optional<QStringList> servers = co_await readServers(name);
        service.servers = servers.value_or(QStringList());
        service.serversKnown = servers.has_value();
        service.isDefaultRoute = defaultDevice && devices.contains(name) && devices.value(name) == *defaultDevice;
        services += service;
    }
    co_return services;
}

QCoro::Task<QStringList> DNSConfigurator::presentServices()
{
    const QStringList list{QStringLiteral("-listallnetworkservices")};
    const CommandResult listing = co_await networksetup(list);
    co_return listing.succeeded() ? parsePresentServices(listing.standardOutput) : QStringList();
}

QCoro::Task<QStringList> DNSConfigurator::currentServers(QString service)
{
    const CommandResult result = co_await askForServers(service);
    co_return result.succeeded() ? parseServers(result.standardOutput) : QStringList();
}

QCoro::Task<std::optional<QStringList>> DNSConfigurator::readServers(QString service)
{
    const CommandResult result = co_await askForServers(service);
    if (!result.succeeded()) co_return std::nullopt;
    const QStringList servers = parseServers(result.standardOutput);
    if (!isAnswer(result.standardOutput, servers)) co_return std::nullopt;
    co_return servers;
}

QCoro::Task<QList<NetworkService>> DNSConfigurator::readAgain(QList<NetworkService> services)
{
    for (NetworkService &service : services) {
        if (service.serversKnown) continue;
        const std::optional<QStringList> servers = co_await readServers(service.name);
        service.servers = servers.value_or(QStringList());
        service.serversKnown = servers.has_value();
    }
    co_return services;
}

QCoro::Task<QList<NetworkService>> DNSConfigurator::readAfresh(QList<NetworkService> services)
{
    for (NetworkService &service : services) {
        const std::optional<QStringList> servers = co_await readServers(service.name);
        if (!servers) continue;
        service.servers = *servers;
        service.serversKnown = true;
    }
    co_return services;
}

QCoro::Task<QHash<QString, QString>> DNSConfigurator::serviceDevices()
{
    const QStringList order{QStringLiteral("-listnetworkserviceorder")};
    const CommandResult result = co_await networksetup(order);
    co_return parseServiceDevices(result.standardOutput);
}

QCoro::Task<std::optional<QString>> DNSConfigurator::defaultRouteDevice()
{
    const QString exe = QStringLiteral("/sbin/route");
    const QStringList question{QStringLiteral("-n"), QStringLiteral("get"), QStringLiteral("default")};
    const CommandResult result = co_await run(exe, question);
    co_return parseDefaultRoute(result.standardOutput);
}

QCoro::Task<ResolverReport> DNSConfigurator::resolverReport()
{
    const QString exe = QStringLiteral("/usr/sbin/scutil");
    const QStringList question{QStringLiteral("--dns")};
    const CommandResult result = co_await run(exe, question);
    ResolverReport report = ResolverReport::of(parseResolvers(result.standardOutput));
    if (result.succeeded() && report.defaultServers.isEmpty()) {
        report.explanation =
            QStringLiteral("macOS lists no DNS server at the moment: this Mac seems to have no network.");
    }
    co_return report;
}

} // namespace corvane
