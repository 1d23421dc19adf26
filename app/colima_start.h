#pragma once

#include "exec/command_step.h"

namespace corvane {

class AppModel;

/// The steps that start Colima. They begin with a forced stop when Docker is down and the last try met what an earlier
/// run had left behind. Empty without colima.
[[nodiscard]] CommandSteps colimaStartSteps(AppModel &model);

} // namespace corvane
