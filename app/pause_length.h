#pragma once

#include <QDateTime>
#include <QObject>

#include <chrono>

namespace corvane {

/// For how long blocking can be paused.
class PauseLength : public QObject {
    Q_OBJECT

public:
    enum Name { HalfMinute, FiveMinutes, OneHour, UntilMorning };
    Q_ENUM(Name)

    [[nodiscard]] static std::chrono::seconds of(Name name, const QDateTime &now);
    /// What is said once it has begun.
    [[nodiscard]] static QString sentence(Name name);
    [[nodiscard]] static QString sentence(std::chrono::seconds length);
    /// Whether its end is a time of the day, which comes also while the Mac sleeps.
    [[nodiscard]] static bool goesByTheClock(Name name) { return name == UntilMorning; }
};

} // namespace corvane
