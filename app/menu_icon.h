#pragma once

#include "runtime/container_state.h"

namespace corvane {

/// The state that the menu-bar dot shows. The numbers are fixed.
enum class MenuIcon {
    Active = 0,       ///< Pi-hole answers and this Mac's DNS uses it.
    NotUsed = 1,      ///< Pi-hole answers, but this Mac's DNS does not use it.
    NotAnswering = 2, ///< This Mac's DNS points at Pi-hole, but Pi-hole does not answer.
    Stopped = 3,      ///< Pi-hole does not answer and the Mac does not use it.
    Unknown = 4,      ///< The status has not been checked yet.
};

[[nodiscard]] MenuIcon menuIcon(bool statusChecked, bool answering, bool usedByMac);

/// The icon's meaning in one sentence.
[[nodiscard]] QString statusLine(MenuIcon icon, const ContainerState &container);

} // namespace corvane
