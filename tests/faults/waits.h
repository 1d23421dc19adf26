#pragma once

#include <QAbstractEventDispatcher>
#include <QTimer>

#include <functional>

namespace corvane::test {

/// Calls back at every moment at which Corvane has nothing left to do but to wait: at each await of a flow that is not
/// over at once. The call comes from the event loop, as a click does.
class Waits : public QObject {
public:
    explicit Waits(std::function<void(int)> callback)
        : m_callback(std::move(callback))
    {
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, [this] {
            if (m_calling) return;
            // The loop comes to rest once more because of the call itself.
            if (std::exchange(m_called, false)) return;
            m_calling = true;
            QTimer::singleShot(0, this, [this] {
                m_calling = false;
                m_called = true;
                m_callback(m_count++);
            });
        });
    }

    [[nodiscard]] int count() const { return m_count; }

private:
    std::function<void(int)> m_callback;
    int m_count = 0;
    bool m_calling = false;
    bool m_called = false;
};

} // namespace corvane::test
