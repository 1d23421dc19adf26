#pragma once

#include "api/pihole_types.h"

#include <QList>
#include <QString>

#include <optional>

namespace corvane {

/// A name that was blocked lately: how often, and what blocked it.
struct BlockedName {
    enum class By {
        List,
        Rule,
        Corvane,  ///< A rule of Corvane's own.
        Upstream, ///< The server that Pi-hole asks: no rule of Pi-hole's helps.
        Itself,   ///< Pi-hole's own switch for names that would lead browsers past it.
    };

    QString name;
    int times = 0;
    By by = By::List;
    /// The list's name or address, or the rule; empty when it is not known.
    QString what;
    /// The name behind it for which it was blocked; empty when it was blocked itself.
    QString behind;
    /// It was asked for after the user began to look.
    bool isNew = false;

    bool operator==(const BlockedName &) const = default;

    [[nodiscard]] bool canBeAllowed() const { return by == By::List || by == By::Rule; }
};

/// Pi-hole's status words for what it did not let through.
[[nodiscard]] bool saysBlocked(const QString &status);

/// Each blocked name once, the newest first. Questions from before `boundary` (seconds by Pi-hole's clock) do not count
/// for a name that was asked for since.
[[nodiscard]] QList<BlockedName> blockedNames(const QList<PiholeQuery> &questions, double boundary,
                                              const QList<PiholeList> &lists, const QList<PiholeRule> &rules);

/// What a person calls a list: its comment, or its address without what all addresses begin with.
[[nodiscard]] QString listName(const PiholeList &list);

} // namespace corvane
