#pragma once

#include <QObject>
#include <QPointer>

#include <coroutine>
#include <exception>
#include <functional>
#include <optional>
#include <utility>

namespace corvane {

/// What a flow awaits to be bound to a condition: from its next await on it ends also where this does not hold.
class BoundTo {
public:
    explicit BoundTo(std::function<bool()> holds)
        : m_holds(std::move(holds))
    {}
    [[nodiscard]] std::function<bool()> takeCondition() { return std::exchange(m_holds, nullptr); }

private:
    std::function<bool()> m_holds;
};

template <class T>
class FlowPromise;

/// A coroutine that belongs to an object: to `*this`, or to the first parameter of a function that is no member. It
/// starts at once, and runs to its end though nobody waits for it.
///
/// When its object has gone, or what it is bound to does not hold any more, it ends quietly where it awaits: its locals
/// are destroyed and it has no value. A flow that waits for that value ends as well; one that waits for nothing but the
/// end goes on.
template <class T = void>
class [[nodiscard]] Flow {
public:
    using promise_type = FlowPromise<T>;
    using Handle = std::coroutine_handle<promise_type>;

    explicit Flow(Handle frame)
        : m_frame(frame)
    {}
    Flow(Flow &&other) noexcept
        : m_frame(std::exchange(other.m_frame, nullptr))
    {}
    Flow &operator=(Flow &&) = delete;
    ~Flow()
    {
        if (m_frame) m_frame.promise().leave(m_frame);
    }

    [[nodiscard]] bool isReady() const { return m_frame.done(); }

    class Awaiter {
    public:
        explicit Awaiter(Handle frame)
            : m_frame(frame)
        {}
        [[nodiscard]] bool await_ready() const { return m_frame.done(); }
        void await_suspend(std::coroutine_handle<> waiter) const { m_frame.promise().waiter = waiter; }
        T await_resume() const { return m_frame.promise().takeResult(); }

    private:
        Handle m_frame;
    };
    [[nodiscard]] Awaiter operator co_await() const { return Awaiter(m_frame); }

private:
    Handle m_frame;
};

/// Lets a flow run on by itself. An exception that leaves it ends the program loudly: flows answer with values.
inline void launch(Flow<> flow) { const Flow<> left(std::move(flow)); }

/// What ends a flow from inside.
struct FlowEnds {};

/// What waits for an awaitable: itself, or what it gives.
template <class Awaitable>
decltype(auto) awaiterOf(Awaitable &&awaitable)
{
    if constexpr (requires { std::forward<Awaitable>(awaitable).operator co_await(); })
        return std::forward<Awaitable>(awaitable).operator co_await();
    else
        return std::forward<Awaitable>(awaitable);
}

/// What every flow has: its object, who waits for it, and how it failed.
class FlowPromiseBase {
public:
    explicit FlowPromiseBase(const QObject &owner)
        : m_owner(&owner)
    {}

    /// Waits for what is awaited, and ends the flow if it may not go on then.
    template <class Awaitable>
    class Guarded {
    public:
        Guarded(const FlowPromiseBase &flow, Awaitable &&awaitable)
            : m_flow(flow)
            , m_awaitable(std::forward<Awaitable>(awaitable))
            , m_awaiter(awaiterOf(std::forward<Awaitable>(m_awaitable)))
        {}
        [[nodiscard]] bool await_ready() { return m_awaiter.await_ready(); }
        auto await_suspend(std::coroutine_handle<> frame) { return m_awaiter.await_suspend(frame); }
        decltype(auto) await_resume()
        {
            m_flow.endUnlessItMayGoOn();
            return m_awaiter.await_resume();
        }

    private:
        const FlowPromiseBase &m_flow;
        Awaitable m_awaitable; // a reference if it was awaited by its name
        decltype(awaiterOf(std::declval<Awaitable>())) m_awaiter;
    };
    template <class Awaitable>
    [[nodiscard]] Guarded<Awaitable> await_transform(Awaitable &&awaitable)
    {
        return Guarded<Awaitable>(*this, std::forward<Awaitable>(awaitable));
    }
    [[nodiscard]] std::suspend_never await_transform(BoundTo bond)
    {
        m_mayGoOn = bond.takeCondition();
        return {};
    }

    /// Resumes what waits; a frame that nobody owns goes.
    class Ending {
    public:
        [[nodiscard]] bool await_ready() const noexcept { return false; }
        template <class Promise>
        [[nodiscard]] std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> frame) const noexcept
        {
            const std::coroutine_handle<> next = frame.promise().waiter;
            if (frame.promise().m_left) frame.promise().leave(frame);
            return next ? next : std::noop_coroutine();
        }
        void await_resume() const noexcept {}
    };
    [[nodiscard]] std::suspend_never initial_suspend() const noexcept { return {}; }
    [[nodiscard]] Ending final_suspend() const noexcept { return {}; }
    void unhandled_exception();

    /// Nobody asks for the flow any more.
    void leave(std::coroutine_handle<> frame);

    std::coroutine_handle<> waiter;

protected:
    /// Throws what left the flow, if anything did.
    void rethrow();

private:
    void endUnlessItMayGoOn() const
    {
        if (!m_owner || (m_mayGoOn && !m_mayGoOn())) throw FlowEnds();
    }

    QPointer<const QObject> m_owner;
    std::function<bool()> m_mayGoOn;
    std::exception_ptr m_failure;
    bool m_left = false;
};

template <class T>
class FlowPromise final : public FlowPromiseBase {
public:
    // g++ 12 takes a promise's constructor only when no argument has to be converted.
    template <class Owner, class... Arguments>
    explicit FlowPromise(Owner &owner, Arguments &.../*unused*/)
        : FlowPromiseBase(owner)
    {}
    [[nodiscard]] Flow<T> get_return_object() { return Flow<T>(Flow<T>::Handle::from_promise(*this)); }
    void return_value(T value) { m_value.emplace(std::move(value)); }
    [[nodiscard]] T takeResult()
    {
        rethrow();
        if (!m_value) throw FlowEnds();
        return std::move(*m_value);
    }

private:
    std::optional<T> m_value;
};

template <>
class FlowPromise<void> final : public FlowPromiseBase {
public:
    template <class Owner, class... Arguments>
    explicit FlowPromise(Owner &owner, Arguments &.../*unused*/)
        : FlowPromiseBase(owner)
    {}
    [[nodiscard]] Flow<> get_return_object() { return Flow<>(Flow<>::Handle::from_promise(*this)); }
    void return_void() const noexcept {}
    void takeResult() { rethrow(); }
};

} // namespace corvane
