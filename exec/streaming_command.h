#pragma once

#include "exec/command.h"

#include <QCoro/QCoroTask>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace corvane {

/// Some lines that a running command printed since the last hand-over, oldest first.
struct LineBatch {
    /// As many lines as a log keeps.
    static constexpr int kMostLines = 3000;

    QStringList lines;
    /// Lines that came before these and were dropped because the log keeps only the newest.
    qint64 dropped = 0;
};

/// Runs one outside program without a time limit and hands over what it prints, line by line in order, while it runs.
class StreamingCommand {
public:
    /// The shortest time between two hand-overs.
    static constexpr std::chrono::milliseconds kHandOverInterval{16};

    StreamingCommand();
    ~StreamingCommand();

    /// Runs the program on a worker thread. `onLines` is called on the main thread, at most once per 16 ms while the
    /// program runs and with the rest before the task ends; it gets standard output and standard error interleaved as
    /// they arrived. Answers the exit status (or signal number), or nothing when the program could not be started: then
    /// the reason has been handed over as a line. One object runs one program.
    [[nodiscard]] QCoro::Task<std::optional<int>> run(Command command, std::function<void(LineBatch)> onLines);

    /// Sends SIGTERM to the child, or to the one that is just being started.
    void cancel();

private:
    struct Shared;
    std::shared_ptr<Shared> m_shared;
};

} // namespace corvane
