#pragma once

#include <QByteArray>
#include <QList>

#include <chrono>
#include <expected>
#include <functional>
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
    /// Is given the body of an answer with a status from 200 to 299, piece by piece as it comes.
    std::function<void(const QByteArray &)> heard = nullptr;
};

/// A complete answer, whatever its status.
struct HttpAnswer {
    int status = 0;
    QByteArray body;
};

enum class HttpFailure { Unreachable, TooLarge };

using HttpOutcome = std::expected<HttpAnswer, HttpFailure>;

/// The request line and the headers, with the blank line.
[[nodiscard]] QByteArray headOf(const HttpRequest &request);

} // namespace corvane
