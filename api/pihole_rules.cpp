#include "api/pihole_rules.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

namespace corvane {

namespace {

constexpr char kDenyRules[] = "/api/domains/deny/regex";

std::unexpected<PiholeAPIError> badResponse() { return std::unexpected(PiholeAPIError::badResponse()); }

} // namespace

QByteArray denyRulePath(const QString &expression)
{
    if (expression.isEmpty()) return kDenyRules;
    return kDenyRules + QByteArray("/") + QUrl::toPercentEncoding(expression);
}

QByteArray denyRuleBody(const PiholeRule &rule)
{
    const QJsonObject body{{QStringLiteral("domain"), rule.expression},
                           {QStringLiteral("comment"), rule.comment},
                           {QStringLiteral("enabled"), rule.enabled}};
    return QJsonDocument(body).toJson(QJsonDocument::Compact);
}

std::expected<std::optional<PiholeRule>, PiholeAPIError> parseDenyRule(const QByteArray &json)
{
    const QJsonValue rules = QJsonDocument::fromJson(json)[u"domains"];
    if (!rules.isArray()) return badResponse();
    if (rules.toArray().isEmpty()) return std::nullopt;
    const QJsonValue rule = rules[0];
    if (!rule[u"domain"].isString() || !rule[u"enabled"].isBool()) return badResponse();
    return PiholeRule{rule[u"domain"].toString(), rule[u"comment"].toString(), rule[u"enabled"].toBool()};
}

std::expected<bool, PiholeAPIError> parseDenyRuleAdded(const QByteArray &json)
{
    const QJsonValue processed = QJsonDocument::fromJson(json)[u"processed"];
    const QJsonValue errors = processed[u"errors"];
    if (!processed[u"success"].isArray() || !errors.isArray()) return badResponse();
    if (!processed[u"success"].toArray().isEmpty()) return true;
    const bool there = errors[0][u"error"].toString().contains(QLatin1String("UNIQUE"));
    if (!there) return badResponse();
    return false;
}

} // namespace corvane
