#include "ui/decisions/lists_texts.h"

#include <QLocale>

#include <algorithm>

namespace corvane {

namespace {

constexpr qint64 kMinute = 60;
constexpr qint64 kHour = 60 * kMinute;
constexpr qint64 kDay = 24 * kHour;
/// Pi-hole refreshes its lists once a week, if the Mac is awake then.
constexpr qint64 kOld = 8 * kDay;

QString counted(qint64 number, const char *unit)
{
    if (number == 1) return QStringLiteral("one %1 ago").arg(QLatin1String(unit));
    return QStringLiteral("%1 %2s ago").arg(number).arg(QLatin1String(unit));
}

/// Pi-hole's clock may be a little ahead.
qint64 ageOf(qint64 listsRun, const QDateTime &now) { return std::max<qint64>(0, now.toSecsSinceEpoch() - listsRun); }

QString ageText(qint64 age)
{
    if (age < 2 * kMinute) return QStringLiteral("just now");
    if (age < 2 * kHour) return counted(age / kMinute, "minute");
    return age < 2 * kDay ? counted(age / kHour, "hour") : counted(age / kDay, "day");
}

} // namespace

QString listsText(const std::optional<PiholeSummary> &summary, const QDateTime &now)
{
    if (!summary || !summary->domainsBlocked) return QStringLiteral("Pi-hole has not told about its lists yet.");
    const qint64 names = std::max<qint64>(0, *summary->domainsBlocked);
    const QString count = names == 1 ? QStringLiteral("One blocked name")
                                     : QLocale(QLocale::English).toString(names) + QStringLiteral(" blocked names");
    if (!summary->listsRun) return count + u'.';
    if (*summary->listsRun <= 0) return count + QStringLiteral(", never refreshed.");
    return QStringLiteral("%1, refreshed %2.").arg(count, ageText(ageOf(*summary->listsRun, now)));
}

QString listsHint(const std::optional<PiholeSummary> &summary, const QDateTime &now)
{
    if (!summary || summary->listsRun.value_or(0) <= 0) return {};
    if (ageOf(*summary->listsRun, now) <= kOld) return {};
    return QStringLiteral("The lists are more than 8 days old. Pi-hole refreshes them by itself early on Sundays, if "
                          "this Mac is awake then. You can do it now.");
}

} // namespace corvane
