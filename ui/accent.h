#pragma once

#include <QColor>

namespace corvane {

/// The ratio of two colours' luminance, from 1 to 21.
[[nodiscard]] double contrast(const QColor &one, const QColor &other);

/// The accent colour made dark enough to carry white text.
[[nodiscard]] QColor accentFill(const QColor &accent);

/// The accent colour moved no further than it takes to be seen on every surface of the light or the dark looks.
[[nodiscard]] QColor accentMark(const QColor &accent, bool dark);

/// The same for a surface on which something white must be seen too, such as the knob of a switch.
[[nodiscard]] QColor accentTrack(const QColor &accent, bool dark);

} // namespace corvane
