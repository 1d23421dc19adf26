#pragma once

#include "app/browser_proof.h"
#include "app/browser_rule.h"
#include "checks/browser_info.h"
#include "dns/resolver_report.h"
#include "ui/decisions/rows.h"

namespace corvane {

/// What decides whether a browser asks Pi-hole, apart from the browser's own setting.
struct BrowserSurroundings {
    std::optional<ResolverReport> report;
    BrowserRule rule = BrowserRule::NotNeeded;
    /// Whether Pi-hole tells Firefox to leave its default secure DNS off; absent while that is not known.
    std::optional<bool> firefoxToldOff = {};
    BrowserProofs proofs;
};

/// Whether a browser asks Pi-hole while this Mac does, as far as its setting, the Mac's servers and Pi-hole's rule
/// tell.
struct BrowserVerdict {
    enum class Way { Unknown, WithPihole, PastPihole, Uncertain };

    Way way = Way::Unknown;
    /// Why, and what to do about it; empty where the setting itself says it all.
    QString reason;

    bool operator==(const BrowserVerdict &) const = default;
};

[[nodiscard]] BrowserVerdict browserVerdict(const BrowserInfo &browser, const BrowserSurroundings &surroundings);

/// The badge of a browser's own setting.
[[nodiscard]] Badge browserBadge(SecureDNSState state);
/// One row for each browser; the id opens its settings, when it is installed. The badge follows from the verdict where
/// there is one; the note holds the verdict's reason and what the browser's own test found.
[[nodiscard]] QList<Row> browserRows(const QList<BrowserInfo> &browsers, const BrowserSurroundings &surroundings);

/// The browsers that were proved to ask Pi-hole, as a sentence; empty while there is none.
[[nodiscard]] QString provedBrowsers(const QList<BrowserInfo> &browsers, const BrowserProofs &proofs);

/// What the rule in Pi-hole does, or what follows where it does nothing; empty while none is needed.
[[nodiscard]] QString browserRuleText(BrowserRule rule, bool answering, bool blocks);

} // namespace corvane
