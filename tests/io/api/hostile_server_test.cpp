#include "tests/io/api/api_fixture.h"

#include <QElapsedTimer>

using namespace corvane;
using namespace corvane::test;
using namespace std::chrono_literals;

namespace {

const QByteArray kEnabled = R"({"blocking":"enabled","timer":null,"took":0.00002})";
const QByteArray kHead = "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\n";

std::expected<PiholeBlocking, PiholeAPIError> askFor(const Reaction &reaction,
                                                     const ExchangeLimits &limits = shortLimits())
{
    ScriptedServer server(afterLogin(reaction));
    Client client(server, limits);
    return QCoro::waitFor(client.api.blocking());
}

Reaction closing(const QByteArray &bytes) { return {.bytes = bytes, .close = true}; }

QByteArray chunk(const QByteArray &bytes) { return QByteArray::number(bytes.size(), 16) + "\r\n" + bytes + "\r\n"; }

} // namespace

TEST(HostileServer, A_server_that_never_answers_is_given_up_after_the_inactivity_limit)
{
    ScriptedServer server([](const ReceivedRequest &) { return Reaction{}; });
    ExchangeLimits limits = shortLimits();
    limits.whole = 20s;
    Client client(server, limits);
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(errorOf(QCoro::waitFor(client.api.summary())), PiholeAPIError::unreachable());
    EXPECT_GE(clock.elapsed(), 290);
    EXPECT_LT(clock.elapsed(), 10'000);
}

TEST(HostileServer, Nobody_listening_is_unreachable_at_once)
{
    int port = 0;
    {
        const ScriptedServer gone([](const ReceivedRequest &) { return Reaction{}; });
        port = gone.port();
    }
    PiholeAPI api;
    api.configure(port, QStringLiteral("secret"));
    const PiholeAPIError error = errorOf(QCoro::waitFor(api.summary()));
    EXPECT_EQ(error.description(), QStringLiteral("Pi-hole did not answer on 127.0.0.1."));
}

TEST(HostileServer, A_port_that_is_none_is_unreachable)
{
    for (const int port : {-1, 0, 65536, 1 << 30}) {
        PiholeAPI api;
        api.configure(port, QStringLiteral("secret"));
        EXPECT_EQ(errorOf(QCoro::waitFor(api.summary())), PiholeAPIError::unreachable()) << port;
        EXPECT_FALSE(QCoro::waitFor(api.webAnswers())) << port;
    }
}

TEST(HostileServer, A_client_that_nobody_configured_is_unreachable)
{
    PiholeAPI api;
    EXPECT_EQ(errorOf(QCoro::waitFor(api.blocking())), PiholeAPIError::unreachable());
}

TEST(HostileServer, A_slow_drip_ends_with_the_whole_exchange)
{
    const Reaction drip{.bytes = kHead + "Content-Length: 100000\r\n\r\n", .endlessly = " ", .drip = 2ms};
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(errorOf(askFor(drip)), PiholeAPIError::unreachable());
    EXPECT_GE(clock.elapsed(), 890);
    EXPECT_LT(clock.elapsed(), 10'000);
}

TEST(HostileServer, A_head_that_drips_for_ever_ends_within_the_limits)
{
    const Reaction drip{.bytes = kHead, .endlessly = "X-More: 1\r\n", .drip = 5ms};
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(errorOf(askFor(drip)), PiholeAPIError::unreachable());
    EXPECT_LT(clock.elapsed(), 10'000);
}

TEST(HostileServer, A_lively_answer_may_take_longer_than_the_inactivity_limit)
{
    Reaction drip = answer(200, kEnabled);
    drip.drip = 6ms;
    ExchangeLimits limits = shortLimits();
    limits.inactivity = 600ms;
    limits.whole = 20s;
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(askFor(drip, limits));
    EXPECT_GT(clock.elapsed(), 600);
}

TEST(HostileServer, An_endless_body_is_cut_off_at_the_limit)
{
    for (const QByteArray &head : {kHead + "\r\n", kHead + "Content-Length: 99999999999\r\n\r\n"}) {
        ScriptedServer server(afterLogin({.bytes = head, .endlessly = QByteArray(64 * 1024, ' ')}));
        Client client(server, shortLimits());
        EXPECT_EQ(errorOf(QCoro::waitFor(client.api.blocking())), PiholeAPIError::badResponse());
        EXPECT_LT(server.sent(), 16 << 20);
    }
}

TEST(HostileServer, Endless_chunks_are_cut_off_at_the_limit)
{
    const QByteArray head = kHead + "Transfer-Encoding: chunked\r\n\r\n";
    for (const QByteArray &piece : {chunk(QByteArray(64 * 1024, ' ')), chunk("x")}) {
        ScriptedServer server(afterLogin({.bytes = head, .endlessly = piece}));
        Client client(server, shortLimits());
        const PiholeAPIError error = errorOf(QCoro::waitFor(client.api.blocking()));
        EXPECT_TRUE(error == PiholeAPIError::badResponse() || error == PiholeAPIError::unreachable());
        EXPECT_LT(server.sent(), 64 << 20);
    }
}

TEST(HostileServer, An_endless_error_page_is_cut_off_too)
{
    ScriptedServer server(
        [](const ReceivedRequest &) { return Reaction{.bytes = "HTTP/1.1 500 No\r\n\r\n", .endlessly = "<p>"}; });
    Client client(server, shortLimits());
    EXPECT_FALSE(QCoro::waitFor(client.api.blocking()));
    EXPECT_LT(server.sent(), 16 << 20);
}

TEST(HostileServer, An_endless_admin_page_is_cut_off_and_counts_as_no_answer)
{
    ScriptedServer server(
        [](const ReceivedRequest &) { return Reaction{.bytes = kHead + "\r\n", .endlessly = kHead}; });
    ExchangeLimits limits;
    limits.jsonBytes = 1 << 20;
    Client client(server, limits);
    EXPECT_FALSE(QCoro::waitFor(client.api.webAnswers()));
    EXPECT_LT(server.sent(), 16 << 20);
}

TEST(HostileServer, An_archive_may_be_larger_than_a_json_answer_but_not_endless)
{
    const QByteArray large(3 << 20, 'z');
    ScriptedServer fine(afterLogin(answer(200, large)));
    Client client(fine, shortLimits());
    const auto archive = QCoro::waitFor(client.api.teleporterDownload());
    ASSERT_TRUE(archive);
    EXPECT_EQ(archive->bytes, large);

    ScriptedServer endless(afterLogin({.bytes = kHead + "\r\n", .endlessly = large}));
    Client other(endless, shortLimits());
    EXPECT_EQ(errorOf(QCoro::waitFor(other.api.teleporterDownload())), PiholeAPIError::badResponse());
}

TEST(HostileServer, Endless_headers_end_within_the_limits)
{
    ScriptedServer server(afterLogin({.bytes = kHead, .endlessly = "X-More: " + QByteArray(8000, 'h') + "\r\n"}));
    Client client(server, shortLimits());
    EXPECT_EQ(errorOf(QCoro::waitFor(client.api.blocking())), PiholeAPIError::unreachable());
}

TEST(HostileServer, A_redirect_is_never_followed)
{
    ScriptedServer elsewhere([](const ReceivedRequest &) { return answer(200, kEnabled); });
    const QByteArray location = "Location: http://127.0.0.1:" + QByteArray::number(elsewhere.port()) + "/steal\r\n";
    for (const int status : {301, 302, 303, 307, 308}) {
        EXPECT_EQ(errorOf(askFor(answer(status, {}, location))), PiholeAPIError::http(status));
        EXPECT_EQ(errorOf(askFor(answer(status, {}, "Location: /api/stats/summary\r\n"))),
                  PiholeAPIError::http(status));
        EXPECT_EQ(errorOf(askFor(answer(status, {}, "Location: ::::\r\n"))), PiholeAPIError::http(status));
        EXPECT_EQ(errorOf(askFor(answer(status, {}))), PiholeAPIError::http(status));
    }
    EXPECT_EQ(elsewhere.connections(), 0);
}

TEST(HostileServer, A_request_to_identify_by_other_means_is_an_ordinary_refusal)
{
    for (const char *scheme : {"Basic realm=\"x\"", "Digest realm=\"x\", nonce=\"y\"", "Negotiate", "NTLM"}) {
        const QByteArray header = "WWW-Authenticate: " + QByteArray(scheme) + "\r\n";
        ScriptedServer server([&header](const ReceivedRequest &) { return answer(401, "{}", header); });
        Client client(server, shortLimits());
        EXPECT_EQ(errorOf(QCoro::waitFor(client.api.blocking())), PiholeAPIError::unauthorized()) << scheme;
        EXPECT_EQ(server.requests().size(), 1) << scheme;
        EXPECT_FALSE(server.requests()[0].headers.contains("authorization"));
    }
}

TEST(HostileServer, A_connection_closed_at_any_byte_of_a_measured_answer_is_an_error)
{
    const QByteArray whole = answer(200, kEnabled).bytes;
    for (qsizetype cut = 0; cut < whole.size(); ++cut)
        EXPECT_EQ(errorOf(askFor(closing(whole.left(cut)))), PiholeAPIError::unreachable()) << "after byte " << cut;
    EXPECT_TRUE(askFor(closing(whole)));
}

TEST(HostileServer, A_connection_closed_at_any_byte_of_a_chunked_answer_is_an_error)
{
    const QByteArray whole =
        kHead + "Transfer-Encoding: chunked\r\n\r\n" + chunk(kEnabled.left(20)) + chunk(kEnabled.mid(20)) + "0\r\n\r\n";
    for (qsizetype cut = 0; cut < whole.size(); ++cut)
        EXPECT_FALSE(askFor(closing(whole.left(cut)))) << "after byte " << cut;
    EXPECT_TRUE(askFor(closing(whole)));
}

TEST(HostileServer, A_connection_closed_at_any_byte_of_an_unmeasured_answer_is_an_error)
{
    const QByteArray whole = kHead + "Connection: close\r\n\r\n" + kEnabled;
    for (qsizetype cut = 0; cut < whole.size(); ++cut) {
        const PiholeAPIError error = errorOf(askFor(closing(whole.left(cut))));
        EXPECT_TRUE(error == PiholeAPIError::unreachable() || error == PiholeAPIError::badResponse())
            << "after byte " << cut;
    }
    EXPECT_TRUE(askFor(closing(whole)));
}

TEST(HostileServer, A_connection_closed_at_any_byte_of_the_login_is_an_error)
{
    const QByteArray whole = answer(200, R"({"session":{"valid":true,"sid":"good"}})").bytes;
    for (qsizetype cut = 0; cut < whole.size(); ++cut) {
        ScriptedServer server([&](const ReceivedRequest &) { return closing(whole.left(cut)); });
        Client client(server, shortLimits());
        EXPECT_EQ(errorOf(QCoro::waitFor(client.api.summary())), PiholeAPIError::unreachable()) << cut;
    }
}

TEST(HostileServer, A_stalled_answer_ends_at_any_byte_within_the_limit)
{
    const QByteArray whole = answer(200, kEnabled).bytes;
    ExchangeLimits limits = shortLimits();
    limits.inactivity = 40ms;
    for (qsizetype cut = 0; cut < whole.size(); cut += 7) {
        ScriptedServer server(afterLogin({.bytes = whole.left(cut)}));
        Client client(server, limits);
        EXPECT_EQ(errorOf(QCoro::waitFor(client.api.blocking())), PiholeAPIError::unreachable()) << cut;
    }
}

TEST(HostileServer, A_body_of_another_length_than_promised_is_no_answer)
{
    const QByteArray tooLong =
        kHead + "Content-Length: " + QByteArray::number(kEnabled.size() + 1) + "\r\n\r\n" + kEnabled;
    EXPECT_EQ(errorOf(askFor(closing(tooLong))), PiholeAPIError::unreachable());
    EXPECT_EQ(errorOf(askFor({.bytes = tooLong})), PiholeAPIError::unreachable());
    const QByteArray tooShort = kHead + "Content-Length: 10\r\n\r\n" + kEnabled;
    EXPECT_EQ(errorOf(askFor(closing(tooShort))), PiholeAPIError::badResponse());
}

TEST(HostileServer, Rubbish_in_place_of_http_ends_in_one_of_the_four_errors)
{
    const QList<QByteArray> rubbish = {
        "rubbish\r\n\r\n",
        "HTTP/9.9 banana\r\n\r\n",
        "HTTP/1.1 abc OK\r\n\r\n{}",
        "HTTP/1.1 -1 OK\r\nContent-Length: 2\r\n\r\n{}",
        "HTTP/1.1 99999999999 OK\r\nContent-Length: 2\r\n\r\n{}",
        "HTTP/1.1 101 Switching\r\nUpgrade: h2c\r\nConnection: Upgrade\r\n\r\n",
        "HTTP/1.1 100 Continue\r\n\r\n",
        "HTTP/1.1 204 Nothing\r\n\r\n",
        QByteArray(4000, '\0'),
        QByteArray(300000, '\n'),
        "\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03",
        kHead + "Content-Length: -5\r\n\r\n{}",
        kHead + "Content-Length: 18446744073709551617\r\n\r\n{}",
        kHead + "Content-Length: 2\r\nContent-Length: 50\r\n\r\n{}",
        kHead + "Content-Length: banana\r\n\r\n{}",
        kHead + "Content-Encoding: gzip\r\nContent-Length: 4\r\n\r\n\x1f\x8b\x08\x00",
        kHead + "Transfer-Encoding: chunked\r\n\r\nzz\r\n{}\r\n0\r\n\r\n",
        kHead + "Transfer-Encoding: chunked\r\n\r\n-1\r\n{}\r\n0\r\n\r\n",
        kHead + "Transfer-Encoding: chunked\r\n\r\nffffffffffffffff\r\n{}",
        kHead + "Transfer-Encoding: chunked\r\n\r\n" + QByteArray(200000, '1') + "\r\n{}",
        kHead + "No colon here\r\n: no name\r\n\r\n{}",
        kHead + "X-Huge: " + QByteArray(1 << 20, 'h') + "\r\nContent-Length: 2\r\n\r\n{}",
    };
    for (const QByteArray &bytes : rubbish) {
        QElapsedTimer clock;
        clock.start();
        EXPECT_FALSE(askFor({.bytes = bytes})) << bytes.left(60).constData();
        EXPECT_FALSE(askFor(closing(bytes))) << bytes.left(60).constData();
        EXPECT_LT(clock.elapsed(), 10'000) << bytes.left(60).constData();
    }
}

TEST(HostileServer, Wrong_types_are_an_answer_nobody_understands)
{
    for (const char *json : {"", "null", "true", "42", "\"enabled\"", "[]", "[{\"blocking\":\"enabled\"}]", "{}",
                             "{\"blocking\":true}", "{\"blocking\":null}", "{\"blocking\":{}}",
                             "{\"blocking\":\"enabled\"", "{\"blocking\":\"enabled\"}}", "\xff"}) {
        const PiholeAPIError error = errorOf(askFor(answer(200, json)));
        EXPECT_EQ(error.description(), QStringLiteral("Pi-hole sent an answer this app does not understand.")) << json;
    }
}
