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

    bool operator==(const NetworkService &) const = default;
};

} // namespace corvane
