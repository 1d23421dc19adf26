#pragma once

#include <QColor>
#include <QPalette>

namespace corvane {

/// The ratio of two colours' luminance, from 1 to 21.
[[nodiscard]] double contrast(const QColor &one, const QColor &other);

/// The user's accent colour.
[[nodiscard]] QColor accentColor(const QPalette &palette);

/// The accent colour made dark enough to carry white text.
[[nodiscard]] QColor accentFill(const QPalette &palette);

} // namespace corvane
