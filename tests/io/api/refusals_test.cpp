#include "tests/io/api/api_fixture.h"

#include <QNetworkProxy>

using namespace corvane;
using namespace corvane::test;

namespace {

const QByteArray kEnabled = R"({"blocking":"enabled","timer":null})";

ScriptedServer::Script refusing(int status, const QByteArray &body)
{
    return [status, body](const ReceivedRequest &) { return answer(status, body); };
}

std::string adviceOn(int status, const QByteArray &body)
{
    ScriptedServer server(refusing(status, body));
    Client client(server);
    return errorOf(QCoro::waitFor(client.api.summary())).advice().toStdString();
}

} // namespace

TEST(PiholeRefusal, A_password_that_was_refused_is_not_sent_again_at_once)
{
    // Pi-hole takes three log-ins a second; a fourth would be told as "too many" instead of "wrong".
    ScriptedServer server(refusing(401, "{}"));
    Client client(server);
    for (int call = 0; call < 6; ++call)
        EXPECT_EQ(errorOf(QCoro::waitFor(client.api.summary())), PiholeAPIError::unauthorized());
    EXPECT_EQ(server.requestsTo("/api/auth"), 1);
}

TEST(PiholeRefusal, Another_password_is_tried_at_once)
{
    ScriptedServer server([](const ReceivedRequest &request) {
        if (request.target == "/api/auth" && !request.body.contains("right")) return answer(401, "{}");
        return afterLogin(answer(200, kEnabled))(request);
    });
    Client client(server);
    EXPECT_EQ(errorOf(QCoro::waitFor(client.api.blocking())), PiholeAPIError::unauthorized());
    client.api.configure(server.port(), QStringLiteral("right"));
    EXPECT_TRUE(QCoro::waitFor(client.api.blocking()));
}

TEST(PiholeRefusal, What_the_status_does_not_tell_is_advised)
{
    EXPECT_EQ(adviceOn(429, R"({"error":{"key":"api_seats_exceeded","message":"API seats exceeded","hint":null}})"),
              "All of Pi-hole's places for sessions are taken. One becomes free by itself within 30 minutes, or when "
              "somebody logs out of Pi-hole's web page.");
    EXPECT_EQ(adviceOn(429, R"({"error":{"key":"rate_limiting","message":"Rate-limiting login attempts"}})"),
              "Pi-hole got too many log-ins at once. Corvane tries again by itself.");
    EXPECT_EQ(adviceOn(400, R"({"error":{"key":"bad_request","message":"No 2FA token found in JSON payload"}})"),
              "Pi-hole asks for a second factor at log-in, which Corvane cannot give. Switch two-factor log-in off on "
              "Pi-hole's web page.");
    EXPECT_EQ(adviceOn(400, "rubbish"), "");
    EXPECT_EQ(adviceOn(500, "{}"), "");
}

TEST(PiholeRefusal, No_proxy_of_the_system_stands_between_corvane_and_127_0_0_1)
{
    ScriptedServer server(afterLogin(answer(200, kEnabled)));
    Client client(server);
    const QNetworkProxy before = QNetworkProxy::applicationProxy();
    QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), 1});
    const auto state = QCoro::waitFor(client.api.blocking());
    QNetworkProxy::setApplicationProxy(before);
    EXPECT_TRUE(state);
}
