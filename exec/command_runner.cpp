#include "exec/command_runner.h"

#include "exec/background.h"
#include "exec/child_process.h"
#include "exec/data_box.h"

#include <QCoreApplication>
#include <QThread>

#include <algorithm>

namespace corvane {

namespace {

constexpr std::chrono::milliseconds kLongestLimit = std::chrono::years(30); // what the clock can count

ChildProcess::Clock::time_point limitAfter(std::chrono::milliseconds time)
{
    return ChildProcess::Clock::now() + std::clamp(time, std::chrono::milliseconds::zero(), kLongestLimit);
}

CommandResult notStarted(const QString &reason)
{
    CommandResult result;
    result.launchError = reason;
    return result;
}

bool onMainThread() { return qApp && QThread::currentThread() == qApp->thread(); }

CommandResult capture(ChildProcess &child, ChildProcess::Clock::time_point limit)
{
    DataBox output;
    DataBox error;
    const auto readOutput = [&](int from) { return output.readFrom(from); };
    const auto readError = [&](int from) { return error.readFrom(from); };
    CommandResult result;
    result.timedOut = !child.readUntilEnd(readOutput, readError, limit);
    if (result.timedOut) {
        child.terminate();
        (void)child.readUntilEnd(readOutput, readError, limitAfter(CommandRunner::kGrace));
    }
    result.status = child.status().value_or(-1);
    result.standardOutput = output.takeText();
    result.standardError = error.takeText();
    return result;
}

CommandResult startAndCapture(const TimedCommand &command, ChildProcess::Era asked)
{
    const auto limit = limitAfter(command.limit());
    const auto started = ChildProcess::start(command.command(), asked);
    return started ? capture(**started, limit) : notStarted(started.error());
}

} // namespace

CommandResult CommandRunner::runSync(const TimedCommand &command)
{
    if (onMainThread()) {
        qCritical("A blocking command was refused on the main thread: %ls", qUtf16Printable(command.command().exe()));
        return notStarted(QStringLiteral("A blocking command cannot run on the main thread."));
    }
    return startAndCapture(command, ChildProcess::era());
}

QCoro::Task<CommandResult> CommandRunner::run(TimedCommand command)
{
    const ChildProcess::Era asked = ChildProcess::era();
    std::function<CommandResult()> running = [command, asked] {
        if (asked != ChildProcess::era()) return notStarted(QStringLiteral("Corvane is about to quit."));
        return startAndCapture(command, asked);
    };
    BackgroundWork<CommandResult> work(std::move(running));
    co_return co_await work;
}

void CommandRunner::terminateAll() { ChildProcess::terminateAll(); }

} // namespace corvane
