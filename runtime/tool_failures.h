#pragma once

#include "exec/failure_reading.h"

namespace corvane {

/// Finds out what a failed step of Homebrew, Colima or Docker failed on. A reader answers only where the tool's own
/// words leave no doubt.
class ToolFailures {
public:
    /// Asks the reader of the step, or of its tool.
    [[nodiscard]] static FailureReading read(const FailedStep &failed);

    [[nodiscard]] static FailureReading homebrew(const QStringList &lines);
    [[nodiscard]] static FailureReading colima(const QStringList &lines);
    [[nodiscard]] static FailureReading docker(const QStringList &lines);
    /// Of the step that makes room for Pi-hole in Colima's machine.
    [[nodiscard]] static FailureReading room(const QStringList &lines);
};

} // namespace corvane
