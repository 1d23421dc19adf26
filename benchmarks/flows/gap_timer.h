#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace corvane::bench {

/// Ticks every 5 milliseconds and remembers how late the latest tick came.
class GapTimer {
public:
    GapTimer()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { tick(); });
        m_timer.start(kInterval);
        m_sinceTick.start();
    }

    /// The longest time between two ticks since the last call, in milliseconds.
    [[nodiscard]] double takeLongest()
    {
        tick();
        return static_cast<double>(std::exchange(m_longest, 0)) / 1e6;
    }

private:
    static constexpr int kInterval = 5; // milliseconds

    void tick()
    {
        m_longest = std::max(m_longest, m_sinceTick.nsecsElapsed());
        m_sinceTick.restart();
    }

    QTimer m_timer;
    QElapsedTimer m_sinceTick;
    qint64 m_longest = 0;
};

} // namespace corvane::bench
