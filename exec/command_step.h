#pragma once

#include "exec/command_result.h"

#include <QList>
#include <QStringList>

namespace corvane {

/// One command of a longer operation.
struct CommandStep {
    /// The line that announces the step in the log.
    QString label;
    /// Absolute path.
    QString exe;
    QStringList args;
    /// Variables laid over the tool environment.
    Environment env = {};
    /// Whether the operation goes on when this step ends with a status other than 0.
    bool allowFailure = false;
    Streams streams = Streams::Apart;

    bool operator==(const CommandStep &) const = default;
};

using CommandSteps = QList<CommandStep>;

} // namespace corvane
