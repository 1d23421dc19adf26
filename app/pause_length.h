#pragma once

#include "app/pause.h"

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
    [[nodiscard]] static PauseEnd endedBy(Name name)
    {
        return name == UntilMorning ? PauseEnd::TheClock : PauseEnd::ItsLength;
    }
};

} // namespace corvane
