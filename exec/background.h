#pragma once

#include <QCoreApplication>
#include <QMetaObject>
#include <coroutine>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace corvane {

/// Starts blocking work on a worker thread of user-initiated importance. There are enough workers that a prompt which
/// waits three minutes for its user holds nothing else up.
void startOnWorker(std::function<void()> work);

/// Waits until every worker is idle, or `milliseconds` have passed; true when idle.
bool waitForWorkers(int milliseconds);

/// Awaits blocking work: runs it on a worker and resumes the coroutine on the main thread with its result.
///
/// The result crosses under a mutex of its own; Qt's event queue only carries the wake-up.
template <class Result> class BackgroundWork {
public:
    explicit BackgroundWork(std::function<Result()> work)
        : m_crossing(std::make_shared<Crossing>())
    {
        m_crossing->work = std::move(work);
    }

    [[nodiscard]] bool await_ready() const noexcept { return false; }

    void await_suspend(std::coroutine_handle<> waiter)
    {
        startOnWorker([crossing = m_crossing, waiter] {
            {
                const std::lock_guard guard(crossing->mutex);
                crossing->result.emplace(crossing->work());
            }
            QMetaObject::invokeMethod(
                qApp, [waiter] { waiter.resume(); }, Qt::QueuedConnection);
        });
    }

    [[nodiscard]] Result await_resume()
    {
        const std::lock_guard guard(m_crossing->mutex);
        return std::move(*m_crossing->result);
    }

private:
    struct Crossing {
        std::mutex mutex;
        std::function<Result()> work;
        std::optional<Result> result;
    };
    std::shared_ptr<Crossing> m_crossing;
};

} // namespace corvane
