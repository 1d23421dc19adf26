#pragma once

#include "ui/decisions/rows.h"

namespace corvane {

/// The badge of a step in the sidebar of the set-up.
[[nodiscard]] Badge stepBadge(bool done, bool current);

/// What the sidebar shows and a screen reader says for a step; `step` counts from 0.
[[nodiscard]] Row stepRow(int step, const QString &title, bool done, bool current);

/// The line between "Back" and "Next".
[[nodiscard]] QString stepPosition(int step);

/// The file that shows the step.
[[nodiscard]] QString stepView(int step);
[[nodiscard]] bool hasStepBefore(int step);
[[nodiscard]] bool hasStepAfter(int step);

} // namespace corvane
