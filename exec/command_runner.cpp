#include "exec/command_runner.h"

#include "exec/background.h"
#include "exec/child_process.h"
#include "exec/data_box.h"

#include <QCoreApplication>
#include <QThread>

#include <algorithm>

namespace corvane {

namespace {

constexpr double kLongestTimeout = 1e9;

ChildProcess::Clock::time_point limitAfter(double seconds)
{
    const std::chrono::duration<double> wanted(seconds > 0 ? std::min(seconds, kLongestTimeout) : 0);
    return ChildProcess::Clock::now() + std::chrono::duration_cast<ChildProcess::Clock::duration>(wanted);
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

CommandResult startAndCapture(const QString &exe, const QStringList &args, double timeout, const Environment &env,
                              Streams streams, ChildProcess::Era asked)
{
    const auto limit = limitAfter(timeout);
    const auto started = ChildProcess::start(exe, args, env, streams, asked);
    return started ? capture(**started, limit) : notStarted(started.error());
}

} // namespace

CommandResult CommandRunner::runSync(const QString &exe, const QStringList &args, double timeout,
                                     const Environment &env)
{
    if (onMainThread()) {
        qCritical("A blocking command was refused on the main thread: %ls", qUtf16Printable(exe));
        return notStarted(QStringLiteral("A blocking command cannot run on the main thread."));
    }
    return startAndCapture(exe, args, timeout, env, Streams::Apart, ChildProcess::era());
}

QCoro::Task<CommandResult> CommandRunner::run(QString exe, QStringList args, double timeout, Environment env,
                                              Streams streams)
{
    const ChildProcess::Era asked = ChildProcess::era();
    std::function<CommandResult()> command = [exe, args, timeout, env, streams, asked] {
        if (asked != ChildProcess::era()) return notStarted(QStringLiteral("Corvane is about to quit."));
        return startAndCapture(exe, args, timeout, env, streams, asked);
    };
    BackgroundWork<CommandResult> work(std::move(command));
    co_return co_await work;
}

void CommandRunner::terminateAll() { ChildProcess::terminateAll(); }

} // namespace corvane
