#pragma once

#include "exec/command_result.h"

#include <QCoro/QCoroTask>
#include <QStringList>

namespace corvane {

/// Runs outside programs to their end with a time limit and captures what they print. It never throws: every failure is
/// part of the result. `exe` is an absolute path; no shell and no search is involved; standard input is the null
/// device.
class CommandRunner {
public:
    /// Seconds that a child has to end after it was told to.
    static constexpr double kGrace = 2;

    /// Blocks the calling thread; refused on the main thread (the result says so). `timeout` is in seconds; at the
    /// limit the child gets SIGTERM and two more seconds, and what it printed so far is kept.
    [[nodiscard]] static CommandResult runSync(const QString &exe, const QStringList &args, double timeout,
                                               const Environment &env);

    /// The same on a worker thread; resumes the caller on the main thread.
    [[nodiscard]] static QCoro::Task<CommandResult> run(QString exe, QStringList args, double timeout, Environment env,
                                                        Streams streams = Streams::Apart);

    /// Sends SIGTERM to every child that a call still waits for, and starts none that was asked for before. Used when
    /// the application quits.
    static void terminateAll();
};

} // namespace corvane
