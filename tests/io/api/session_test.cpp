#include "tests/io/api/api_fixture.h"

#include <QTimer>

using namespace corvane;
using namespace corvane::test;

namespace {

const QByteArray kEnabled = R"({"blocking":"enabled","timer":null,"took":0.00002})";
const QByteArray kRefused = R"({"error":{"key":"unauthorized","message":"Unauthorized","hint":null},"took":0.00001})";

QByteArray loginAnswer(const QByteArray &sid)
{
    return R"({"session":{"valid":true,"totp":false,"sid":")" + sid + R"(","validity":1800}})";
}

} // namespace

TEST(PiholeSession, The_first_call_logs_in_and_later_calls_use_its_session)
{
    ScriptedServer server(afterLogin(answer(200, kEnabled)));
    Client client(server);
    ASSERT_TRUE(QCoro::waitFor(client.api.blocking()));
    ASSERT_TRUE(QCoro::waitFor(client.api.blocking()));
    ASSERT_EQ(server.requests().size(), 3);
    EXPECT_EQ(server.requests()[0].verb, "POST");
    EXPECT_EQ(server.requests()[0].target, "/api/auth");
    EXPECT_EQ(server.requests()[0].headers["content-type"], "application/json");
    EXPECT_EQ(server.requests()[0].body, R"({"password":"secret"})");
    EXPECT_EQ(server.requests()[1].headers["x-ftl-sid"], "good");
    EXPECT_EQ(server.requests()[2].headers["x-ftl-sid"], "good");
}

TEST(PiholeSession, Two_first_calls_log_in_once)
{
    ScriptedServer server(afterLogin(answer(200, kEnabled)));
    Client client(server);
    auto first = client.api.blocking();
    auto second = client.api.blocking();
    EXPECT_TRUE(QCoro::waitFor(std::move(first)));
    EXPECT_TRUE(QCoro::waitFor(std::move(second)));
    EXPECT_EQ(server.requestsTo("/api/auth"), 1);
    EXPECT_EQ(server.requestsTo("/api/dns/blocking"), 2);
}

TEST(PiholeSession, Calls_are_made_one_at_a_time_in_the_order_they_came)
{
    int underWay = 0;
    int most = 0;
    Reaction slow = answer(200, kEnabled);
    slow.delay = std::chrono::milliseconds(30);
    ScriptedServer server([&](const ReceivedRequest &request) {
        if (request.target == "/api/auth") return answer(200, loginAnswer("good"));
        most = std::max(most, ++underWay);
        QTimer::singleShot(25, [&underWay] { --underWay; });
        return slow;
    });
    Client client(server);
    std::vector<QCoro::Task<std::expected<QList<PiholeQuery>, PiholeAPIError>>> calls;
    for (int length = 1; length <= 5; ++length)
        calls.push_back(client.api.recentQueries(length));
    for (auto &call : calls)
        EXPECT_EQ(errorOf(QCoro::waitFor(std::move(call))), PiholeAPIError::badResponse());
    EXPECT_EQ(most, 1);
    for (int length = 1; length <= 5; ++length)
        EXPECT_EQ(server.requests()[length].target, "/api/queries?length=" + QByteArray::number(length));
}

TEST(PiholeSession, A_wrong_password_is_tried_once)
{
    ScriptedServer server([](const ReceivedRequest &) {
        return answer(401, R"({"session":{"valid":false,"sid":null,"message":"password incorrect"}})");
    });
    Client client(server);
    const PiholeAPIError error = errorOf(QCoro::waitFor(client.api.summary()));
    EXPECT_EQ(error.description(), QStringLiteral("Pi-hole refused the admin password."));
    EXPECT_EQ(server.requests().size(), 1);
}

TEST(PiholeSession, An_expired_session_is_renewed_once_and_nobody_notices)
{
    int logins = 0;
    ScriptedServer server([&logins](const ReceivedRequest &request) {
        if (request.target == "/api/auth") return answer(200, loginAnswer("sid" + QByteArray::number(++logins)));
        return request.headers["x-ftl-sid"] == "sid1" ? answer(401, kRefused) : answer(200, kEnabled);
    });
    Client client(server);
    const auto state = QCoro::waitFor(client.api.blocking());
    ASSERT_TRUE(state);
    EXPECT_TRUE(state->enabled);
    EXPECT_EQ(logins, 2);
    EXPECT_TRUE(QCoro::waitFor(client.api.blocking()));
    EXPECT_EQ(logins, 2);
}

TEST(PiholeSession, A_session_refused_twice_ends_in_unauthorized)
{
    ScriptedServer server(afterLogin(answer(401, kRefused)));
    Client client(server);
    EXPECT_EQ(errorOf(QCoro::waitFor(client.api.summary())), PiholeAPIError::unauthorized());
    EXPECT_EQ(server.requestsTo("/api/auth"), 2);
    EXPECT_EQ(server.requestsTo("/api/stats/summary"), 2);
}

TEST(PiholeSession, A_renewal_that_is_refused_ends_the_call)
{
    int logins = 0;
    ScriptedServer server([&logins](const ReceivedRequest &request) {
        if (request.target == "/api/auth" && ++logins == 1) return answer(200, loginAnswer("first"));
        return answer(401, kRefused);
    });
    Client client(server);
    EXPECT_EQ(errorOf(QCoro::waitFor(client.api.summary())), PiholeAPIError::unauthorized());
    EXPECT_EQ(logins, 2);
    EXPECT_EQ(server.requestsTo("/api/stats/summary"), 1);
}

TEST(PiholeSession, A_login_carries_neither_the_old_session_nor_a_cookie)
{
    ScriptedServer server([](const ReceivedRequest &request) {
        const QByteArray cookie = "Set-Cookie: sid=good; SameSite=Lax; Path=/; Max-Age=1800; HttpOnly\r\n";
        if (request.target == "/api/auth") return answer(200, loginAnswer("good"), cookie);
        return answer(401, kRefused, cookie);
    });
    Client client(server);
    EXPECT_FALSE(QCoro::waitFor(client.api.summary()));
    ASSERT_EQ(server.requests().size(), 4);
    for (const ReceivedRequest &request : server.requests()) {
        EXPECT_FALSE(request.headers.contains("cookie"));
        EXPECT_EQ(request.headers.contains("x-ftl-sid"), request.target != "/api/auth");
    }
}

TEST(PiholeSession, Neither_of_the_two_429s_is_tried_again)
{
    for (const char *key : {"rate_limiting", "api_seats_exceeded"}) {
        ScriptedServer server([key](const ReceivedRequest &) {
            return answer(429, R"({"error":{"key":")" + QByteArray(key) + R"(","message":"","hint":null}})");
        });
        Client client(server);
        const PiholeAPIError error = errorOf(QCoro::waitFor(client.api.summary()));
        EXPECT_EQ(error.description(), QStringLiteral("Pi-hole answered with HTTP 429"));
        EXPECT_EQ(server.requests().size(), 1) << key;
    }
}

TEST(PiholeSession, A_login_that_is_no_plain_200_ends_in_its_status)
{
    for (const int status : {201, 204, 302, 400, 403, 404, 407, 500, 503}) {
        ScriptedServer server([status](const ReceivedRequest &) {
            return answer(status, status == 204 ? QByteArray() : loginAnswer("good"));
        });
        Client client(server);
        EXPECT_EQ(errorOf(QCoro::waitFor(client.api.summary())), PiholeAPIError::http(status));
        EXPECT_EQ(server.requests().size(), 1) << status;
    }
}

TEST(PiholeSession, A_pihole_without_a_password_gives_no_session_to_use)
{
    ScriptedServer server([](const ReceivedRequest &) {
        return answer(200, R"({"session":{"valid":true,"totp":false,"sid":null,"validity":-1}})");
    });
    Client client(server);
    EXPECT_EQ(errorOf(QCoro::waitFor(client.api.summary())), PiholeAPIError::unauthorized());
}

TEST(PiholeSession, The_same_port_and_password_keep_the_session)
{
    ScriptedServer server(afterLogin(answer(200, kEnabled)));
    Client client(server);
    ASSERT_TRUE(QCoro::waitFor(client.api.blocking()));
    client.api.configure(server.port(), QStringLiteral("secret"));
    ASSERT_TRUE(QCoro::waitFor(client.api.blocking()));
    EXPECT_EQ(server.requestsTo("/api/auth"), 1);
}

TEST(PiholeSession, Another_password_logs_in_again)
{
    ScriptedServer server(afterLogin(answer(200, kEnabled)));
    Client client(server);
    ASSERT_TRUE(QCoro::waitFor(client.api.blocking()));
    client.api.configure(server.port(), QStringLiteral("pass\"w\u00f6rd\\\n"));
    ASSERT_TRUE(QCoro::waitFor(client.api.blocking()));
    ASSERT_EQ(server.requestsTo("/api/auth"), 2);
    EXPECT_EQ(server.requests()[2].body, "{\"password\":\"pass\\\"w\u00f6rd\\\\\\n\"}");
}

TEST(PiholeSession, Another_port_logs_in_there)
{
    ScriptedServer before(afterLogin(answer(200, kEnabled)));
    ScriptedServer after(afterLogin(answer(200, kEnabled)));
    Client client(before);
    ASSERT_TRUE(QCoro::waitFor(client.api.blocking()));
    client.api.configure(after.port(), QStringLiteral("secret"));
    ASSERT_TRUE(QCoro::waitFor(client.api.blocking()));
    EXPECT_EQ(before.requests().size(), 2);
    EXPECT_EQ(after.requestsTo("/api/auth"), 1);
}

TEST(PiholeSession, A_session_won_with_a_replaced_password_is_not_kept)
{
    PiholeAPI *changing = nullptr;
    int port = 0;
    ScriptedServer server([&](const ReceivedRequest &request) {
        if (request.target != "/api/auth") return answer(200, kEnabled);
        if (changing) changing->configure(port, QStringLiteral("newer"));
        changing = nullptr;
        return answer(200, loginAnswer(request.body.contains("newer") ? "new" : "old"));
    });
    Client client(server);
    changing = &client.api;
    port = server.port();
    EXPECT_TRUE(QCoro::waitFor(client.api.blocking()));
    EXPECT_TRUE(QCoro::waitFor(client.api.blocking()));
    ASSERT_EQ(server.requests().size(), 4);
    EXPECT_EQ(server.requests()[1].headers["x-ftl-sid"], "old");
    EXPECT_EQ(server.requests()[3].headers["x-ftl-sid"], "new");
}
