#pragma once

#include "api/pihole_types.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <expected>

namespace corvane {

/// What was asked in ten minutes.
struct PiholeSlot {
    static constexpr qint64 kSeconds = 600;

    /// Seconds since 1970.
    qint64 start = 0;
    qint64 total = 0;
    qint64 blocked = 0;

    bool operator==(const PiholeSlot &) const = default;
};

/// Pi-hole's last 24 hours, oldest first; its newest slot may not have begun yet.
using PiholeHistory = QList<PiholeSlot>;

/// A name and how often it was blocked.
struct NameCount {
    QString name;
    qint64 count = 0;

    bool operator==(const NameCount &) const = default;
};

/// The names that were blocked most.
struct PiholeTopBlocked {
    QList<NameCount> names;
    /// Pi-hole is set to give no names.
    bool hidden = false;

    bool operator==(const PiholeTopBlocked &) const = default;
};

[[nodiscard]] std::expected<PiholeHistory, PiholeAPIError> parseHistory(const QByteArray &json);
[[nodiscard]] std::expected<PiholeTopBlocked, PiholeAPIError> parseTopBlocked(const QByteArray &json);

/// The names without what nobody asked for: Pi-hole counts a name as well when another one led to it. `newest`: blocked
/// questions that show how often that happens.
[[nodiscard]] PiholeTopBlocked askedFor(const PiholeTopBlocked &counted, const QList<PiholeQuery> &newest);

} // namespace corvane
