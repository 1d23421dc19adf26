#pragma once

#include <QColor>

namespace corvane::platform {

/// Colours that the system names and shades for its light and dark looks.
enum class SystemColor { Green, Orange, Red, Gray, Accent };

[[nodiscard]] QColor systemColor(SystemColor color);

} // namespace corvane::platform
