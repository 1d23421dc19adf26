#pragma once

#include "app/place.h"

#include <QString>

namespace corvane {

/// Whether the banner says how an action goes. `banner`: it is shown; `setUp`: the set-up is below it.
[[nodiscard]] bool answersInBanner(Place::Name asked, bool banner, bool setUp);

/// Whether an operation with this title moves Pi-hole to another port, so that its end belongs beside the ports.
[[nodiscard]] bool movesPort(const QString &title);
/// Whether an operation with this title changes what starts Colima, so that its end belongs beside that switch.
[[nodiscard]] bool changesAutostart(const QString &title);

} // namespace corvane
