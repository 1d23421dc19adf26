#include "ui/decisions/dashboard_texts.h"

namespace corvane {

namespace {

const QString kNothing = QStringLiteral("-");

} // namespace

QString queriesText(const std::optional<PiholeSummary> &summary)
{
    return summary ? QString::number(summary->total) : kNothing;
}

QString blockedText(const std::optional<PiholeSummary> &summary)
{
    return summary ? QString::number(summary->blocked) : kNothing;
}

QString blockedPercentText(const std::optional<PiholeSummary> &summary)
{
    return summary ? QString::number(summary->percentBlocked, 'f', 1) + u'%' : kNothing;
}

QString blockingText(const std::optional<PiholeBlocking> &blocking)
{
    if (!blocking) return kNothing;
    if (blocking->enabled) return QStringLiteral("On");
    if (!blocking->timerSeconds) return QStringLiteral("Off");
    // A started minute counts whole, so that a pause never reads as 0 minutes.
    const auto minutes = static_cast<qint64>(*blocking->timerSeconds / 60) + 1;
    return QStringLiteral("Paused (%1 min left)").arg(minutes);
}

QString pauseLabel(const std::optional<PiholeBlocking> &blocking)
{
    const bool off = blocking && !blocking->enabled;
    return off ? QStringLiteral("Resume blocking") : QStringLiteral("Pause blocking 5 minutes");
}

QString startStopLabel(const ContainerState &container)
{
    return container.isRunning() ? QStringLiteral("Stop Pi-hole") : QStringLiteral("Start Pi-hole");
}

Tint::Name dotTint(MenuIcon icon)
{
    switch (icon) {
    case MenuIcon::Active:
        return Tint::Green;
    case MenuIcon::NotUsed:
        return Tint::Orange;
    case MenuIcon::NotAnswering:
        return Tint::Red;
    case MenuIcon::Stopped:
    case MenuIcon::Unknown:
        break;
    }
    return Tint::Gray;
}

} // namespace corvane
