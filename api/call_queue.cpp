#include "api/call_queue.h"

namespace corvane {

namespace {

void answer(QPromise<bool> &promise, bool admitted)
{
    promise.addResult(admitted);
    promise.finish();
}

} // namespace

QFuture<bool> CallQueue::enter()
{
    QPromise<bool> promise;
    promise.start();
    const QFuture<bool> turn = promise.future();
    if (m_closed || !m_busy) {
        m_busy = !m_closed;
        answer(promise, !m_closed);
    } else {
        m_waiting.push_back(std::move(promise));
    }
    return turn;
}

void CallQueue::leave()
{
    m_busy = !m_waiting.empty();
    if (!m_busy) return;
    QPromise<bool> next = std::move(m_waiting.front());
    m_waiting.pop_front();
    answer(next, true);
}

void CallQueue::close()
{
    m_closed = true;
    for (QPromise<bool> &waiting : m_waiting)
        answer(waiting, false);
    m_waiting.clear();
}

} // namespace corvane
