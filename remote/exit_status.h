#pragma once

namespace corvane::remote {

// How a command ends. That of "status" is the dot's: 0 green, 1 orange, 2 red, 3 stopped, 4 not checked yet.

constexpr int kDone = 0;
constexpr int kNotDone = 1;
constexpr int kNotRunning = 5;
constexpr int kNoAnswer = 6;
constexpr int kWrongUse = 64;

} // namespace corvane::remote
