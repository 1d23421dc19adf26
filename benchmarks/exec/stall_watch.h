#pragma once

#include <QTimer>

#include <cstdint>

namespace corvane::bench {

/// Notes how long the main thread holds up its events, and which part of that is the host's: beats every millisecond.
class StallWatch {
public:
    StallWatch();

    /// Prints the longest stall beside what is allowed, and what it was made of; answers whether it keeps to it.
    [[nodiscard]] bool report() const;

    /// The most that the thread computed in any one go, in milliseconds: what the host's other programs cannot make
    /// worse.
    [[nodiscard]] double mostWork() const;

private:
    /// What the scheduler says of this thread so far, in nanoseconds.
    struct Share {
        std::int64_t computed = 0;
        std::int64_t stoodReady = 0;
    };

    [[nodiscard]] static Share share();
    void beat();

    QTimer m_timer;
    std::int64_t m_lastBeat;
    Share m_lastShare;
    std::int64_t m_longest = 0;
    std::int64_t m_withoutCore = 0;
    std::int64_t m_mostWork = 0;
    std::int64_t m_longestWait = 0;
};

} // namespace corvane::bench
