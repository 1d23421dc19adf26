#include "ui/history/day_picture.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <array>

namespace corvane {

namespace {

constexpr qint64 kHour = 3600;
constexpr qint64 kLowestTop = 10;

/// The worse, the higher.
int weight(Protection state)
{
    switch (state) {
    case Protection::Unknown:
        return 0;
    case Protection::Asleep:
        return 1;
    case Protection::Protected:
        return 2;
    case Protection::NotUsed:
        return 3;
    case Protection::NotBlocking:
        return 4;
    case Protection::Backup:
        return 5;
    case Protection::Down:
        break;
    }
    return 6;
}

QDateTime localTime(qint64 time, const QTimeZone &zone) { return QDateTime::fromSecsSinceEpoch(time, zone); }

/// The smallest step between hours that is not shorter than the gap and divides a day.
int hourStep(qint64 smallestGap)
{
    constexpr std::array<int, 7> kSteps{1, 2, 3, 4, 6, 8, 12};
    const auto step = std::ranges::find_if(kSteps, [smallestGap](int hours) { return hours * kHour >= smallestGap; });
    return step == kSteps.end() ? 24 : *step;
}

} // namespace

DayWindow DayWindow::at(qint64 now)
{
    const qint64 until = (now / PiholeSlot::kSeconds + 1) * PiholeSlot::kSeconds;
    return {until - kSlots * PiholeSlot::kSeconds, until, now};
}

LocalTime LocalTime::ofThisMac()
{
    return {QTimeZone::systemTimeZone(), QLocale::system().timeFormat(QLocale::ShortFormat).contains(u'A')};
}

QString LocalTime::clock(qint64 time) const
{
    const QString format = twelveHours ? QStringLiteral("h:mm AP") : QStringLiteral("HH:mm");
    return QLocale::c().toString(localTime(time, zone), format);
}

QString LocalTime::hour(qint64 time) const
{
    return QLocale::c().toString(localTime(time, zone), twelveHours ? QStringLiteral("h AP") : QStringLiteral("HH:mm"));
}

QList<DayBar> dayBars(const DayWindow &window, const PiholeHistory &history, const DayRecord &record)
{
    QList<DayBar> bars(DayWindow::kSlots);
    for (const PiholeSlot &slot : history) {
        if (slot.start < window.from || slot.start >= window.until) continue;
        const OwnQuestions own = record.ownIn(slot.start);
        // A Pi-hole that was killed has forgotten some of what Corvane still counts.
        const qint64 blocked = std::max<qint64>(0, slot.blocked - own.blocked);
        const qint64 allowed = std::max<qint64>(0, slot.total - slot.blocked - (own.asked - own.blocked));
        bars[(slot.start - window.from) / PiholeSlot::kSeconds] = {allowed, blocked};
    }
    return bars;
}

qint64 axisTop(const QList<DayBar> &bars)
{
    qint64 most = 0;
    for (const DayBar &bar : bars)
        most = std::max(most, bar.allowed + bar.blocked);
    for (qint64 unit = kLowestTop; unit < most * 10 + kLowestTop + 1; unit *= 10)
        for (const qint64 times : {1, 2, 4, 6, 8})
            if (unit * times >= most) return unit * times;
    return most;
}

QList<HourTick> hourTicks(const DayWindow &window, qint64 smallestGap, const LocalTime &local)
{
    QList<HourTick> ticks;
    const int step = hourStep(smallestGap);
    // Quarters of an hour, because some zones are off by one.
    constexpr qint64 kQuarter = kHour / 4;
    for (qint64 time = (window.from + kQuarter - 1) / kQuarter * kQuarter; time + smallestGap <= window.until;
         time += kQuarter) {
        const QTime shown = localTime(time, local.zone).time();
        const bool round = shown.minute() == 0 && shown.hour() % step == 0;
        // The hour that a change of the clocks repeats is marked once.
        if (round && (ticks.isEmpty() || time - ticks.last().time >= smallestGap))
            ticks << HourTick{time, local.hour(time)};
    }
    return ticks;
}

QList<BandPiece> bandPieces(const DayWindow &window, const QList<DaySpan> &spans, int columns)
{
    QList<Protection> shown(std::max(columns, 0), Protection::Unknown);
    const auto columnAt = [&](qint64 time) { return (time - window.from) * columns / (window.until - window.from); };
    for (const DaySpan &span : spans) {
        const qint64 start = std::max(span.start, window.from);
        const qint64 end = std::min(span.end, window.now);
        if (start >= end) continue;
        for (qint64 column = columnAt(start); column <= columnAt(end - 1) && column < columns; ++column)
            if (weight(span.state) > weight(shown.at(column))) shown[column] = span.state;
    }
    QList<BandPiece> pieces;
    for (int column = 0; column < columns; ++column) {
        if (pieces.isEmpty() || pieces.last().state != shown.at(column))
            pieces << BandPiece{column, 0, shown.at(column)};
        ++pieces.last().columns;
    }
    pieces.removeIf([](const BandPiece &piece) { return piece.state == Protection::Unknown; });
    return pieces;
}

ProtectionTimes timesBetween(const QList<DaySpan> &spans, qint64 from, qint64 until)
{
    ProtectionTimes times;
    for (const DaySpan &span : spans) {
        const qint64 seconds = std::min(span.end, until) - std::max(span.start, from);
        if (seconds > 0) times[span.state] += seconds;
    }
    return times;
}

qint64 ownQuestions(const DayWindow &window, const DayRecord &record)
{
    qint64 own = 0;
    for (int slot = 0; slot < DayWindow::kSlots; ++slot)
        own += record.ownIn(window.slotStart(slot)).asked;
    return own;
}

} // namespace corvane
