#pragma once

#include "ui/decisions/rows.h"

namespace corvane {

/// What the banner warns of.
inline const QString kDeadDNSWarning =
    QStringLiteral("This Mac's DNS points at Pi-hole, but Pi-hole is not answering. Websites may not load.");

/// What a screen reader says when an operation has ended.
[[nodiscard]] QString spokenEnd(const QString &title, bool succeeded, const QString &failure);

/// What a screen reader says when a test has ended.
[[nodiscard]] QString spokenOutcome(const Row &outcome);

/// What a screen reader says when the checks of this Mac have ended.
[[nodiscard]] QString spokenChecks(const QList<CheckRow> &checks);

} // namespace corvane
