#include "benchmarks/ui/line_watch.h"

#include "benchmarks/exec/measure.h"
#include "benchmarks/ui/printer.h"

#include <algorithm>
#include <cstdio>

namespace corvane::bench {

namespace {

constexpr int kWeighInterval = 100; // milliseconds

} // namespace

LineWatch::LineWatch(const OperationRunner &runner, QQuickWindow &window, int warmUpLines)
    : m_runner(runner)
    , m_warmUpLines(warmUpLines)
{
    QObject::connect(&runner, &OperationRunner::linesChanged, &m_context, [this](int, int count) { onLines(count); });
    QObject::connect(&window, &QQuickWindow::frameSwapped, &m_context, [this] { onFrame(); });
    QObject::connect(&m_scales, &QTimer::timeout, &m_context, [this] { weigh(); });
    m_scales.start(kWeighInterval);
}

void LineWatch::onLines(int appended)
{
    if (m_oldestUnshown != 0) return;
    const QStringList &lines = m_runner.lines();
    m_oldestUnshown = madeAt(lines.at(std::max<qsizetype>(0, lines.size() - appended)));
}

void LineWatch::onFrame()
{
    ++m_frames;
    if (m_oldestUnshown != 0) m_latestLine = std::max(m_latestLine, nowNs() - m_oldestUnshown);
    m_oldestUnshown = 0;
}

void LineWatch::weigh()
{
    if (m_runner.lineCount() < m_warmUpLines) return;
    const double memory = residentMiB();
    if (m_warmMemory == 0) m_warmMemory = memory;
    m_mostMemory = std::max(m_mostMemory, memory);
}

bool LineWatch::report() const
{
    const double late = static_cast<double>(m_latestLine) / 1e6;
    const bool prompt =
        bench::report("  from a line's printing to its frame, at most", late, "ms", late < 100, "under 100");
    std::printf("    %-54s %10d\n", "frames", m_frames);
    const double growth = m_mostMemory - m_warmMemory;
    const bool flat = bench::report("  growth of memory after the first lines", growth, "MiB", growth < 8, "under 8");
    return prompt && flat;
}

} // namespace corvane::bench
