#include "platform/process.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

namespace corvane::platform {

int openPipe(int (&ends)[2]) { return pipe2(ends, O_CLOEXEC) == 0 ? 0 : errno; }

// Debian 12's header declares pidfd_open without C linkage, so that a C++ program cannot link it.
int watchExit(pid_t child) { return static_cast<int>(syscall(SYS_pidfd_open, child, 0)); }

// Every descriptor of this process is opened close-on-exec, so the children need no further care here.
short spawnFlags() { return 0; }

// Linux has no classes of importance; threads start out equal.
void raiseToUserInitiated() {}

} // namespace corvane::platform
