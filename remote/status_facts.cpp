#include "remote/status_facts.h"

#include "app/light.h"

#include <cmath>

namespace corvane::remote {

namespace {

QString colour(Light light)
{
    switch (light) {
    case Light::Green:
        return QStringLiteral("green");
    case Light::Orange:
        return QStringLiteral("orange");
    case Light::Red:
        return QStringLiteral("red");
    case Light::Gray:
        break;
    }
    return QStringLiteral("gray");
}

/// Null where Pi-hole has not said.
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
                      {QStringLiteral("dot"), colour(lightOf(app.icon()))},
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
