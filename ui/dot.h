#pragma once

#include "app/menu_icon.h"

#include <QImage>

namespace corvane {

/// The coloured dot of the menu bar: 16 by 16 points, `scale` device pixels to a point.
[[nodiscard]] QImage dot(MenuIcon icon, double scale);

} // namespace corvane
