#include "remote/status_facts.h"

#include <cmath>

namespace corvane::remote {

namespace {

QString colour(MenuIcon icon)
{
    switch (icon) {
    case MenuIcon::Active:
        return QStringLiteral("green");
    case MenuIcon::NotUsed:
        return QStringLiteral("orange");
    case MenuIcon::NotAnswering:
        return QStringLiteral("red");
    default:
        return QStringLiteral("gray");
    }
}

/// Null where Pi-hole has not told.
QJsonValue blocking(const std::optional<PiholeBlocking> &state)
{
    if (!state) return QJsonValue::Null;
    if (state->enabled) return QStringLiteral("on");
    return state->timerSeconds ? QStringLiteral("paused") : QStringLiteral("off");
}

QJsonValue secondsLeft(const std::optional<PiholeBlocking> &state)
{
    if (!state || state->enabled || !state->timerSeconds) return QJsonValue::Null;
    return std::ceil(*state->timerSeconds);
}

} // namespace

Answer statusOf(const AppModel &app)
{
    const auto counters = app.summary();
    QJsonObject facts{{QStringLiteral("running"), true},
                      {QStringLiteral("text"), app.statusLine()},
                      {QStringLiteral("dot"), colour(app.icon())},
                      {QStringLiteral("checked"), app.statusChecked()},
                      {QStringLiteral("answering"), app.answering()},
                      {QStringLiteral("usedByMac"), app.usedByMac()},
                      {QStringLiteral("blocking"), blocking(app.blocking())},
                      {QStringLiteral("pauseSecondsLeft"), secondsLeft(app.blocking())},
                      {QStringLiteral("queriesToday"), QJsonValue::Null},
                      {QStringLiteral("blockedToday"), QJsonValue::Null}};
    if (counters) {
        facts[QStringLiteral("queriesToday")] = qint64(counters->total);
        facts[QStringLiteral("blockedToday")] = qint64(counters->blocked);
    }
    return {static_cast<int>(app.icon()), app.statusLine(), facts};
}

} // namespace corvane::remote
