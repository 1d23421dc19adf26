#pragma once

#include <QByteArray>
#include <QList>

#include <chrono>
#include <expected>
#include <utility>

namespace corvane {

/// What one HTTP request to 127.0.0.1 says and what its exchange may cost.
struct HttpRequest {
    int port = 0;
    QByteArray verb;
    /// Path and query as they travel, encoded.
    QByteArray target;
    QList<std::pair<QByteArray, QByteArray>> headers = {};
    QByteArray body = {};
    std::chrono::milliseconds inactivity;
    std::chrono::milliseconds whole;
    qint64 largestAnswer = 0;
};

/// A complete answer, whatever its status.
struct HttpAnswer {
    int status = 0;
    QByteArray body;
};

enum class HttpFailure { Unreachable, TooLarge };

using HttpOutcome = std::expected<HttpAnswer, HttpFailure>;

/// What goes out before the body.
[[nodiscard]] QByteArray headOf(const HttpRequest &request);

} // namespace corvane
