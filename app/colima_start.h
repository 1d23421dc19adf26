#pragma once

#include "exec/command_step.h"

#include <QLatin1StringView>

namespace corvane {

class AppModel;

/// The steps that start Colima. They begin with a forced stop when Docker is down and the last try met what an earlier
/// run had left behind. Empty without colima.
[[nodiscard]] CommandSteps colimaStartSteps(AppModel &model);

inline constexpr QLatin1StringView kNoColima{"Colima was not found."};

/// Colima counts as started before Docker answers. Whether Docker does not, and waiting may help.
[[nodiscard]] bool mayDockerCome(const AppModel &model);
/// The `notice` when the waiting did not help.
inline constexpr QLatin1StringView kDockerIsLate{"Colima was started, but Docker does not answer yet. It may need "
                                                 "another minute."};

} // namespace corvane
