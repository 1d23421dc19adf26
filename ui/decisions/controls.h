#pragma once

#include "app/activity.h"
#include "runtime/container_state.h"

#include <QString>

#include <optional>

namespace corvane {

/// Whether an operation runs, is being prepared or is being wound up; most buttons are off meanwhile.
[[nodiscard]] bool operating(bool operationRuns, Activities underWay);

/// What is being done before an operation shows its steps, for the line beside the button that began it; empty when
/// nothing is.
[[nodiscard]] QString startInPreparation(Activities underWay, bool operationRuns);
[[nodiscard]] QString updateInPreparation(Activities underWay, bool operationRuns);
[[nodiscard]] QString backupUnderWay(Activities underWay);

/// Which everyday buttons can be pressed. `operating`: an operation runs, or the container is being changed already.
[[nodiscard]] bool canStart(const ContainerState &container, bool operating);
[[nodiscard]] bool canStopOrRestart(const ContainerState &container, bool operating);

/// Whether Pi-hole could not be started because another program holds a port: by the message of the start, or by how
/// its operation failed.
[[nodiscard]] bool startFailedOnPort(const QString &startMessage, const std::optional<QString> &failure);

} // namespace corvane
