#pragma once

#include <QCoro/QCoroTask>
#include <QStringList>

#include <optional>

namespace corvane {

/// A network service and the DNS servers that it is to get; none means automatic.
struct ServerChange {
    QString service;
    QStringList servers;

    bool operator==(const ServerChange &) const = default;
};

using ServerChanges = QList<ServerChange>;

/// Makes the changes in order with one administrator prompt. Answers why that failed and which services had been
/// changed by then, or nothing.
[[nodiscard]] QCoro::Task<std::optional<QString>> changeServers(ServerChanges changes);

} // namespace corvane
