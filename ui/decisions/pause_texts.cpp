#include "ui/decisions/pause_texts.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr int kHour = 3600;
constexpr int kMinute = 60;
/// A timer may hold any number.
constexpr double kMost = 359'999;

int wholeSeconds(double seconds) { return static_cast<int>(std::clamp(std::ceil(seconds), 0.0, kMost)); }

QString twoDigits(int number) { return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0')); }

QString counted(int number, const char *unit)
{
    const QString text = QStringLiteral("%1 %2").arg(number).arg(QLatin1String(unit));
    return number == 1 ? text : text + u's';
}

} // namespace

QString timeLeft(double seconds)
{
    const int left = wholeSeconds(seconds);
    const QString lower = twoDigits(left % kMinute);
    if (left < kHour) return QStringLiteral("%1:%2").arg(left / kMinute).arg(lower);
    return QStringLiteral("%1:%2:%3").arg(left / kHour).arg(twoDigits(left % kHour / kMinute), lower);
}

QString spokenTimeLeft(double seconds)
{
    const int left = wholeSeconds(seconds);
    QStringList parts;
    if (left >= kHour) parts << counted(left / kHour, "hour");
    if (left >= kMinute) parts << counted(left % kHour / kMinute, "minute");
    parts << counted(left % kMinute, "second");
    return parts.join(u' ');
}

} // namespace corvane
