#pragma once

#include "exec/command.h"

#include <QList>

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

    [[nodiscard]] Command command() const { return Command(exe, args).with(env).with(streams); }

    bool operator==(const CommandStep &) const = default;
};

using CommandSteps = QList<CommandStep>;

} // namespace corvane
