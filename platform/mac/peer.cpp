#include "platform/peer.h"

#include <unistd.h>

namespace corvane::platform {

std::optional<uid_t> peerUser(int socket)
{
    uid_t user = 0;
    gid_t group = 0;
    if (getpeereid(socket, &user, &group) != 0) return std::nullopt;
    return user;
}

} // namespace corvane::platform
