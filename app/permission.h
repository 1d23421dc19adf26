#pragma once

#include "api/pihole_types.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace corvane {

/// A name that the user let Pi-hole allow. It is nowhere but among Pi-hole's own rules; the rule's comment says
/// whose it is and when it ends.
struct Permission {
    static constexpr qint64 kHour = 3600; // seconds

    QString name;
    /// Absent for one that lasts until it is taken back.
    std::optional<QDateTime> end;

    bool operator==(const Permission &) const = default;

    /// An end that lies further ahead than any permission lasts was written by a clock that was wrong.
    [[nodiscard]] bool isOver(const QDateTime &now) const;
    [[nodiscard]] PiholeRule rule() const;
    /// The permission that the rule is; absent when the rule is somebody else's.
    [[nodiscard]] static std::optional<Permission> of(const PiholeRule &rule);
};

/// The name as a rule must hold it: in small letters, without blanks around it or a dot at its end, with which it would
/// never match. Empty when nothing is left.
[[nodiscard]] QString nameForRule(const QString &name);

} // namespace corvane
