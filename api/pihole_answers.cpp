#include "api/pihole_answers.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

std::unexpected<PiholeAPIError> badResponse() { return std::unexpected(PiholeAPIError::badResponse()); }

std::unexpected<PiholeAPIError> unauthorized() { return std::unexpected(PiholeAPIError::unauthorized()); }

bool canTravelInHeader(const QString &text)
{
    return std::ranges::all_of(text, [](QChar c) { return c > u' ' && c < u'\x7f'; });
}

} // namespace

std::optional<QJsonObject> objectIn(const QByteArray &json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject()) return std::nullopt;
    return document.object();
}

std::optional<double> number(const QJsonValue &value)
{
    if (!value.isDouble() || !std::isfinite(value.toDouble())) return std::nullopt;
    return value.toDouble();
}

std::optional<qint64> wholeNumber(const QJsonValue &value)
{
    // The first double above the largest qint64; everything from there on has no integer to become.
    constexpr double kTooLarge = 9223372036854775808.0;
    const std::optional<double> given = number(value);
    if (!given || *given >= kTooLarge || *given < -kTooLarge) return std::nullopt;
    return static_cast<qint64>(*given);
}

std::expected<QString, PiholeAPIError> parseLogin(const QByteArray &json)
{
    const std::optional<QJsonObject> answer = objectIn(json);
    if (!answer || !answer->value(u"session").isObject()) return badResponse();
    const QJsonObject session = answer->value(u"session").toObject();
    const QString sid = session.value(u"sid").toString();
    if (!session.value(u"valid").toBool() || sid.isEmpty()) return unauthorized();
    if (!canTravelInHeader(sid)) return badResponse();
    return sid;
}

std::expected<PiholeSummary, PiholeAPIError> parseSummary(const QByteArray &json)
{
    const std::optional<QJsonObject> answer = objectIn(json);
    if (!answer) return badResponse();
    const QJsonObject queries = answer->value(u"queries").toObject();
    const std::optional<qint64> total = wholeNumber(queries.value(u"total"));
    const std::optional<qint64> blocked = wholeNumber(queries.value(u"blocked"));
    const std::optional<double> percent = number(queries.value(u"percent_blocked"));
    if (!total || !blocked || !percent) return badResponse();
    const QJsonValue gravity = answer->value(u"gravity");
    return PiholeSummary{*total, *blocked, *percent, wholeNumber(gravity[u"domains_being_blocked"]),
                         wholeNumber(gravity[u"last_update"])};
}

std::expected<PiholeBlocking, PiholeAPIError> parseBlocking(const QByteArray &json)
{
    const std::optional<QJsonObject> answer = objectIn(json);
    if (!answer || !answer->value(u"blocking").isString()) return badResponse();
    return PiholeBlocking{answer->value(u"blocking").toString() == u"enabled", number(answer->value(u"timer"))};
}

std::expected<QList<PiholeQuery>, PiholeAPIError> parseQueries(const QByteArray &json)
{
    const std::optional<QJsonObject> answer = objectIn(json);
    if (!answer || !answer->value(u"queries").isArray()) return badResponse();
    QList<PiholeQuery> queries;
    const QJsonArray entries = answer->value(u"queries").toArray();
    for (const QJsonValue entry : entries) {
        // One odd entry does not make the others unreadable.
        if (!entry[u"domain"].isString() || !entry[u"status"].isString()) continue;
        queries.append({entry[u"domain"].toString(), entry[u"status"].toString(), number(entry[u"time"]).value_or(0),
                        entry[u"cname"].toString(), wholeNumber(entry[u"list_id"])});
    }
    if (queries.isEmpty() && !entries.isEmpty()) return badResponse();
    return queries;
}

std::expected<bool, PiholeAPIError> parseRestored(const QByteArray &json)
{
    const QJsonValue files = QJsonDocument::fromJson(json)[u"files"];
    return !files.isArray() || !files.toArray().isEmpty();
}

std::expected<int, PiholeAPIError> parsePrivacyLevel(const QByteArray &json)
{
    const QJsonValue level = QJsonDocument::fromJson(json)[u"ftl"][u"privacy_level"];
    if (!level.isDouble()) return badResponse();
    return level.toInt();
}

QByteArray loginBody(const QString &password)
{
    return QJsonDocument(QJsonObject{{QStringLiteral("password"), password}}).toJson(QJsonDocument::Compact);
}

QByteArray blockingBody(bool enabled, std::optional<int> timerSeconds)
{
    QJsonObject body{{QStringLiteral("blocking"), enabled}};
    if (timerSeconds) body.insert(u"timer", *timerSeconds);
    return QJsonDocument(body).toJson(QJsonDocument::Compact);
}

} // namespace corvane
