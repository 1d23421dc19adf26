#pragma once

#include "exec/command_step.h"

#include <QString>
#include <QStringList>

namespace corvane {

/// A step that ended an operation, and what it printed.
struct FailedStep {
    CommandStep step;
    /// The step's own lines, as far as the log still holds them.
    QStringList lines;
};

/// What the lines of a failed step are sure to mean.
struct FailureReading {
    /// What helps, beyond what the user can do.
    enum class Remedy {
        None,
        StopColimaFirst,   ///< Something of Colima was left behind; it starts after a forced stop.
        StartColimaByHand, ///< The login service does not start Colima, a plain start does.
    };

    /// What is the matter and what to do, in plain words. Empty when nothing is sure.
    QString sentence;
    /// The tool's own line that carries the cause.
    QString line;
    Remedy remedy = Remedy::None;

    bool operator==(const FailureReading &) const = default;
};

} // namespace corvane
