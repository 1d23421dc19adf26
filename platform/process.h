#pragma once

#include <spawn.h>
#include <sys/types.h>

namespace corvane::platform {

/// Opens a pipe whose ends no child inherits; ends[0] reads, ends[1] writes. Answers 0 or errno.
[[nodiscard]] int openPipe(int (&ends)[2]);

/// A descriptor that poll() reports readable once the child has ended, or -1 with errno set. The caller closes it.
[[nodiscard]] int watchExit(pid_t child);

/// Extra posix_spawn flags that keep every descriptor but 0, 1 and 2 from the child, where the system has them.
[[nodiscard]] short spawnFlags();

/// Adds the file action that does the same, where the system has that instead. Answers 0 or errno.
[[nodiscard]] int closeOtherDescriptors(posix_spawn_file_actions_t &actions);

/// Gives the calling worker thread the importance of work that the user waits for.
void raiseToUserInitiated();

} // namespace corvane::platform
