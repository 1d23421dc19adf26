#pragma once

#include <QFont>

namespace corvane {

/// The font of every control, at the size of plain text.
[[nodiscard]] QFont uiFont();

/// The font of logs and passwords: all characters as wide, 0 unlike O.
[[nodiscard]] QFont fixedFont();

} // namespace corvane
