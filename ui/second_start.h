#pragma once

#include "remote/instance.h"

#include <optional>

namespace corvane {

/// What a start of Corvane does while another one runs: brings that one to the front, or says why it could not. Answers
/// with this program's exit status; nothing when this is the one Corvane, by now at the latest.
[[nodiscard]] std::optional<int> endSecondStart(remote::Instance &instance, int argc, char **argv);

} // namespace corvane
