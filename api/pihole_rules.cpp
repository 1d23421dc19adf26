#include "api/pihole_rules.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

#include <algorithm>
#include <array>

namespace corvane {

namespace {

std::unexpected<PiholeAPIError> badResponse() { return std::unexpected(PiholeAPIError::badResponse()); }

struct KindName {
    PiholeRule::Kind kind;
    QLatin1StringView type;
    QLatin1StringView form;
};

constexpr std::array kKinds{
    KindName{PiholeRule::Kind::AllowedName, QLatin1StringView("allow"), QLatin1StringView("exact")},
    KindName{PiholeRule::Kind::AllowedPattern, QLatin1StringView("allow"), QLatin1StringView("regex")},
    KindName{PiholeRule::Kind::DeniedName, QLatin1StringView("deny"), QLatin1StringView("exact")},
    KindName{PiholeRule::Kind::DeniedPattern, QLatin1StringView("deny"), QLatin1StringView("regex")},
};

bool isWhole(const QJsonValue &rule)
{
    return rule[u"domain"].isString() && rule[u"enabled"].isBool() && rule[u"type"].isString() &&
           rule[u"kind"].isString();
}

std::optional<PiholeRule> ruleIn(const QJsonValue &rule)
{
    const auto kind = std::ranges::find_if(kKinds, [&rule](const KindName &each) {
        return rule[u"type"].toString() == each.type && rule[u"kind"].toString() == each.form;
    });
    if (kind == kKinds.end()) return std::nullopt;
    return PiholeRule{kind->kind, rule[u"domain"].toString(), rule[u"comment"].toString(), rule[u"enabled"].toBool(),
                      rule[u"id"].toInteger()};
}

} // namespace

QByteArray rulesPath(PiholeRule::Kind kind)
{
    const auto *known = std::ranges::find(kKinds, kind, &KindName::kind);
    return kAllRules + QByteArray("/") + known->type.data() + "/" + known->form.data();
}

QByteArray rulePath(PiholeRule::Kind kind, const QString &domain)
{
    return rulesPath(kind) + "/" + QUrl::toPercentEncoding(domain);
}

QByteArray ruleBody(const PiholeRule &rule)
{
    const QJsonObject body{{QStringLiteral("domain"), rule.domain},
                           {QStringLiteral("comment"), rule.comment},
                           {QStringLiteral("enabled"), rule.enabled}};
    return QJsonDocument(body).toJson(QJsonDocument::Compact);
}

std::expected<QList<PiholeRule>, PiholeAPIError> parseRules(const QByteArray &json)
{
    const QJsonValue domains = QJsonDocument::fromJson(json)[u"domains"];
    if (!domains.isArray()) return badResponse();
    QList<PiholeRule> rules;
    for (const QJsonValue each : domains.toArray()) {
        if (!isWhole(each)) return badResponse();
        if (const auto rule = ruleIn(each)) rules.append(*rule);
    }
    return rules;
}

std::expected<std::optional<PiholeRule>, PiholeAPIError> parseRule(const QByteArray &json)
{
    const auto rules = parseRules(json);
    if (!rules) return std::unexpected(rules.error());
    if (rules->isEmpty()) return std::nullopt;
    return rules->first();
}

std::expected<bool, PiholeAPIError> parseRuleAdded(const QByteArray &json)
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
