#pragma once

#include <coroutine>
#include <optional>
#include <utility>

namespace corvane {

/// A value that one coroutine waits for and that somebody else gives, once, on the same thread.
///
/// Its owner must complete it before it dies, or the waiter is lost.
template <class T>
class Completion {
public:
    Completion() = default;
    Completion(const Completion &) = delete;
    Completion &operator=(const Completion &) = delete;

    /// What the waiter awaits; this object must outlive the wait.
    class Wait {
    public:
        explicit Wait(Completion *source)
            : m_source(source)
        {}
        [[nodiscard]] bool await_ready() const noexcept { return m_source->m_value.has_value(); }
        void await_suspend(std::coroutine_handle<> waiter) noexcept { m_source->m_waiter = waiter; }
        [[nodiscard]] T await_resume() { return std::move(*m_source->m_value); }

    private:
        Completion *m_source;
    };
    [[nodiscard]] Wait wait() { return Wait(this); }

    /// Gives the value and resumes the waiter before it returns.
    void complete(T value)
    {
        if (m_value) return;
        m_value.emplace(std::move(value));
        if (const auto waiter = std::exchange(m_waiter, nullptr)) waiter.resume();
    }

private:
    std::optional<T> m_value;
    std::coroutine_handle<> m_waiter;
};

} // namespace corvane
