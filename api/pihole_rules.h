#pragma once

#include "api/pihole_types.h"

#include <QByteArray>
#include <QString>

#include <expected>
#include <optional>

namespace corvane {

// The requests and answers about Pi-hole's own denying rules (regular expressions).

/// Path of the rule; the expression is percent-encoded as a whole.
[[nodiscard]] QByteArray denyRulePath(const QString &expression);
[[nodiscard]] QByteArray denyRuleBody(const PiholeRule &rule);

/// The rule that was asked for; nothing when Pi-hole has none of that expression.
[[nodiscard]] std::expected<std::optional<PiholeRule>, PiholeAPIError> parseDenyRule(const QByteArray &json);
/// Whether Pi-hole took the rule: false when it has one of that expression already. Pi-hole answers 201 to both.
[[nodiscard]] std::expected<bool, PiholeAPIError> parseDenyRuleAdded(const QByteArray &json);

} // namespace corvane
