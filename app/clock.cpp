#include "app/clock.h"

#include "app/completion.h"

#include <QTimer>

#include <algorithm>

namespace corvane {

SystemClock::SystemClock() = default;

SystemClock::~SystemClock()
{
    const auto sleepers = std::exchange(m_sleepers, {});
    for (const auto &sleeper : sleepers)
        sleeper->complete(false);
}

QCoro::Task<> SystemClock::pause(Duration time)
{
    const auto sleeper = std::make_shared<Completion<bool>>();
    m_sleepers.push_back(sleeper);
    QTimer::singleShot(time, Qt::PreciseTimer, this, [this, sleeper] {
        std::erase(m_sleepers, sleeper);
        sleeper->complete(true);
    });
    static_cast<void>(co_await sleeper->wait());
}

} // namespace corvane
