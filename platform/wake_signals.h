#pragma once

#include <QObject>
#include <QTimer>

#include <memory>

namespace corvane {

/// Tells when what Corvane last read about this Mac may be out of date: it woke from sleep or its network changed.
class WakeSignals : public QObject {
    Q_OBJECT

public:
    WakeSignals();

Q_SIGNALS:
    /// Comes once for a burst of changes, soon enough that a refresh starts within a second.
    void woke();

protected:
    /// Called by the system's half for every single change.
    void noticeChange();

private:
    QTimer m_burst;
};

/// The signals of this system.
[[nodiscard]] std::unique_ptr<WakeSignals> systemWakeSignals();

} // namespace corvane
