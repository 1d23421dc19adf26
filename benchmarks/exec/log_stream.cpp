// A million lines of a running program into an operation's log: what the main thread and the memory feel of it.

#include "benchmarks/exec/bare_child.h"
#include "benchmarks/exec/measure.h"
#include "benchmarks/exec/stall_watch.h"
#include "exec/operation_runner.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>

namespace {

using namespace corvane;
using namespace corvane::bench;

constexpr int kLines = 1'000'000;
constexpr qint64 kWarmUpLines = 100'000;

/// Watches the memory while an operation runs.
class Scales {
public:
    explicit Scales(const OperationRunner &runner)
        : m_runner(runner)
    {
        QObject::connect(&runner, &OperationRunner::linesChanged, &m_context, [this] { weigh(); });
    }

    [[nodiscard]] double growth() const { return peakResidentMiB() - m_warmMemory; }

private:
    void weigh()
    {
        if (m_warmMemory == 0 && m_runner.lineCount() > kWarmUpLines) m_warmMemory = residentMiB();
    }

    const OperationRunner &m_runner;
    QObject m_context;
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
    const Scales scales(runner);
    const StallWatch stalls;
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
    const bool smooth = stalls.report();
    const double growth = scales.growth();
    const bool flat = report("  growth of memory after the first 100,000 lines", growth, "MiB", growth < 8, "under 8");
    return smooth && flat ? 0 : 1;
}
