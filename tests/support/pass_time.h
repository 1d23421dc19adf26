#pragma once

#include <QEventLoop>
#include <QTimer>

namespace corvane::test {

/// Runs the event loop for so many milliseconds, asleep while nothing happens.
inline void passTime(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace corvane::test
