#pragma once

#include "app/clock.h"

#include <functional>

namespace corvane::test {

/// A clock on which waiting takes no time: what is done every 15 seconds is done as often as the machine can.
class QuickClock final : public Clock {
public:
    [[nodiscard]] Instant now() const override { return m_now; }
    [[nodiscard]] QDateTime wallTime() const override
    {
        return m_began.addMSecs((m_now - Instant()) / Duration(1)).addMSecs(m_slept.count());
    }
    [[nodiscard]] QCoro::Task<> pause(Duration time) override
    {
        m_now += time;
        if (time == kPoll) {
            ++m_polls;
            if (m_betweenPolls) m_betweenPolls();
        }
        return m_real.pause(Duration(0));
    }

    /// The clock on the wall goes on, as while the Mac sleeps.
    void sleep(Duration time) { m_slept += time; }
    [[nodiscard]] qint64 polls() const { return m_polls; }
    /// Called whenever a look at the status has ended and the next one is waited for.
    void betweenPolls(std::function<void()> act) { m_betweenPolls = std::move(act); }

private:
    static constexpr std::chrono::seconds kPoll{15};
    SystemClock m_real;
    QDateTime m_began = QDateTime::currentDateTime();
    Instant m_now;
    Duration m_slept{0};
    qint64 m_polls = 0;
    std::function<void()> m_betweenPolls;
};

} // namespace corvane::test
