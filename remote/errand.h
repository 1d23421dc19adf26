#pragma once

#include "remote/command_line.h"

#include <cstdio>

namespace corvane::remote {

/// Where a command reports what came of it.
struct Terminal {
    std::FILE *out = stdout;
    std::FILE *err = stderr;
};

/// Does what the command line asks for, other than opening the application; answers with the exit status.
[[nodiscard]] int runErrand(const CommandLine &line, const QString &version, Terminal terminal);

/// Brings the Corvane that runs to the front: nothing when it came, else why it did not, as a sentence.
[[nodiscard]] std::optional<QString> bringForward();

} // namespace corvane::remote
