#include "app/flow.h"

namespace corvane {

namespace {

[[noreturn]] void tell(const std::exception_ptr &failure)
{
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception &known) {
        qFatal("A flow ended with an exception: %s", known.what());
    } catch (...) {
        qFatal("A flow ended with an exception that is none of the standard library's.");
    }
}

} // namespace

void FlowPromiseBase::unhandled_exception()
{
    try {
        throw;
    } catch (const FlowEnds &) {
        // It has no value, and that is all.
    } catch (...) {
        m_failure = std::current_exception();
    }
}

void FlowPromiseBase::leave(std::coroutine_handle<> frame)
{
    m_left = true;
    if (!frame.done()) return;
    if (m_failure) tell(m_failure);
    frame.destroy();
}

void FlowPromiseBase::rethrow()
{
    if (m_failure) std::rethrow_exception(std::exchange(m_failure, nullptr));
}

} // namespace corvane
