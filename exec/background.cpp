#include "exec/background.h"

#include "platform/process.h"

#include <QCoreApplication>
#include <QEvent>
#include <QRunnable>
#include <QThreadPool>

#include <deque>
#include <mutex>

namespace corvane {

namespace {

/// First in, first out, between threads.
class WorkQueue {
public:
    void put(std::function<void()> work)
    {
        const std::lock_guard guard(m_mutex);
        m_waiting.push_back(std::move(work));
    }

    [[nodiscard]] std::function<void()> take()
    {
        const std::lock_guard guard(m_mutex);
        auto work = std::move(m_waiting.front());
        m_waiting.pop_front();
        return work;
    }

private:
    std::mutex m_mutex;
    std::deque<std::function<void()>> m_waiting;
};

/// Worker threads; the pool only wakes them, the work itself goes through the queue.
class Workers : private QRunnable {
public:
    Workers()
    {
        setAutoDelete(false);
        m_pool.setMaxThreadCount(kMaxWorkers);
    }

    void start(std::function<void()> work)
    {
        m_queue.put(std::move(work));
        m_pool.start(this);
    }

    [[nodiscard]] bool waitUntilIdle(std::chrono::milliseconds limit)
    {
        return m_pool.waitForDone(static_cast<int>(limit.count()));
    }

private:
    static constexpr int kMaxWorkers = 256;

    void run() override
    {
        platform::raiseToUserInitiated();
        m_queue.take()();
    }

    WorkQueue m_queue;
    QThreadPool m_pool;
};

/// Work for the main thread; an event for each piece only wakes it.
class MainThreadInbox : public QObject {
public:
    MainThreadInbox() { moveToThread(qApp->thread()); }

    void post(std::function<void()> work)
    {
        m_queue.put(std::move(work));
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }

protected:
    void customEvent(QEvent *) override { m_queue.take()(); }

private:
    WorkQueue m_queue;
};

// Neither is ever destroyed: a worker that waits for a slow program may outlive main().
Workers &workers()
{
    static Workers &instance = *new Workers;
    return instance;
}

MainThreadInbox &inbox()
{
    static MainThreadInbox &instance = *new MainThreadInbox;
    return instance;
}

} // namespace

void startOnWorker(std::function<void()> work)
{
    inbox(); // Its first use has to come while the application exists.
    workers().start(std::move(work));
}

void postToMainThread(std::function<void()> work) { inbox().post(std::move(work)); }

bool waitForWorkers(std::chrono::milliseconds limit) { return workers().waitUntilIdle(limit); }

} // namespace corvane
