#include "app/pause_length.h"

namespace corvane {

namespace {

const QTime kMorning(7, 0);
/// Who is still awake takes the coming morning for tomorrow's.
const QTime kNightEnds(4, 0);

} // namespace

std::chrono::seconds PauseLength::of(Name name, const QDateTime &now)
{
    switch (name) {
    case HalfMinute:
        return std::chrono::seconds(30);
    case FiveMinutes:
        return std::chrono::minutes(5);
    case OneHour:
        return std::chrono::hours(1);
    case UntilMorning:
        break;
    }
    const QDate day = now.time() < kNightEnds ? now.date() : now.date().addDays(1);
    return std::chrono::seconds(now.secsTo(QDateTime(day, kMorning)));
}

QString PauseLength::sentence(Name name)
{
    switch (name) {
    case HalfMinute:
        return QStringLiteral("Blocking is paused for 30 seconds.");
    case FiveMinutes:
        return QStringLiteral("Blocking is paused for 5 minutes.");
    case OneHour:
        return QStringLiteral("Blocking is paused for 1 hour.");
    case UntilMorning:
        break;
    }
    return QStringLiteral("Blocking is paused until tomorrow morning, %1.")
        .arg(kMorning.toString(QStringLiteral("HH:mm")));
}

} // namespace corvane
