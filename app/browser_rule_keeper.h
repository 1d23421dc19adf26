#pragma once

#include "api/pihole_api.h"
#include "app/browser_rule.h"
#include "app/clock.h"
#include "app/flow.h"
#include "dns/resolver_report.h"

#include <QObject>

namespace corvane {

/// Puts the rule into Pi-hole that keeps browsers with it, looks after it, and takes it away again.
///
/// A browser that finds 1.1.1.1 among the Mac's servers goes over to that provider's secure DNS, unless Pi-hole answers
/// that its name does not exist. A rule of the user's stays as it is. The caller sets up the API client.
class BrowserRuleKeeper : public QObject {
    Q_OBJECT

public:
    BrowserRuleKeeper(PiholeAPI &api, Clock &clock);

    [[nodiscard]] BrowserRule state() const { return m_state; }

    /// Whether a rule that was put is looked up; while blocking is off none works.
    enum class Proof { Skip, Ask };

    /// Puts the rule into Pi-hole unless it is there.
    [[nodiscard]] Flow<> put(Proof proof);
    /// Keeps the rule where the Mac's servers need it, and takes one away that was left. Looks once a minute.
    [[nodiscard]] Flow<> keep(std::optional<ResolverReport> report);
    /// Takes the rule away unless a service of this Mac has 1.1.1.1 behind Pi-hole. A VPN in front is no reason: the
    /// Mac goes back to its own servers when that ends.
    [[nodiscard]] Flow<> drop();

    /// The rule had no effect for a while; browsers that were open may have gone.
    void interrupt();
    /// A browser that knows 1.1.1.1 was seen to ask Pi-hole.
    void proved();
    /// Pi-hole's rules may be others than before.
    void lookAgain();

Q_SIGNALS:
    void changed();

private:
    void become(BrowserRule state);
    [[nodiscard]] Flow<BrowserRule> findOrAdd();
    [[nodiscard]] Flow<bool> works();

    PiholeAPI &m_api;
    Clock &m_clock;
    BrowserRule m_state = BrowserRule::NotNeeded;
    Clock::Instant m_nextLook;
    /// A rule of ours may be in Pi-hole although this Mac does not need it.
    bool m_mayLinger = true;
    /// What was wished last: what began before it must not undo it.
    int m_newestWish = 0;
};

} // namespace corvane
