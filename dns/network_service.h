#pragma once

#include <QString>
#include <QStringList>

namespace corvane {

/// One network service of this Mac, such as Wi-Fi.
struct NetworkService {
    QString name;
    /// The DNS servers set by hand, in order; empty means automatic.
    QStringList servers;
    /// Whether it carries the internet connection.
    bool isDefaultRoute = false;
    /// False when macOS did not list the servers; the list is empty then.
    bool serversKnown = true;

    [[nodiscard]] bool asksPiholeFirst() const;
    /// Pi-hole is among its servers, in whatever place.
    [[nodiscard]] bool mayAskPihole() const;

    bool operator==(const NetworkService &) const = default;
};

/// A list of DNS servers as the user reads it: "Automatic" when it is empty.
[[nodiscard]] QString serversText(const QStringList &servers);

} // namespace corvane
