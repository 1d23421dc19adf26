#include "platform/process.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

namespace corvane::platform {

int openPipe(int (&ends)[2]) { return pipe2(ends, O_CLOEXEC) == 0 ? 0 : errno; }

// Debian 12's header declares pidfd_open without C linkage, so that a C++ program cannot link it.
int watchExit(pid_t child) { return static_cast<int>(syscall(SYS_pidfd_open, child, 0)); }

short spawnFlags() { return 0; }

int closeOtherDescriptors(posix_spawn_file_actions_t &actions)
{
    return posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
}

// Linux has no classes of importance; threads start out equal.
void raiseToUserInitiated() {}

} // namespace corvane::platform
