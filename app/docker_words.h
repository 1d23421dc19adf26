#pragma once

#include "exec/command_result.h"

namespace corvane {

/// Why a docker command failed, as a sentence: the cause where docker's words leave no doubt, else in general.
[[nodiscard]] QString whyDockerFailed(const CommandResult &result);

/// What docker itself said about its failure, or how it failed without a word.
[[nodiscard]] QString dockerSays(const CommandResult &result);

} // namespace corvane
