#pragma once

#include <sys/types.h>

#include <optional>

namespace corvane::platform {

/// The user whose program is at the other end of this local socket; absent when the system does not say.
[[nodiscard]] std::optional<uid_t> peerUser(int socket);

} // namespace corvane::platform
