#pragma once

#include "exec/operation_runner.h"

#include <QQuickWindow>
#include <QTimer>

namespace corvane::bench {

/// Watches the window and the memory while an operation's lines arrive.
class LineWatch {
public:
    LineWatch(const OperationRunner &runner, QQuickWindow &window, int warmUpLines);

    /// Prints what it saw beside what is allowed; answers whether all of it keeps to that.
    [[nodiscard]] bool report() const;

private:
    void onLines(int appended);
    void onFrame();
    void weigh();

    const OperationRunner &m_runner;
    int m_warmUpLines;
    QObject m_context;
    QTimer m_scales;
    std::int64_t m_oldestUnshown = 0;
    std::int64_t m_latestLine = 0;
    double m_warmMemory = 0;
    double m_mostMemory = 0;
    int m_frames = 0;
};

} // namespace corvane::bench
