#pragma once

#include <QCoro/QCoroTask>
#include <QDateTime>
#include <QObject>

#include <chrono>
#include <memory>
#include <vector>

namespace corvane {

template <class T>
class Completion;

/// The one clock that flows wait on.
class Clock {
public:
    using Duration = std::chrono::milliseconds;
    using Instant = std::chrono::steady_clock::time_point;

    virtual ~Clock() = default;

    [[nodiscard]] virtual Instant now() const = 0;
    /// What a clock on the wall shows. It goes on while the Mac sleeps, and somebody may set it.
    [[nodiscard]] virtual QDateTime wallTime() const = 0;
    /// Resumes after the time has passed, or at once when the clock goes away.
    [[nodiscard]] virtual QCoro::Task<> pause(Duration time) = 0;
};

/// Real time, by the event loop's timers.
class SystemClock final : public QObject, public Clock {
    Q_OBJECT

public:
    SystemClock();
    ~SystemClock() override;

    [[nodiscard]] Instant now() const override { return std::chrono::steady_clock::now(); }
    [[nodiscard]] QDateTime wallTime() const override { return QDateTime::currentDateTime(); }
    [[nodiscard]] QCoro::Task<> pause(Duration time) override;

private:
    std::vector<std::shared_ptr<Completion<bool>>> m_sleepers;
};

} // namespace corvane
