#pragma once

#include "exec/file_descriptor.h"

#include <sys/types.h>

#include <optional>

namespace corvane::remote {

/// The claim to be the one Corvane of this user. The system takes it back when the process ends, however it ends.
class Instance {
public:
    /// Lays the claim. Once in a process: a second one would give it up with its file.
    Instance();

    /// Whether another Corvane has it. Where the system keeps no claims, nobody has.
    [[nodiscard]] bool isTaken() const { return m_taken; }
    /// Tries once more.
    void claim();

    /// The process that has it, for somebody who does not want it; absent when nobody has.
    [[nodiscard]] static std::optional<pid_t> running();

private:
    FileDescriptor m_file;
    bool m_taken = false;
};

} // namespace corvane::remote
