#pragma once

#include "exec/operation_runner.h"

#include <QCoro/QCoroTask>

namespace corvane {

/// Runs the steps and answers whether they succeeded. False also when the runner is busy, and when it goes away: ask
/// whether it still lives.
[[nodiscard]] QCoro::Task<bool> perform(OperationRunner *runner, QString title, CommandSteps steps);

} // namespace corvane
