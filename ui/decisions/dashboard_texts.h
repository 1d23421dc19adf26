#pragma once

#include "api/pihole_types.h"
#include "app/menu_icon.h"
#include "runtime/container_state.h"
#include "ui/decisions/rows.h"

namespace corvane {

/// Today's numbers and whether Pi-hole blocks, from left to right; "-" for what is not known.
[[nodiscard]] QList<Row> counterRows(const std::optional<PiholeSummary> &summary,
                                     const std::optional<PiholeBlocking> &blocking);

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
