#include "app/pause_length.h"

namespace corvane {

namespace {

const QTime kMorning(7, 0);
/// Who is still awake takes the coming morning for tomorrow's.
const QTime kNightEnds(4, 0);

QString inWords(qint64 seconds)
{
    const auto words = [](qint64 count, const char *unit) {
        return QStringLiteral("%1 %2%3").arg(count).arg(QLatin1String(unit),
                                                        count == 1 ? QString() : QStringLiteral("s"));
    };
    if (seconds % 3600 == 0) return words(seconds / 3600, "hour");
    return seconds % 60 == 0 ? words(seconds / 60, "minute") : words(seconds, "second");
}

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
    if (name != UntilMorning) return sentence(of(name, {}));
    return QStringLiteral("Blocking is paused until tomorrow morning, %1.")
        .arg(kMorning.toString(QStringLiteral("HH:mm")));
}

QString PauseLength::sentence(std::chrono::seconds length)
{
    return QStringLiteral("Blocking is paused for %1.").arg(inWords(length.count()));
}

} // namespace corvane
