#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace corvane {

/// One "resolver #" block of the system's resolver configuration.
struct ResolverBlock {
    QStringList nameservers;
    /// Present for a resolver that serves only one domain.
    std::optional<QString> domain;
    /// The interface that it is reached through; empty when none is named.
    QString device = {};
    /// It was put before the resolvers of the Mac's own settings.
    bool supplemental = false;

    bool operator==(const ResolverBlock &) const = default;
};

/// Which DNS servers macOS really uses.
struct ResolverReport {
    QStringList defaultServers;
    bool firstIsPihole = false;
    /// None or one sentence for the user.
    QStringList warnings;
    /// What lies behind the warning, as a sentence for the user; empty when that is not known.
    QString explanation = {};
    /// Who takes the lookups before Pi-hole, and what to do about it, as a sentence for the user; empty when nobody
    /// does.
    QString detour = {};

    bool operator==(const ResolverReport &) const = default;

    /// What the blocks mean.
    [[nodiscard]] static ResolverReport of(const QList<ResolverBlock> &blocks);
};

} // namespace corvane
