#include "tests/io/api/api_fixture.h"

using namespace corvane;
using namespace corvane::test;

namespace {

const QByteArray kLists = "/api/action/gravity";
const QByteArray kEnabled = R"({"blocking":"enabled","timer":null})";

/// What a run prints, as Pi-hole sends it: in chunks, and more bytes after the end of the answer.
Reaction run(const QByteArray &printed)
{
    Reaction reaction;
    reaction.bytes = "HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nTransfer-Encoding: chunked\r\n\r\n" +
                     QByteArray::number(printed.size(), 16) + "\r\n" + printed +
                     "\r\n0\r\n\r\n{\"status\":\"success\"}";
    return reaction;
}

ScriptedServer::Script withLists(const Reaction &lists)
{
    return [lists](const ReceivedRequest &request) {
        if (request.target == kLists) return lists;
        return afterLogin(answer(200, kEnabled))(request);
    };
}

} // namespace

TEST(PiholeLists, A_run_that_came_to_its_end_is_told_from_one_that_did_not)
{
    for (const auto &[printed, loaded] : {std::pair<QByteArray, bool>{"  [i] ...\n  Done.\n", true},
                                          std::pair<QByteArray, bool>{"No DNS resolution available.\n", false}}) {
        ScriptedServer server(withLists(run(printed)));
        Client client(server);
        const auto ended = QCoro::waitFor(client.api.updateLists());
        ASSERT_TRUE(ended);
        EXPECT_EQ(*ended, loaded);
        EXPECT_EQ(server.requests().last().verb, "POST");
        EXPECT_EQ(server.requests().last().headers["connection"], "close");
        EXPECT_EQ(server.requests().last().headers["x-ftl-sid"], "good");
    }
}

TEST(PiholeLists, What_a_run_prints_is_heard_while_it_goes_on)
{
    const QByteArray printed = "  [i] Target: https://lists.example/a.txt\n\n  Done.\n";
    Reaction slow = run(printed);
    slow.drip = std::chrono::milliseconds(1);
    ScriptedServer server(withLists(slow));
    Client client(server);
    QByteArrayList heard;
    const std::function<void(const QByteArray &)> hear = [&heard](const QByteArray &piece) { heard += piece; };
    const auto ended = QCoro::waitFor(client.api.updateLists(hear));
    EXPECT_TRUE(ended && *ended);
    EXPECT_EQ(heard.join(), printed) << "and nothing of what follows the answer";
    EXPECT_GT(heard.size(), 1);
}

TEST(PiholeLists, A_refusal_is_no_output)
{
    ScriptedServer server(withLists(answer(400, R"({"error":{"key":"bad_request"}})")));
    Client client(server);
    QByteArray heard;
    const std::function<void(const QByteArray &)> hear = [&heard](const QByteArray &piece) { heard += piece; };
    EXPECT_EQ(errorOf(QCoro::waitFor(client.api.updateLists(hear))), PiholeAPIError::http(400));
    EXPECT_EQ(heard, "");
}

TEST(PiholeLists, Whoever_hears_may_end_the_client)
{
    ScriptedServer server(withLists(run("Done.\n")));
    auto client = std::make_unique<Client>(server);
    const std::function<void(const QByteArray &)> leave = [&client](const QByteArray &) { client.reset(); };
    EXPECT_EQ(errorOf(QCoro::waitFor(client->api.updateLists(leave))), PiholeAPIError::unreachable());
}

TEST(PiholeLists, Other_calls_go_on_beside_a_run)
{
    Reaction slow = run("Done.\n");
    slow.delay = std::chrono::milliseconds(400);
    ScriptedServer server(withLists(slow));
    Client client(server);
    bool ended = false;
    auto lists = [](PiholeAPI *api, bool *done) -> QCoro::Task<> {
        const auto loaded = co_await api->updateLists();
        *done = loaded && *loaded;
    }(&client.api, &ended);
    while (server.requestsTo(kLists) == 0)
        ASSERT_TRUE(QCoro::waitFor(client.api.blocking()));
    EXPECT_TRUE(QCoro::waitFor(client.api.blocking()));
    EXPECT_FALSE(ended) << "the run is still under way";
    QCoro::waitFor(std::move(lists));
    EXPECT_TRUE(ended);
}

TEST(PiholeLists, A_run_may_be_silent_for_longer_than_other_calls)
{
    Reaction slow = run("Done.\n");
    slow.delay = std::chrono::milliseconds(600);
    ScriptedServer server(withLists(slow));
    Client client(server, shortLimits());
    const auto ended = QCoro::waitFor(client.api.updateLists());
    EXPECT_TRUE(ended && *ended);
}

TEST(PiholeLists, A_client_that_goes_away_ends_the_run_as_unreachable)
{
    ScriptedServer server(withLists(Reaction{}));
    auto client = std::make_unique<Client>(server);
    auto lists = client->api.updateLists();
    while (server.requestsTo(kLists) == 0)
        QCoro::waitFor(client->api.blocking());
    client.reset();
    EXPECT_EQ(errorOf(QCoro::waitFor(std::move(lists))), PiholeAPIError::unreachable());
}
