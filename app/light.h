#pragma once

#include "app/menu_icon.h"

namespace corvane {

/// The colours of the status light.
enum class Light { Green, Orange, Red, Gray };

[[nodiscard]] Light lightOf(MenuIcon icon);

} // namespace corvane
