// A million lines of a running program into an operation's log: what the main thread and the memory feel of it.

#include "benchmarks/exec/bare_child.h"
#include "benchmarks/exec/measure.h"
#include "exec/operation_runner.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <cstdio>

namespace {

using namespace corvane;
using namespace corvane::bench;

constexpr int kLines = 1'000'000;
constexpr qint64 kWarmUpLines = 100'000;

/// Watches the main thread and the memory while an operation runs.
class Watch {
public:
    explicit Watch(const OperationRunner &runner)
        : m_runner(runner)
    {
        m_sinceBeat.start();
        QObject::connect(&m_timer, &QTimer::timeout, [this] { beat(); });
        m_timer.start(0);
    }

    [[nodiscard]] double longestGap() const { return static_cast<double>(m_longestGap) / 1e6; }
    [[nodiscard]] double growth() const { return peakResidentMiB() - m_warmMemory; }

private:
    void beat()
    {
        m_longestGap = std::max(m_longestGap, m_sinceBeat.nsecsElapsed());
        if (m_warmMemory == 0 && m_runner.lineCount() > kWarmUpLines) m_warmMemory = residentMiB();
        m_sinceBeat.start();
    }

    const OperationRunner &m_runner;
    QTimer m_timer;
    QElapsedTimer m_sinceBeat;
    qint64 m_longestGap = 0;
    double m_warmMemory = 0;
};

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    OperationRunner runner([](const QString &) { return QString(); });
    const CommandSteps steps{{QStringLiteral("A million lines"),
                              QString::fromUtf8(childPath()),
                              {QStringLiteral("lines"), QString::number(kLines)}}};
    const Watch watch(runner);
    QElapsedTimer elapsed;
    elapsed.start();
    runner.start(QStringLiteral("Log"), steps, [](bool) { QCoreApplication::quit(); });
    QCoreApplication::exec();

    const double seconds = static_cast<double>(elapsed.nsecsElapsed()) / 1e9;
    const bool whole =
        runner.succeeded() && runner.lineCount() == kLines + 1 && runner.lines().last() == QString::number(kLines - 1);
    if (!whole) {
        std::fprintf(stderr, "The measurement is void: not every line came\n");
        return 2;
    }
    std::printf("a child's lines through splitter and runner: %.0f lines/s\n", kLines / seconds);
    const bool smooth =
        report("longest gap of the main thread", watch.longestGap(), "ms", watch.longestGap() < 16, "under 16");
    const bool flat =
        report("growth of memory after the first 100,000 lines", watch.growth(), "MiB", watch.growth() < 8, "under 8");
    return smooth && flat ? 0 : 1;
}
