#include "platform/attention.h"

namespace corvane::platform {

std::shared_ptr<void> keepWatching() { return nullptr; }

} // namespace corvane::platform
