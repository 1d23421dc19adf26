#pragma once

#include <QFuture>
#include <QPromise>

#include <deque>

namespace corvane {

/// Lets one caller in at a time, in the order in which they came.
class CallQueue {
public:
    CallQueue() = default;
    ~CallQueue() { close(); }
    Q_DISABLE_COPY_MOVE(CallQueue)

    /// True when it is the caller's turn (it then calls leave() exactly once); false when the queue is closed.
    [[nodiscard]] QFuture<bool> enter();
    void leave();
    /// Refuses every caller that waits, and every later one.
    void close();

private:
    std::deque<QPromise<bool>> m_waiting;
    bool m_busy = false;
    bool m_closed = false;
};

/// Leaves the queue when the caller's turn goes out of scope.
class Turn {
public:
    explicit Turn(CallQueue &queue)
        : m_queue(queue)
    {}
    ~Turn() { m_queue.leave(); }
    Q_DISABLE_COPY_MOVE(Turn)

private:
    CallQueue &m_queue;
};

} // namespace corvane
