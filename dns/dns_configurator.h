#pragma once

#include "dns/network_service.h"
#include "dns/resolver_report.h"
#include "exec/command_result.h"

#include <QCoro/QCoroTask>
#include <QHash>
#include <expected>

namespace corvane {

/// Reads and changes the Mac's DNS settings through macOS's own tools.
class DNSConfigurator {
public:
    // Reading. Nothing here fails: a tool that does gives an empty answer.

    [[nodiscard]] static QCoro::Task<QList<NetworkService>> listServices();
    /// The servers set by hand on the service; empty means automatic.
    [[nodiscard]] static QCoro::Task<QStringList> currentServers(QString service);
    /// Device name by service name.
    [[nodiscard]] static QCoro::Task<QHash<QString, QString>> serviceDevices();
    [[nodiscard]] static QCoro::Task<std::optional<QString>> defaultRouteDevice();
    [[nodiscard]] static QCoro::Task<ResolverReport> resolverReport();

    // From the tools' text to values.

    [[nodiscard]] static QStringList parseServiceNames(QStringView text);
    [[nodiscard]] static QHash<QString, QString> parseServiceDevices(QStringView text);
    [[nodiscard]] static std::optional<QString> parseDefaultRoute(QStringView text);
    [[nodiscard]] static QStringList parseServers(QStringView text);
    [[nodiscard]] static QList<ResolverBlock> parseResolvers(QStringView text);
};

} // namespace corvane
