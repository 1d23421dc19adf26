#include "tests/io/test_child.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <future>

namespace corvane::test {

QString childPath() { return QStringLiteral(CORVANE_TEST_CHILD); }

CommandResult runProgram(const QString &exe, const QStringList &args, std::chrono::milliseconds limit,
                         const Environment &env)
{
    const TimedCommand command = Command(exe, args).with(env).within(limit);
    return std::async(std::launch::async, [&] { return CommandRunner::runSync(command); }).get();
}

CommandResult runChild(const QStringList &args, std::chrono::milliseconds limit, const Environment &env)
{
    return runProgram(childPath(), args, limit, env);
}

bool spinUntil(const std::function<bool()> &condition, double seconds)
{
    const QDeadlineTimer limit(static_cast<qint64>(seconds * 1000));
    QTimer ticker;
    ticker.start(5);
    while (!condition() && !limit.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition();
}

QString hex(QByteArrayView bytes) { return QString::fromLatin1(bytes.toByteArray().toHex()); }

} // namespace corvane::test
