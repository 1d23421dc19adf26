#include "tests/io/api/api_fixture.h"

using namespace corvane;
using namespace corvane::test;

namespace {

/// The one request besides the login.
const ReceivedRequest &theCall(const ScriptedServer &server)
{
    EXPECT_EQ(server.requests().size(), 2);
    return server.requests().last();
}

} // namespace

TEST(PiholeCalls, The_counters_of_the_day_are_read)
{
    ScriptedServer server(afterLogin(
        answer(200, R"({"queries":{"total":29,"blocked":11,"percent_blocked":37.931034088134766},"clients":{}})")));
    Client client(server);
    const auto summary = QCoro::waitFor(client.api.summary());
    ASSERT_TRUE(summary);
    EXPECT_EQ(*summary, (PiholeSummary{29, 11, 37.931034088134766}));
    EXPECT_EQ(theCall(server).verb, "GET");
    EXPECT_EQ(theCall(server).target, "/api/stats/summary");
    EXPECT_EQ(theCall(server).headers["host"], "127.0.0.1:" + QByteArray::number(server.port()));
    EXPECT_FALSE(theCall(server).headers.contains("content-type"));
    EXPECT_FALSE(theCall(server).headers.contains("upgrade"));
}

TEST(PiholeCalls, The_blocking_state_is_read)
{
    ScriptedServer server(afterLogin(answer(200, R"({"blocking":"disabled","timer":-0.099999999999998979})")));
    Client client(server);
    const auto state = QCoro::waitFor(client.api.blocking());
    ASSERT_TRUE(state);
    EXPECT_EQ(*state, (PiholeBlocking{false, -0.099999999999998979}));
    EXPECT_EQ(theCall(server).verb, "GET");
    EXPECT_EQ(theCall(server).target, "/api/dns/blocking");
}

TEST(PiholeCalls, A_pause_is_sent_with_its_seconds)
{
    ScriptedServer server(afterLogin(answer(200, R"({"blocking":"disabled","timer":300})")));
    Client client(server);
    const auto state = QCoro::waitFor(client.api.setBlocking(false, 300));
    ASSERT_TRUE(state);
    EXPECT_EQ(*state, (PiholeBlocking{false, 300.0}));
    EXPECT_EQ(theCall(server).verb, "POST");
    EXPECT_EQ(theCall(server).target, "/api/dns/blocking");
    EXPECT_EQ(theCall(server).headers["content-type"], "application/json");
    EXPECT_EQ(theCall(server).body, R"({"blocking":false,"timer":300})");
}

TEST(PiholeCalls, Resuming_sends_no_timer)
{
    ScriptedServer server(afterLogin(answer(200, R"({"blocking":"enabled","timer":null})")));
    Client client(server);
    const auto state = QCoro::waitFor(client.api.setBlocking(true, std::nullopt));
    ASSERT_TRUE(state);
    EXPECT_EQ(*state, (PiholeBlocking{true, std::nullopt}));
    EXPECT_EQ(theCall(server).body, R"({"blocking":true})");
}

TEST(PiholeCalls, The_query_log_is_asked_for_by_length)
{
    ScriptedServer server(afterLogin(answer(
        200, R"({"queries":[{"id":2,"domain":"b.example","status":"GRAVITY"},{"domain":"a","status":"CACHE"}]})")));
    Client client(server);
    const auto queries = QCoro::waitFor(client.api.recentQueries(300));
    ASSERT_TRUE(queries);
    EXPECT_EQ(*queries, (QList<PiholeQuery>{{QStringLiteral("b.example"), QStringLiteral("GRAVITY")},
                                            {QStringLiteral("a"), QStringLiteral("CACHE")}}));
    EXPECT_EQ(theCall(server).target, "/api/queries?length=300");
}

TEST(PiholeCalls, An_archive_arrives_byte_for_byte)
{
    QByteArray archive("PK\x03\x04\0\r\n\r\n", 9);
    for (int byte = 0; byte < 100000; ++byte)
        archive += static_cast<char>(byte * 7);
    ScriptedServer server(afterLogin(answer(200, archive)));
    Client client(server);
    const auto downloaded = QCoro::waitFor(client.api.teleporterDownload());
    ASSERT_TRUE(downloaded);
    EXPECT_EQ(downloaded->bytes, archive);
    EXPECT_EQ(theCall(server).verb, "GET");
    EXPECT_EQ(theCall(server).target, "/api/teleporter");
}

TEST(PiholeCalls, An_archive_is_sent_as_the_file_of_a_form)
{
    ScriptedServer server(afterLogin(answer(200, R"({"files":["etc/pihole/pihole.toml"]})")));
    Client client(server);
    const QByteArray archive("PK\x03\x04\0\xff\r\n--", 10);
    ASSERT_TRUE(QCoro::waitFor(client.api.teleporterUpload(archive, QStringLiteral("my backup.zip"))));
    EXPECT_EQ(theCall(server).verb, "POST");
    EXPECT_EQ(theCall(server).target, "/api/teleporter");
    const QByteArray type = theCall(server).headers["content-type"];
    ASSERT_TRUE(type.startsWith("multipart/form-data; boundary=Corvane-"));
    const QByteArray boundary = type.mid(type.indexOf('=') + 1);
    EXPECT_EQ(theCall(server).body, "--" + boundary +
                                        "\r\nContent-Disposition: form-data; name=\"file\"; "
                                        "filename=\"my backup.zip\"\r\nContent-Type: application/zip\r\n\r\n" +
                                        archive + "\r\n--" + boundary + "--\r\n");
}

TEST(PiholeCalls, A_large_archive_is_sent_whole_and_again_after_a_renewal)
{
    const QByteArray archive(24 << 20, 'z');
    bool refused = false;
    ScriptedServer server([&refused](const ReceivedRequest &request) {
        if (request.target == "/api/teleporter" && !std::exchange(refused, true)) return answer(401, "{}");
        return afterLogin(answer(200, "{}"))(request);
    });
    Client client(server);
    ASSERT_TRUE(QCoro::waitFor(client.api.teleporterUpload(archive, QStringLiteral("large.zip"))));
    ASSERT_EQ(server.requestsTo("/api/teleporter"), 2);
    EXPECT_GT(server.requests().last().body.size(), archive.size());
}

TEST(PiholeCalls, A_refused_archive_ends_in_its_status)
{
    ScriptedServer server(afterLogin(answer(400, R"({"error":{"key":"bad_request","message":"Invalid file"}})")));
    Client client(server);
    const PiholeAPIError error = errorOf(QCoro::waitFor(client.api.teleporterUpload("x", QStringLiteral("x.zip"))));
    EXPECT_EQ(error.description(), QStringLiteral("Pi-hole answered with HTTP 400"));
}

TEST(PiholeCalls, The_admin_page_answers_with_any_status_from_200_to_399)
{
    for (const auto &[status, answers] : {std::pair{200, true},
                                          {204, true},
                                          {302, true},
                                          {308, true},
                                          {399, true},
                                          {400, false},
                                          {401, false},
                                          {404, false},
                                          {429, false},
                                          {500, false},
                                          {503, false}}) {
        ScriptedServer server(
            [status](const ReceivedRequest &) { return answer(status, {}, "Location: /admin/\r\n"); });
        Client client(server);
        EXPECT_EQ(QCoro::waitFor(client.api.webAnswers()), answers) << status;
        ASSERT_EQ(server.requests().size(), 1);
        EXPECT_EQ(server.requests()[0].verb, "GET");
        EXPECT_EQ(server.requests()[0].target, "/admin");
        EXPECT_FALSE(server.requests()[0].headers.contains("x-ftl-sid"));
    }
}

TEST(PiholeCalls, A_silent_admin_page_is_given_up_after_its_own_shorter_limit)
{
    ScriptedServer server([](const ReceivedRequest &) { return Reaction{}; });
    ExchangeLimits limits;
    limits.pageInactivity = std::chrono::milliseconds(150);
    Client client(server, limits);
    QElapsedTimer clock;
    clock.start();
    EXPECT_FALSE(QCoro::waitFor(client.api.webAnswers()));
    EXPECT_GE(clock.elapsed(), 145);
    EXPECT_LT(clock.elapsed(), 7'000);
}

TEST(PiholeCalls, The_limits_that_hold_by_themselves_are_those_promised)
{
    const ExchangeLimits limits;
    EXPECT_EQ(limits.inactivity, std::chrono::seconds(8));
    EXPECT_EQ(limits.pageInactivity, std::chrono::seconds(5));
    EXPECT_EQ(limits.whole, std::chrono::seconds(30));
}
