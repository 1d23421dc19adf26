#pragma once

#include "exec/failure_reading.h"

#include <QLatin1StringView>

#include <span>

namespace corvane {

/// One failure that a tool's words leave no doubt about. The words are in small letters and in one line.
struct KnownFailure {
    QLatin1StringView words;
    /// Further words of the same line; none when empty.
    QLatin1StringView andWords;
    QLatin1StringView sentence;
    /// The line that is shown begins with these words where there is one; else it is the one that was recognised.
    QLatin1StringView shown = {};
    FailureReading::Remedy remedy = FailureReading::Remedy::None;
};

/// The first failure of the table that a line reports, with the last such line; nothing when none does.
[[nodiscard]] FailureReading firstKnown(std::span<const KnownFailure> table, const QStringList &lines);

} // namespace corvane
