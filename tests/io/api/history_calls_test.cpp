#include "tests/io/api/api_fixture.h"

using namespace corvane;
using namespace corvane::test;
using namespace Qt::StringLiterals;

TEST(PiholeHistoryCalls, The_last_day_is_read)
{
    ScriptedServer server(
        afterLogin(answer(200, R"({"history":[{"timestamp":900,"total":7,"blocked":2}],"took":0.1})")));
    Client client(server);
    const auto day = QCoro::waitFor(client.api.history());
    ASSERT_TRUE(day);
    EXPECT_EQ(*day, (PiholeHistory{{600, 7, 2}}));
    EXPECT_EQ(server.requests().last().verb, "GET");
    EXPECT_EQ(server.requests().last().target, "/api/history");
}

TEST(PiholeHistoryCalls, The_names_blocked_most_are_asked_for_by_number)
{
    ScriptedServer server(
        afterLogin(answer(200, R"({"domains":[{"domain":"a.example","count":2}],"total_queries":9})")));
    Client client(server);
    const auto top = QCoro::waitFor(client.api.topBlocked(10));
    ASSERT_TRUE(top);
    EXPECT_EQ(*top, (PiholeTopBlocked{{{u"a.example"_s, 2}}, false}));
    EXPECT_EQ(server.requests().last().target, "/api/stats/top_domains?blocked=true&count=10");
}

TEST(PiholeHistoryCalls, A_day_larger_than_any_is_not_understood)
{
    ScriptedServer server(afterLogin(answer(200, R"({"history":[)" + QByteArray(2 << 20, ' ') + "]}")));
    Client client(server, shortLimits());
    EXPECT_EQ(errorOf(QCoro::waitFor(client.api.history())), PiholeAPIError::badResponse());
}
