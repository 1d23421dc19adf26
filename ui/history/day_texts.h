#pragma once

#include "ui/history/day_picture.h"

#include <QString>

namespace corvane {

/// "23 h 48 min"; what is shorter than a minute is "under 1 min".
[[nodiscard]] QString durationText(qint64 seconds);
/// What the band's legend calls it; empty for what is not known.
[[nodiscard]] QString protectionLabel(Protection state);
/// "Protected 23 h 48 min, 12 min on the backup."; empty when nothing is known.
[[nodiscard]] QString protectionText(const ProtectionTimes &times);
/// All bars in one sentence.
[[nodiscard]] QString dayText(const DayWindow &window, const QList<DayBar> &bars, const LocalTime &local);
/// One slot: when, how many, and how the Mac was protected.
[[nodiscard]] QString slotText(const DayWindow &window, int slot, const DayBar &bar, const QList<DaySpan> &spans,
                               const LocalTime &local);
/// That Corvane's own questions are left out; empty when there are none.
[[nodiscard]] QString ownText(qint64 own);

/// What is known about Pi-hole while there are no bars, or no new ones.
struct DaySource {
    bool checked = false;
    bool answering = false;
    /// The bars have been read.
    bool read = false;
    QString problem = {};
};
/// What is shown in the picture's place; empty when the bars speak for themselves.
[[nodiscard]] QString missingText(const DaySource &source);
/// What has to be known beside the bars; else empty.
[[nodiscard]] QString staleText(const DaySource &source);
/// What is shown in place of the names; empty while there are some.
[[nodiscard]] QString missingNamesText(const std::optional<PiholeTopBlocked> &top);

} // namespace corvane
