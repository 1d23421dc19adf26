#pragma once

#include "api/pihole_api.h"
#include "tests/io/api/scripted_server.h"

#include <QCoro/QCoroTask>
#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace corvane::test {

/// Limits small enough for a test to run into.
[[nodiscard]] inline ExchangeLimits shortLimits()
{
    ExchangeLimits limits;
    limits.inactivity = std::chrono::milliseconds(300);
    limits.pageInactivity = std::chrono::milliseconds(150);
    limits.whole = std::chrono::milliseconds(900);
    limits.jsonBytes = 1 << 20;
    limits.archiveBytes = 4 << 20;
    return limits;
}

/// A client of one scripted server.
class Client {
public:
    explicit Client(const ScriptedServer &server, const ExchangeLimits &limits = ExchangeLimits{})
        : api(limits)
    {
        api.configure(server.port(), QStringLiteral("secret"));
    }

    PiholeAPI api;
};

/// The error a call ended with; fails the test when there is none.
template <class T>
[[nodiscard]] PiholeAPIError errorOf(const std::expected<T, PiholeAPIError> &outcome)
{
    EXPECT_FALSE(outcome.has_value()) << "the call succeeded";
    return outcome ? PiholeAPIError::http(0) : outcome.error();
}

} // namespace corvane::test

namespace corvane {
inline void PrintTo(const PiholeAPIError &error, std::ostream *out) { *out << error.description().toStdString(); }
} // namespace corvane
