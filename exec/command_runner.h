#pragma once

#include "exec/command.h"
#include "exec/command_result.h"

#include <QCoro/QCoroTask>

namespace corvane {

/// Runs outside programs to their end with a time limit and captures what they print. It never throws: every failure is
/// part of the result. At the limit the child gets SIGTERM and its grace; what it printed so far is kept.
class CommandRunner {
public:
    /// The time that a child has to end after SIGTERM. It is never killed.
    static constexpr std::chrono::seconds kGrace{2};

    /// Blocks the calling thread; refused on the main thread (the result says so). A limit of zero or less ends the
    /// child at once.
    [[nodiscard]] static CommandResult runSync(const TimedCommand &command);

    /// The same on a worker thread; resumes the caller on the main thread.
    [[nodiscard]] static QCoro::Task<CommandResult> run(TimedCommand command);

    /// Sends SIGTERM to every child that a call still waits for, and starts none that was asked for before. Used when
    /// the application quits.
    static void terminateAll();
};

} // namespace corvane
