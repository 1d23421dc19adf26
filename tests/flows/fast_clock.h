#pragma once

#include "app/clock.h"

namespace corvane::test {

/// A clock on which a second of waiting passes in 20 milliseconds; what happens between the waits takes no time on it.
class FastClock final : public Clock {
public:
    static constexpr int kHurry = 50;

    [[nodiscard]] Instant now() const override { return m_now; }
    [[nodiscard]] QDateTime wallTime() const override { return QDateTime::currentDateTime().addMSecs(m_slept.count()); }
    [[nodiscard]] QCoro::Task<> pause(Duration time) override;

    /// The clock on the wall goes on, as while the Mac sleeps.
    void sleep(Duration time) { m_slept += time; }

    /// How long flows have waited so far.
    [[nodiscard]] Duration waited() const { return std::chrono::duration_cast<Duration>(m_now - Instant()); }

private:
    SystemClock m_real;
    Instant m_now;
    Duration m_slept{0};
};

} // namespace corvane::test
