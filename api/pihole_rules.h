#pragma once

#include "api/pihole_types.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <expected>
#include <optional>

namespace corvane {

// The requests and answers about Pi-hole's own rules: names and regular expressions that it allows or denies.

/// The address of all rules.
inline constexpr char kAllRules[] = "/api/domains";
/// The address of the rules of one kind, or of one of them; what it is about is percent-encoded as a whole.
[[nodiscard]] QByteArray rulesPath(PiholeRule::Kind kind);
[[nodiscard]] QByteArray rulePath(PiholeRule::Kind kind, const QString &domain);
[[nodiscard]] QByteArray ruleBody(const PiholeRule &rule);

/// Rules of kinds that nobody knows are left out.
[[nodiscard]] std::expected<QList<PiholeRule>, PiholeAPIError> parseRules(const QByteArray &json);
/// The rule that was asked for; nothing when Pi-hole has none.
[[nodiscard]] std::expected<std::optional<PiholeRule>, PiholeAPIError> parseRule(const QByteArray &json);
/// Whether Pi-hole took the rule: false when it has one of that domain already. Pi-hole answers 201 to both.
[[nodiscard]] std::expected<bool, PiholeAPIError> parseRuleAdded(const QByteArray &json);

} // namespace corvane
