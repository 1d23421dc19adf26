#include "exec/command_runner.h"

#include "exec/background.h"
#include "exec/child_process.h"
#include "exec/data_box.h"

#include <QCoreApplication>
#include <QThread>

#include <algorithm>

namespace corvane {

namespace {

using namespace std::chrono_literals;

constexpr auto kGrace = 2s;
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

} // namespace

CommandResult CommandRunner::runSync(const QString &exe, const QStringList &args, double timeout,
                                     const Environment &env)
{
    if (onMainThread()) {
        qCritical("A blocking command was refused on the main thread: %ls", qUtf16Printable(exe));
        return notStarted(QStringLiteral("A blocking command cannot run on the main thread."));
    }
    const auto limit = limitAfter(timeout);
    const auto started = ChildProcess::start(exe, args, env);
    if (!started) return notStarted(started.error());
    ChildProcess &child = **started;

    DataBox output;
    DataBox error;
    CommandResult result;
    result.timedOut = !child.readUntilEnd([&](int from) { return output.readFrom(from); },
                                          [&](int from) { return error.readFrom(from); }, limit);
    if (result.timedOut) {
        child.terminate();
        child.waitForEnd(ChildProcess::Clock::now() + kGrace);
    }
    result.status = child.status().value_or(-1);
    result.standardOutput = output.takeText();
    result.standardError = error.takeText();
    return result;
}

QCoro::Task<CommandResult> CommandRunner::run(QString exe, QStringList args, double timeout, Environment env)
{
    std::function<CommandResult()> command = [exe, args, timeout, env] { return runSync(exe, args, timeout, env); };
    BackgroundWork<CommandResult> work(std::move(command));
    co_return co_await work;
}

void CommandRunner::terminateAll() { ChildProcess::terminateAll(); }

} // namespace corvane
