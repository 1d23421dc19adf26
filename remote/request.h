#pragma once

#include <QByteArray>

#include <chrono>
#include <optional>

namespace corvane::remote {

/// What a running Corvane can be asked for from outside.
struct Request {
    enum class Kind { Show, Status, Pause, Resume, RestoreDns };

    Kind kind = Kind::Show;
    /// How long a pause is.
    std::chrono::seconds length{0};

    bool operator==(const Request &) const = default;
};

/// The longest pause that can be asked for; Pi-hole's own timer takes no more.
constexpr std::chrono::seconds kLongestPause = std::chrono::hours(24);
/// No request is longer, its end included.
constexpr qsizetype kLongestRequest = 64;

/// One line, its end included.
[[nodiscard]] QByteArray encode(const Request &request);

/// The request that the line holds, without its end; absent when it holds none.
[[nodiscard]] std::optional<Request> decodeRequest(const QByteArray &line);

/// A length such as "30s", "5m" or "1h"; absent when it is none, nothing, or longer than a pause may be.
[[nodiscard]] std::optional<std::chrono::seconds> readLength(const QByteArray &text);

} // namespace corvane::remote
