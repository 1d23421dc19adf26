#pragma once

#include "dns/dns_restore.h"
#include "dns/network_service.h"
#include "dns/resolver_report.h"
#include "exec/command_result.h"

#include <QCoro/QCoroTask>
#include <QHash>

#include <chrono>
#include <expected>

namespace corvane {

/// Reads and changes the Mac's DNS settings through macOS's own tools.
class DNSConfigurator {
public:
    /// For a tool that answers at once.
    static constexpr std::chrono::seconds kReadTimeout{10};
    /// For the administrator prompt: the user has to find and type a password.
    static constexpr std::chrono::seconds kPromptTimeout{180};

    // Reading, each tool within kReadTimeout. Nothing here fails: a tool that does gives an empty answer.

    /// The services that are switched on, in macOS's order, each with its servers.
    [[nodiscard]] static QCoro::Task<QList<NetworkService>> listServices();
    /// The names of all services, those that are switched off too; empty when macOS does not list them.
    [[nodiscard]] static QCoro::Task<QStringList> presentServices();
    /// The servers set by hand on the service; empty means automatic.
    [[nodiscard]] static QCoro::Task<QStringList> currentServers(QString service);
    /// The same; absent when macOS did not list them, or printed neither addresses nor kNoServers.
    [[nodiscard]] static QCoro::Task<std::optional<QStringList>> readServers(QString service);
    /// The services, those whose servers are not known read once more.
    [[nodiscard]] static QCoro::Task<QList<NetworkService>> readAgain(QList<NetworkService> services);
    /// The services with the servers that they have now; what cannot be read stays as it was known.
    [[nodiscard]] static QCoro::Task<QList<NetworkService>> readAfresh(QList<NetworkService> services);
    /// Device name by service name.
    [[nodiscard]] static QCoro::Task<QHash<QString, QString>> serviceDevices();
    /// The device of the default route; absent without one.
    [[nodiscard]] static QCoro::Task<std::optional<QString>> defaultRouteDevice();
    /// Which servers macOS really uses, as scutil lists them.
    [[nodiscard]] static QCoro::Task<ResolverReport> resolverReport();

    /// Looks the name up the way every program on this Mac does; whether the lookup gave an address.
    [[nodiscard]] static QCoro::Task<bool> systemResolve(QString name);

    // Changing. The caller saves the backup first. They return nothing on success, or a sentence for the user.

    /// Keeps the servers of services that are about to be changed; read those again first that are not known.
    [[nodiscard]] static std::expected<void, QString> saveBackup(const QList<NetworkService> &services);
    /// Whether saved servers of at least one service can be read; reads the file now.
    [[nodiscard]] static bool hasBackup();
    [[nodiscard]] static QString backupFile();
    /// Points the services at Pi-hole with one administrator prompt and checks that macOS kept it.
    [[nodiscard]] static QCoro::Task<std::optional<QString>> apply(QStringList services, bool piholeOnly);
    /// Puts the saved servers back with one administrator prompt. When none of a service that still exists are saved,
    /// every service that lists Pi-hole becomes automatic.
    [[nodiscard]] static QCoro::Task<DNSRestore> restore();
    /// What has to be done before Pi-hole goes, with one administrator prompt: the saved servers are put back, and
    /// every other service that lists Pi-hole becomes automatic. Without either it succeeds and asks nothing.
    [[nodiscard]] static QCoro::Task<DNSRestore> restoreForRemoval();

    /// The shell command that gives the service these servers, quoted whatever its name is; none means automatic.
    [[nodiscard]] static QString setCommand(const QString &service, const QStringList &servers);
    /// Runs the shell script as root after the user has agreed, within kPromptTimeout.
    [[nodiscard]] static QCoro::Task<CommandResult> administratorRun(QString script);
    /// Why an administrator's script did not succeed.
    [[nodiscard]] static QString friendly(const CommandResult &result);

    // From the tools' text to values. What a line does not hold is left out; no text is an error.

    /// "networksetup -listallnetworkservices" without its heading and what is switched off ("*" in front).
    [[nodiscard]] static QStringList parseServiceNames(QStringView text);
    /// The same with what is switched off.
    [[nodiscard]] static QStringList parsePresentServices(QStringView text);
    /// "networksetup -listnetworkserviceorder": device name by service name.
    [[nodiscard]] static QHash<QString, QString> parseServiceDevices(QStringView text);
    /// "route -n get default": the device after "interface:".
    [[nodiscard]] static std::optional<QString> parseDefaultRoute(QStringView text);
    /// What macOS says of a service without servers of its own.
    static constexpr QStringView kNoServers{u"aren't any DNS Servers"};
    /// "networksetup -getdnsservers": an address a line; a sentence of the tool's is none.
    [[nodiscard]] static QStringList parseServers(QStringView text);
    /// "scutil --dns" up to its scoped queries: a block for each "resolver #".
    [[nodiscard]] static QList<ResolverBlock> parseResolvers(QStringView text);
};

} // namespace corvane
