#pragma once

#include "exec/command.h"
#include "exec/file_descriptor.h"

#include <sys/types.h>

#include <expected>

namespace corvane {

/// A program just started, and the ends of its output streams that this process reads without blocking.
struct Spawned {
    pid_t pid;
    FileDescriptor output;
    /// Not open when both streams go the same way.
    FileDescriptor error;
};

/// Starts a program with the null device as standard input and no other descriptor of this process, every signal as the
/// system has it, and the tool environment with the command's variables laid over it. The error is an errno value.
[[nodiscard]] std::expected<Spawned, int> spawnProgram(const Command &command);

} // namespace corvane
