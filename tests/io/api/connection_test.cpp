#include "api/http_client.h"
#include "tests/io/api/api_fixture.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

using namespace corvane;
using namespace corvane::test;
using namespace std::chrono_literals;

namespace {

const QByteArray kEnabled = R"({"blocking":"enabled","timer":null})";

/// Lets what has been closed be noticed.
void settle()
{
    QEventLoop loop;
    QTimer::singleShot(20, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

TEST(PiholeConnection, Calls_share_one_kept_connection)
{
    ScriptedServer server(afterLogin(answer(200, kEnabled)));
    Client client(server);
    for (int call = 0; call < 5; ++call)
        EXPECT_TRUE(QCoro::waitFor(client.api.blocking()));
    EXPECT_EQ(server.connections(), 1);
}

TEST(PiholeConnection, Each_answer_over_it_is_heard_from_its_beginning)
{
    ScriptedServer server([](const ReceivedRequest & /*request*/) { return answer(200, kEnabled); });
    HttpClient client;
    for (int call = 0; call < 2; ++call) {
        QByteArray heard;
        HttpRequest request{.port = server.port(), .verb = "GET", .target = "/", .inactivity = 9s, .whole = 9s};
        request.largestAnswer = 1000;
        request.heard = [&heard](const QByteArray &piece) { heard += piece; };
        const QFuture<HttpOutcome> ending = client.send(request);
        while (!ending.isFinished())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        EXPECT_EQ(heard, kEnabled);
    }
    EXPECT_EQ(server.connections(), 1);
}

TEST(PiholeConnection, An_idle_connection_that_the_server_closed_is_replaced)
{
    ScriptedServer server(afterLogin(answer(200, kEnabled)));
    Client client(server);
    ASSERT_TRUE(QCoro::waitFor(client.api.blocking()));
    server.closeConnections();
    settle();
    EXPECT_TRUE(QCoro::waitFor(client.api.blocking()));
    EXPECT_EQ(server.connections(), 2);
    EXPECT_EQ(server.requestsTo("/api/auth"), 1);
}

TEST(PiholeConnection, A_request_that_meets_the_close_is_repeated_once)
{
    ScriptedServer server([](const ReceivedRequest &request) {
        if (request.connection == 1 && request.target != "/api/auth") return Reaction{.bytes = {}, .close = true};
        return afterLogin(answer(200, kEnabled))(request);
    });
    Client client(server);
    EXPECT_TRUE(QCoro::waitFor(client.api.setBlocking(true, std::nullopt)));
    EXPECT_EQ(server.connections(), 2);
    ASSERT_EQ(server.requestsTo("/api/dns/blocking"), 2);
    EXPECT_EQ(server.requests()[1].body, server.requests()[2].body);
    EXPECT_EQ(server.requests()[2].headers["x-ftl-sid"], "good");
}

TEST(PiholeConnection, A_close_met_twice_is_unreachable)
{
    ScriptedServer server(afterLogin({.bytes = {}, .close = true}));
    Client client(server);
    EXPECT_EQ(errorOf(QCoro::waitFor(client.api.blocking())), PiholeAPIError::unreachable());
    EXPECT_EQ(server.requestsTo("/api/dns/blocking"), 2);
}

TEST(PiholeConnection, A_new_connection_that_closes_is_not_tried_again)
{
    ScriptedServer server([](const ReceivedRequest &) { return Reaction{.bytes = {}, .close = true}; });
    Client client(server);
    EXPECT_EQ(errorOf(QCoro::waitFor(client.api.blocking())), PiholeAPIError::unreachable());
    EXPECT_EQ(server.requests().size(), 1);
}

TEST(PiholeConnection, An_answer_that_began_is_not_asked_for_again)
{
    ScriptedServer server(afterLogin({.bytes = "H", .close = true}));
    Client client(server);
    EXPECT_EQ(errorOf(QCoro::waitFor(client.api.blocking())), PiholeAPIError::unreachable());
    EXPECT_EQ(server.requestsTo("/api/dns/blocking"), 1);
}

TEST(PiholeConnection, Nothing_that_follows_an_answer_reaches_the_next_call)
{
    const QByteArray forged = answer(200, R"({"blocking":"forged","timer":1})").bytes;
    ScriptedServer server(afterLogin({answer(200, kEnabled).bytes + forged}));
    Client client(server);
    for (int call = 0; call < 3; ++call) {
        const auto state = QCoro::waitFor(client.api.blocking());
        ASSERT_TRUE(state);
        EXPECT_TRUE(state->enabled);
    }
}

TEST(PiholeConnection, Words_on_an_idle_connection_do_not_reach_the_next_call)
{
    ScriptedServer server(afterLogin(answer(200, kEnabled)));
    Client client(server);
    ASSERT_TRUE(QCoro::waitFor(client.api.blocking()));
    server.say("HTTP/1.1 408 Too late\r\nContent-Length: 0\r\n\r\n");
    settle();
    EXPECT_TRUE(QCoro::waitFor(client.api.blocking()));
    EXPECT_EQ(server.connections(), 2);
}

TEST(PiholeConnection, An_answer_that_ends_the_connection_costs_nothing_but_a_new_one)
{
    for (const QByteArray header : {"Connection: close\r\n", "connection: Close\r\n"}) {
        ScriptedServer server([&header](const ReceivedRequest &request) {
            Reaction reaction = afterLogin(answer(200, kEnabled))(request);
            reaction.bytes.replace("Connection: keep-alive\r\n", header);
            reaction.close = true;
            return reaction;
        });
        Client client(server);
        EXPECT_TRUE(QCoro::waitFor(client.api.blocking()));
        EXPECT_TRUE(QCoro::waitFor(client.api.blocking()));
        EXPECT_EQ(server.connections(), 3);
    }
}

TEST(PiholeConnection, An_upload_that_was_answered_before_its_end_does_not_hold_up_the_next_call)
{
    ScriptedServer server([](const ReceivedRequest &request) {
        const bool upload = request.target == "/api/teleporter";
        return afterLogin(upload ? answer(400, "{}") : answer(200, kEnabled))(request);
    });
    server.answerEarly("/api/teleporter");
    Client client(server, shortLimits());
    const QByteArray archive(32 << 20, 'z');
    const auto refused = QCoro::waitFor(client.api.teleporterUpload(archive, QStringLiteral("large.zip")));
    EXPECT_EQ(errorOf(refused), PiholeAPIError::http(400));
    EXPECT_TRUE(QCoro::waitFor(client.api.blocking()));
    EXPECT_EQ(server.connections(), 2);
}

TEST(PiholeConnection, A_given_up_exchange_leaves_no_connection_behind)
{
    ScriptedServer server([](const ReceivedRequest &) { return Reaction{}; });
    Client client(server, shortLimits());
    EXPECT_FALSE(QCoro::waitFor(client.api.webAnswers()));
    settle();
    EXPECT_EQ(server.openConnections(), 0);
}

TEST(PiholeConnection, A_server_that_comes_back_is_reached_again)
{
    bool silent = true;
    ScriptedServer server([&silent](const ReceivedRequest &request) {
        return silent ? Reaction{} : afterLogin(answer(200, kEnabled))(request);
    });
    Client client(server, shortLimits());
    EXPECT_EQ(errorOf(QCoro::waitFor(client.api.blocking())), PiholeAPIError::unreachable());
    silent = false;
    EXPECT_TRUE(QCoro::waitFor(client.api.blocking()));
}

TEST(PiholeConnection, A_client_deleted_during_a_call_ends_it_as_unreachable)
{
    ScriptedServer server([](const ReceivedRequest &) { return Reaction{}; });
    auto client = std::make_unique<Client>(server);
    auto underWay = client->api.summary();
    auto waiting = client->api.blocking();
    auto last = client->api.webAnswers();
    QTimer::singleShot(20, [&client] { client.reset(); });
    EXPECT_EQ(errorOf(QCoro::waitFor(std::move(underWay))), PiholeAPIError::unreachable());
    EXPECT_EQ(errorOf(QCoro::waitFor(std::move(waiting))), PiholeAPIError::unreachable());
    EXPECT_FALSE(QCoro::waitFor(std::move(last)));
    settle();
    EXPECT_EQ(server.openConnections(), 0);
    EXPECT_EQ(server.requests().size(), 1);
}

TEST(PiholeConnection, A_client_may_be_deleted_by_whoever_its_answer_wakes)
{
    ScriptedServer server(afterLogin(answer(200, kEnabled)));
    auto client = std::make_unique<Client>(server);
    auto waiting = client->api.summary();
    bool answered = false;
    client->api.webAnswers().then([&](bool) {});
    auto deleting = client->api.blocking().then([&](std::expected<PiholeBlocking, PiholeAPIError> state) {
        answered = state.has_value();
        client.reset();
    });
    auto never = client->api.recentQueries(1);
    QCoro::waitFor(std::move(deleting));
    EXPECT_TRUE(answered);
    EXPECT_FALSE(QCoro::waitFor(std::move(waiting)));
    EXPECT_EQ(errorOf(QCoro::waitFor(std::move(never))), PiholeAPIError::unreachable());
}

TEST(PiholeConnection, A_call_whose_result_nobody_wants_leaks_nothing)
{
    ScriptedServer server(afterLogin(answer(200, kEnabled)));
    {
        Client client(server);
        {
            auto dropped = client.api.blocking();
        }
        EXPECT_TRUE(QCoro::waitFor(client.api.blocking()));
        {
            auto dropped = client.api.blocking();
        }
    }
    settle();
    EXPECT_EQ(server.openConnections(), 0);
}
