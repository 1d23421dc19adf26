#include "api/pihole_types.h"

#include <gtest/gtest.h>

using corvane::PiholeAPIError;

TEST(PiholeAPIError, Each_kind_has_its_sentence)
{
    EXPECT_EQ(PiholeAPIError::unreachable().description(), QStringLiteral("Pi-hole did not answer on 127.0.0.1."));
    EXPECT_EQ(PiholeAPIError::unauthorized().description(), QStringLiteral("Pi-hole refused the admin password."));
    EXPECT_EQ(PiholeAPIError::http(503).description(), QStringLiteral("Pi-hole answered with HTTP 503"));
    EXPECT_EQ(PiholeAPIError::badResponse().description(),
              QStringLiteral("Pi-hole sent an answer this app does not understand."));
}

TEST(PiholeAPIError, Only_an_http_error_has_a_code)
{
    EXPECT_EQ(PiholeAPIError::http(429).code(), 429);
    EXPECT_EQ(PiholeAPIError::unreachable().code(), 0);
}

TEST(PiholeAPIError, Errors_are_equal_when_kind_and_code_are)
{
    EXPECT_EQ(PiholeAPIError::http(429), PiholeAPIError::http(429));
    EXPECT_NE(PiholeAPIError::http(429), PiholeAPIError::http(500));
    EXPECT_NE(PiholeAPIError::unreachable(), PiholeAPIError::badResponse());
}
