#pragma once

#include <memory>

namespace corvane::platform {

/// Keeps the system from slowing Corvane down while none of its windows is open, for as long as the answer lives; null
/// where no system does so. The Mac may sleep all the same.
[[nodiscard]] std::shared_ptr<void> keepWatching();

} // namespace corvane::platform
