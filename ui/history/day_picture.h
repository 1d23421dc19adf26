#pragma once

#include "api/pihole_history.h"
#include "app/day_record.h"

#include <QMap>
#include <QTimeZone>

#include <optional>

namespace corvane {

/// The 24 hours that are shown: whole slots, of which the last is the running one. In seconds since 1970.
struct DayWindow {
    static constexpr int kSlots = 144;

    qint64 from = 0;
    qint64 until = 0;
    qint64 now = 0;

    [[nodiscard]] static DayWindow at(qint64 now);
    [[nodiscard]] qint64 slotStart(int slot) const { return from + slot * PiholeSlot::kSeconds; }

    bool operator==(const DayWindow &) const = default;
};

/// The questions of ten minutes, without Corvane's own.
struct DayBar {
    qint64 allowed = 0;
    qint64 blocked = 0;

    bool operator==(const DayBar &) const = default;
};

/// How the picture words times of day.
struct LocalTime {
    QTimeZone zone;
    bool twelveHours = false;

    /// As this Mac's user is used to.
    [[nodiscard]] static LocalTime ofThisMac();
    /// "14:20" or "2:20 PM".
    [[nodiscard]] QString clock(qint64 time) const;
    /// "14:00" or "2 PM".
    [[nodiscard]] QString hour(qint64 time) const;
};

/// A mark of the axis.
struct HourTick {
    qint64 time = 0;
    QString label;

    bool operator==(const HourTick &) const = default;
};

/// Neighbouring columns of the band that show the same.
struct BandPiece {
    int column = 0;
    int columns = 0;
    Protection state = Protection::Unknown;

    bool operator==(const BandPiece &) const = default;
};

/// How long each lasted, in seconds.
using ProtectionTimes = QMap<Protection, qint64>;

/// One bar for each slot of the window.
[[nodiscard]] QList<DayBar> dayBars(const DayWindow &window, const PiholeHistory &history, const DayRecord &record);
/// The round number at which the axis of the bars ends. Its half is a whole number.
[[nodiscard]] qint64 axisTop(const QList<DayBar> &bars);
/// Round hours, at least `smallestGap` seconds from one another and from the end of the axis.
[[nodiscard]] QList<HourTick> hourTicks(const DayWindow &window, qint64 smallestGap, const LocalTime &local);
/// The band in so many columns. Where several states meet in a column the worst one shows, however short it was.
[[nodiscard]] QList<BandPiece> bandPieces(const DayWindow &window, const QList<DaySpan> &spans, int columns);
[[nodiscard]] ProtectionTimes timesBetween(const QList<DaySpan> &spans, qint64 from, qint64 until);
/// How many of the questions that Pi-hole counted in the window were Corvane's own.
[[nodiscard]] qint64 ownQuestions(const DayWindow &window, const DayRecord &record);

} // namespace corvane
