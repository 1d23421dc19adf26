#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace corvane::bench {

/// The program of named behaviours that the tests use too.
[[nodiscard]] const char *childPath();

/// Starts a program with posix_spawn, reads its standard output into memory with a plain loop of blocking reads and
/// collects it: the least that such a thing can cost. Answers how many bytes came.
[[nodiscard]] size_t captureBarely(std::vector<std::string> command);

} // namespace corvane::bench
