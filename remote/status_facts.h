#pragma once

#include "app/app_model.h"
#include "remote/answer.h"

namespace corvane::remote {

/// How Pi-hole is: the status line, the dot as exit status, and the facts behind them.
[[nodiscard]] Answer statusOf(const AppModel &app);

} // namespace corvane::remote
