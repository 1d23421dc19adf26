#pragma once

#include "api/pihole_types.h"

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>

#include <expected>
#include <optional>

namespace corvane {

// What Pi-hole's JSON answers mean. Whatever the bytes are, the result is a value or an error.

/// The session id that a login (status 200) gave.
[[nodiscard]] std::expected<QString, PiholeAPIError> parseLogin(const QByteArray &json);
[[nodiscard]] std::expected<PiholeSummary, PiholeAPIError> parseSummary(const QByteArray &json);
[[nodiscard]] std::expected<PiholeBlocking, PiholeAPIError> parseBlocking(const QByteArray &json);
[[nodiscard]] std::expected<QList<PiholeQuery>, PiholeAPIError> parseQueries(const QByteArray &json);
/// Whether an upload's answer names files that were taken from the archive; an answer that names none at all, not even
/// an empty list, is taken for a yes.
[[nodiscard]] std::expected<bool, PiholeAPIError> parseRestored(const QByteArray &json);

/// How much of the names Pi-hole hides in its log: 0 for nothing.
[[nodiscard]] std::expected<int, PiholeAPIError> parsePrivacyLevel(const QByteArray &json);

/// The object that an answer is; absent when it is anything else.
[[nodiscard]] std::optional<QJsonObject> objectIn(const QByteArray &json);
/// The value as a number; absent unless it is a finite JSON number.
[[nodiscard]] std::optional<double> number(const QJsonValue &value);
/// The same without its fraction; absent when no integer can hold it.
[[nodiscard]] std::optional<qint64> wholeNumber(const QJsonValue &value);

[[nodiscard]] QByteArray loginBody(const QString &password);
[[nodiscard]] QByteArray blockingBody(bool enabled, std::optional<int> timerSeconds);

} // namespace corvane
