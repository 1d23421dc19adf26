#pragma once

#include <chrono>
#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace corvane {

/// Starts blocking work on a worker thread of user-initiated importance. There are enough workers that a prompt which
/// waits three minutes for its user holds nothing else up.
void startOnWorker(std::function<void()> work);

/// Runs `work` on the main thread, from its event loop, in the order of the calls. Callable from any thread.
///
/// Together with startOnWorker this is the one place where work crosses between threads: whatever a thread did before
/// it called is seen by the work.
void postToMainThread(std::function<void()> work);

/// Waits until every worker is idle, or the limit has passed; true when idle.
bool waitForWorkers(std::chrono::milliseconds limit);

/// Awaits blocking work: runs it on a worker and resumes the coroutine on the main thread with its result.
template <class Result>
class BackgroundWork {
public:
    explicit BackgroundWork(std::function<Result()> work)
        : m_work(std::move(work))
        , m_result(std::make_shared<std::optional<Result>>())
    {}

    [[nodiscard]] bool await_ready() const noexcept { return false; }

    void await_suspend(std::coroutine_handle<> waiter)
    {
        startOnWorker([work = std::move(m_work), result = m_result, waiter] {
            result->emplace(work());
            postToMainThread([waiter] { waiter.resume(); });
        });
    }

    [[nodiscard]] Result await_resume() { return std::move(**m_result); }

private:
    std::function<Result()> m_work;
    std::shared_ptr<std::optional<Result>> m_result;
};

} // namespace corvane
