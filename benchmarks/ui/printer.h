#pragma once

#include <QStringView>

#include <cstdint>

namespace corvane::bench {

/// This moment in nanoseconds of the clock that all programs of the machine share.
[[nodiscard]] std::int64_t nowNs();

/// Prints lines that look like a name server's log and begin with the moment they were made: `perSecond` of them, or
/// with 0 as many as the reader takes.
void printLog(int lines, int perSecond);

/// The moment at which a line of printLog was made; 0 for any other line.
[[nodiscard]] std::int64_t madeAt(QStringView line);

} // namespace corvane::bench
