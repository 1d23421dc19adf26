#include "ui/decisions/dashboard_texts.h"

#include "app/light.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

namespace corvane {

namespace {

const QString kNothing = QStringLiteral("-");
constexpr double kMostMinutes = 1e15; // A timer may hold any number; no integer holds more than some.

/// As printf rounds, which of two equally near numbers takes the even one. QString takes the larger.
QString oneDecimal(double number)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(1) << number;
    return QString::fromStdString(text.str());
}

} // namespace

QList<Row> counterRows(const std::optional<PiholeSummary> &summary, const std::optional<PiholeBlocking> &blocking)
{
    const auto counter = [&summary](const char *id, const QString &name, auto text) {
        return Row{QString::fromLatin1(id), {}, name, summary ? text(*summary) : kNothing};
    };
    return {
        counter("queries", QStringLiteral("Queries"), [](const auto &today) { return QString::number(today.total); }),
        counter("blocked", QStringLiteral("Blocked"), [](const auto &today) { return QString::number(today.blocked); }),
        counter("blockedPercent", QStringLiteral("Blocked %"),
                [](const auto &today) { return oneDecimal(today.percentBlocked) + u'%'; }),
        {QStringLiteral("blocking"), {}, QStringLiteral("Blocking"), blockingText(blocking)},
    };
}

QString blockingText(const std::optional<PiholeBlocking> &blocking)
{
    if (!blocking) return kNothing;
    if (blocking->enabled) return QStringLiteral("On");
    if (!blocking->timerSeconds) return QStringLiteral("Off");
    // A started minute counts whole, so that a pause never reads as 0 minutes.
    const double whole = std::clamp(*blocking->timerSeconds / 60, 0.0, kMostMinutes);
    const auto minutes = static_cast<qint64>(whole) + 1;
    return QStringLiteral("Paused (%1 min left)").arg(minutes);
}

QString pauseLabel(const std::optional<PiholeBlocking> &blocking)
{
    const bool off = blocking && !blocking->enabled;
    return off ? QStringLiteral("Resume blocking") : QStringLiteral("Pause blocking 5 minutes");
}

QString logTrouble(const QString &apiMessage)
{
    return apiMessage.startsWith(QLatin1String("Could not save the log")) ? apiMessage : QString();
}

QString startStopLabel(const ContainerState &container)
{
    return container.isRunning() ? QStringLiteral("Stop Pi-hole") : QStringLiteral("Start Pi-hole");
}

Tint::Name dotTint(MenuIcon icon)
{
    switch (lightOf(icon)) {
    case Light::Green:
        return Tint::Green;
    case Light::Orange:
        return Tint::Orange;
    case Light::Red:
        return Tint::Red;
    case Light::Gray:
        break;
    }
    return Tint::Gray;
}

} // namespace corvane
