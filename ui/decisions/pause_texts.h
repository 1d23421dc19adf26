#pragma once

#include <QString>

namespace corvane {

/// What is left of a pause, as a clock counts down: "4:59" or "1:04:59".
[[nodiscard]] QString timeLeft(double seconds);
/// The same for a screen reader: "4 minutes 59 seconds".
[[nodiscard]] QString spokenTimeLeft(double seconds);

} // namespace corvane
