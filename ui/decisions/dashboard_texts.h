#pragma once

#include "api/pihole_types.h"
#include "app/menu_icon.h"
#include "runtime/container_state.h"
#include "ui/decisions/badge.h"

namespace corvane {

/// The dashboard's three counters; "-" without a summary.
[[nodiscard]] QString queriesText(const std::optional<PiholeSummary> &summary);
[[nodiscard]] QString blockedText(const std::optional<PiholeSummary> &summary);
[[nodiscard]] QString blockedPercentText(const std::optional<PiholeSummary> &summary);

/// Whether Pi-hole blocks, and for how many minutes it still pauses.
[[nodiscard]] QString blockingText(const std::optional<PiholeBlocking> &blocking);
/// The button that pauses blocking, or ends the pause.
[[nodiscard]] QString pauseLabel(const std::optional<PiholeBlocking> &blocking);

/// What the API's message says about saving the log; empty when it says something else.
[[nodiscard]] QString logTrouble(const QString &apiMessage);

/// The menu's item that starts or stops Pi-hole.
[[nodiscard]] QString startStopLabel(const ContainerState &container);

[[nodiscard]] Tint::Name dotTint(MenuIcon icon);

} // namespace corvane
