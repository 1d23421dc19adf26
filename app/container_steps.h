#pragma once

#include "exec/command_step.h"

#include <QCoro/QCoroTask>

#include <expected>

namespace corvane {

/// Which container is wanted.
struct WantedContainer {
    QString tag = {};
    int webPort = 0;
    bool compose = false;
    /// Whether its image is downloaded first.
    bool pull = false;
};

/// The steps that put Pi-hole's container in place; where Colima's virtual machine has no room for it, they begin with
/// making it. A sentence when there is no docker, or when something else holds its port in there.
[[nodiscard]] QCoro::Task<std::expected<CommandSteps, QString>> containerSteps(WantedContainer wanted);

} // namespace corvane
