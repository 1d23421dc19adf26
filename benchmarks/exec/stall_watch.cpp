#include "benchmarks/exec/stall_watch.h"

#include "benchmarks/exec/measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>

namespace corvane::bench {

namespace {

constexpr double kAllowed = 16; // milliseconds

std::int64_t nowNs() { return std::chrono::steady_clock::now().time_since_epoch() / std::chrono::nanoseconds(1); }

double milliseconds(std::int64_t nanoseconds) { return static_cast<double>(nanoseconds) / 1e6; }

void explain(const char *what, std::int64_t nanoseconds)
{
    std::printf("    %-54s %10.3f ms\n", what, milliseconds(nanoseconds));
}

} // namespace

StallWatch::StallWatch()
    : m_lastBeat(nowNs())
    , m_lastShare(share())
{
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { beat(); });
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.start(1);
}

StallWatch::Share StallWatch::share()
{
    Share share;
    std::ifstream("/proc/thread-self/schedstat") >> share.computed >> share.stoodReady;
    return share;
}

void StallWatch::beat()
{
    const std::int64_t now = nowNs();
    const Share total = share();
    const std::int64_t stall = now - m_lastBeat;
    const std::int64_t computed = total.computed - m_lastShare.computed;
    const std::int64_t stoodReady = total.stoodReady - m_lastShare.stoodReady;
    if (stall > m_longest) {
        m_longest = stall;
        m_withoutCore = stoodReady;
    }
    m_mostWork = std::max(m_mostWork, computed);
    m_longestWait = std::max(m_longestWait, stall - computed - stoodReady);
    m_lastBeat = now;
    m_lastShare = total;
}

double StallWatch::mostWork() const { return milliseconds(m_mostWork); }

bool StallWatch::report() const
{
    const double longest = milliseconds(m_longest);
    const bool allowed =
        bench::report("  longest stall of the main thread", longest, "ms", longest < kAllowed, "under 16");
    explain("of which it was ready, but other programs had the cores", m_withoutCore);
    explain("the most it computed in any one go", m_mostWork);
    explain("the longest it waited for anything but a core", m_longestWait);
    return allowed;
}

} // namespace corvane::bench
