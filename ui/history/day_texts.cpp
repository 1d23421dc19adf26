#include "ui/history/day_texts.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace corvane {

namespace {

constexpr int kSlotsInAnHour = 6;

QString counted(qint64 number) { return QLocale(QLocale::English).toString(number); }

QString questions(qint64 number)
{
    return number == 1 ? QStringLiteral("1 question") : counted(number) + QStringLiteral(" questions");
}

/// The part of a sentence that says how long something lasted.
QString part(Protection state, const QString &time)
{
    switch (state) {
    case Protection::Protected:
        return QStringLiteral("protected ") + time;
    case Protection::NotBlocking:
        return time + QStringLiteral(" without blocking");
    case Protection::Backup:
        return time + QStringLiteral(" on the backup");
    case Protection::Down:
        return time + QStringLiteral(" without any answer");
    case Protection::NotUsed:
        return time + QStringLiteral(" without Pi-hole");
    case Protection::Asleep:
        return time + QStringLiteral(" asleep");
    case Protection::Unknown:
        break;
    }
    return {};
}

QString asSentence(QString text)
{
    if (text.isEmpty()) return text;
    text[0] = text.at(0).toUpper();
    return text + u'.';
}

} // namespace

QString durationText(qint64 seconds)
{
    const qint64 minutes = (seconds + 30) / 60;
    if (seconds < 60) return QStringLiteral("under 1 min");
    if (minutes < 60) return QStringLiteral("%1 min").arg(minutes);
    const QString hours = QStringLiteral("%1 h").arg(minutes / 60);
    return minutes % 60 == 0 ? hours : hours + QStringLiteral(" %1 min").arg(minutes % 60);
}

QString protectionLabel(Protection state)
{
    switch (state) {
    case Protection::Protected:
        return QStringLiteral("Protected");
    case Protection::NotBlocking:
        return QStringLiteral("Not blocking");
    case Protection::Backup:
        return QStringLiteral("On the backup");
    case Protection::Down:
        return QStringLiteral("No answer");
    case Protection::NotUsed:
        return QStringLiteral("Pi-hole not used");
    case Protection::Asleep:
        return QStringLiteral("Asleep");
    case Protection::Unknown:
        break;
    }
    return {};
}

QString protectionText(const ProtectionTimes &times)
{
    QStringList parts;
    for (const Protection state : {Protection::Protected, Protection::Backup, Protection::Down, Protection::NotBlocking,
                                   Protection::NotUsed, Protection::Asleep})
        if (times.value(state) > 0) parts << part(state, durationText(times.value(state)));
    return asSentence(parts.join(QStringLiteral(", ")));
}

QString dayText(const DayWindow &window, const QList<DayBar> &bars, const LocalTime &local)
{
    const auto asked = [](const DayBar &bar) { return bar.allowed + bar.blocked > 0; };
    const auto first = std::ranges::find_if(bars, asked);
    if (first == bars.end()) return QStringLiteral("Nothing has been asked in the last 24 hours.");
    qint64 allowed = 0;
    qint64 blocked = 0;
    for (const DayBar &bar : bars) {
        allowed += bar.allowed;
        blocked += bar.blocked;
    }
    const auto slot = static_cast<int>(first - bars.begin());
    const QString since = slot < kSlotsInAnHour ? QStringLiteral("in the last 24 hours")
                                                : QStringLiteral("since ") + local.clock(window.slotStart(slot));
    const double share = 100.0 * static_cast<double>(blocked) / static_cast<double>(allowed + blocked);
    return QStringLiteral("%1 %2, %3 blocked (%4 %).")
        .arg(questions(allowed + blocked), since, counted(blocked), QString::number(share, 'f', 1));
}

QString slotText(const DayWindow &window, int slot, const DayBar &bar, const QList<DaySpan> &spans,
                 const LocalTime &local)
{
    const qint64 start = window.slotStart(slot);
    const qint64 end = start + PiholeSlot::kSeconds;
    const QString until = end > window.now ? QStringLiteral("now") : local.clock(end);
    const QString text = QStringLiteral("%1 to %2: %3 allowed, %4 blocked.")
                             .arg(local.clock(start), until, counted(bar.allowed), counted(bar.blocked));
    const QString protection = protectionText(timesBetween(spans, start, std::min(end, window.now)));
    return protection.isEmpty() ? text : text + u' ' + protection;
}

QString ownText(qint64 own)
{
    if (own <= 0) return {};
    return QStringLiteral("Corvane's own questions are left out as far as it counted them: %1.").arg(counted(own));
}

QString missingText(const DaySource &source)
{
    if (source.read) return {};
    if (source.answering && source.problem.isEmpty()) return QStringLiteral("Reading what was asked...");
    if (!source.checked) return {};
    return QStringLiteral("What was asked can be shown once Pi-hole answers.");
}

QString staleText(const DaySource &source)
{
    if (!source.read || !source.checked) return {};
    if (!source.answering) return QStringLiteral("Pi-hole does not answer. What it had counted before is still shown.");
    if (source.problem.isEmpty()) return {};
    return QStringLiteral("The picture is not up to date. ") + source.problem;
}

QString missingNamesText(const std::optional<PiholeTopBlocked> &top)
{
    if (!top) return {};
    if (top->hidden) return QStringLiteral("Pi-hole shows no names (its privacy level).");
    return top->names.isEmpty() ? QStringLiteral("Nothing has been blocked yet.") : QString();
}

} // namespace corvane
