#include "tests/io/api/api_fixture.h"

using namespace corvane;
using namespace corvane::test;

TEST(PiholeQuestions, What_was_blocked_is_asked_for_since_a_moment)
{
    ScriptedServer server(afterLogin(answer(200, R"({"queries":[]})")));
    Client client(server);
    EXPECT_TRUE(QCoro::waitFor(client.api.blockedSince(1795288057.871, 500)));
    EXPECT_EQ(server.requests().last().target, "/api/queries?from=1795288057.871000&upstream=blocklist&length=500");
}

TEST(PiholeQuestions, A_name_is_asked_for_as_a_whole_and_encoded)
{
    ScriptedServer server(afterLogin(answer(200, R"({"queries":[]})")));
    Client client(server);
    EXPECT_TRUE(QCoro::waitFor(client.api.newestQuestion(QStringLiteral("a&b=c.example.com"))));
    EXPECT_EQ(server.requests().last().target, "/api/queries?length=1&domain=a%26b%3Dc.example.com");
}
