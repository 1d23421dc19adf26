#include "api/pihole_answers.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

using namespace corvane;

namespace {

template <class T>
bool isBadResponse(const std::expected<T, PiholeAPIError> &outcome)
{
    return !outcome && outcome.error() == PiholeAPIError::badResponse();
}

template <class T>
bool isUnauthorized(const std::expected<T, PiholeAPIError> &outcome)
{
    return !outcome && outcome.error() == PiholeAPIError::unauthorized();
}

/// What no answer of Pi-hole looks like.
const QList<QByteArray> kNoObjects = {"",
                                      " ",
                                      "null",
                                      "true",
                                      "1",
                                      "\"x\"",
                                      "[]",
                                      "[{}]",
                                      "{",
                                      "{]",
                                      "}",
                                      "{}x",
                                      "\0",
                                      "\xff\xfe",
                                      "nan",
                                      "{\"a\":1,}",
                                      "{'session':{}}",
                                      QByteArray(100000, '['),
                                      QByteArray("{\"a\":").repeated(5000)};

} // namespace

TEST(LoginAnswer, The_session_id_is_read)
{
    const auto sid = parseLogin(R"({"session":{"valid":true,"totp":false,"sid":"a6VaWyoAf5pqUTA6dejdHQ=",)"
                                R"("csrf":"BHX+M92KLSvwghDiy50s8g=","validity":1800},"took":0.1})");
    ASSERT_TRUE(sid);
    EXPECT_EQ(*sid, QStringLiteral("a6VaWyoAf5pqUTA6dejdHQ="));
}

TEST(LoginAnswer, Without_a_valid_session_the_password_was_refused)
{
    for (const char *session :
         {R"({"valid":false,"sid":"x"})", R"({"valid":true,"sid":null})", R"({"valid":true})", R"({"sid":"x"})",
          R"({"valid":"true","sid":"x"})", R"({"valid":1,"sid":"x"})", R"({"valid":true,"sid":5})",
          R"({"valid":true,"sid":""})", R"({"valid":true,"sid":["x"]})", "{}"})
        EXPECT_TRUE(isUnauthorized(parseLogin("{\"session\":" + QByteArray(session) + "}"))) << session;
}

TEST(LoginAnswer, Anything_but_an_object_with_a_session_is_not_understood)
{
    for (const QByteArray &json : kNoObjects)
        EXPECT_TRUE(isBadResponse(parseLogin(json))) << json.left(40).constData();
    for (const char *json : {"{}", R"({"session":null})", R"({"session":"x"})", R"({"session":[]})"})
        EXPECT_TRUE(isBadResponse(parseLogin(json))) << json;
}

TEST(LoginAnswer, A_session_id_that_could_forge_a_header_is_not_understood)
{
    for (const char *sid : {R"(x\r\nEvil: 1)", R"(a b)", R"(\u0000)", R"(\u00e9)", R"(\ud800)", R"(\u007f)"})
        EXPECT_TRUE(isBadResponse(parseLogin(R"({"session":{"valid":true,"sid":")" + QByteArray(sid) + "\"}}"))) << sid;
}

TEST(SummaryAnswer, The_three_counters_are_read)
{
    const auto summary = parseSummary(R"({"queries":{"total":29,"blocked":11,"percent_blocked":37.5,"types":{}}})");
    ASSERT_TRUE(summary);
    EXPECT_EQ(*summary, (PiholeSummary{29, 11, 37.5}));
}

TEST(SummaryAnswer, The_number_of_listed_names_may_be_missing_or_negative)
{
    const QByteArray queries = R"("queries":{"total":1,"blocked":0,"percent_blocked":0})";
    const auto listed = [&queries](const QByteArray &gravity) {
        return parseSummary('{' + queries + gravity + '}')->domainsBlocked;
    };
    EXPECT_EQ(listed(R"(,"gravity":{"domains_being_blocked":130002})"), 130002);
    EXPECT_EQ(listed(R"(,"gravity":{"domains_being_blocked":-2})"), -2);
    EXPECT_EQ(listed(R"(,"gravity":{"domains_being_blocked":"many"})"), std::nullopt);
    EXPECT_EQ(listed(""), std::nullopt);
}

TEST(RestoredAnswer, Names_the_files_that_were_taken)
{
    EXPECT_TRUE(*parseRestored(R"({"files":["etc/pihole/pihole.toml"],"took":0.1})"));
    EXPECT_FALSE(*parseRestored(R"({"files":[],"took":0.1})"));
    EXPECT_TRUE(*parseRestored("{}")) << "the status alone says that it worked";
    EXPECT_TRUE(*parseRestored("rubbish"));
}

TEST(SummaryAnswer, Numbers_written_as_fractions_count_whole)
{
    const auto summary = parseSummary(R"({"queries":{"total":29.9,"blocked":1e3,"percent_blocked":0}})");
    ASSERT_TRUE(summary);
    EXPECT_EQ(*summary, (PiholeSummary{29, 1000, 0}));
}

TEST(SummaryAnswer, A_number_no_integer_can_hold_is_not_understood)
{
    for (const char *number : {"1e300", "-1e300", "9223372036854775808", "1e999", "-1e19"})
        EXPECT_TRUE(isBadResponse(
            parseSummary(R"({"queries":{"total":)" + QByteArray(number) + R"(,"blocked":1,"percent_blocked":1}})")))
            << number;
}

TEST(SummaryAnswer, Each_counter_must_be_a_number)
{
    for (const char *queries :
         {R"({"blocked":1,"percent_blocked":1})", R"({"total":1,"percent_blocked":1})", R"({"total":1,"blocked":1})",
          R"({"total":"1","blocked":1,"percent_blocked":1})", R"({"total":true,"blocked":1,"percent_blocked":1})",
          R"({"total":1,"blocked":null,"percent_blocked":1})", R"({"total":1,"blocked":1,"percent_blocked":[1]})", "[]",
          "null", "7"})
        EXPECT_TRUE(isBadResponse(parseSummary("{\"queries\":" + QByteArray(queries) + "}"))) << queries;
}

TEST(SummaryAnswer, Anything_but_an_object_is_not_understood)
{
    for (const QByteArray &json : kNoObjects)
        EXPECT_TRUE(isBadResponse(parseSummary(json))) << json.left(40).constData();
}

TEST(BlockingAnswer, Only_the_word_enabled_means_enabled)
{
    EXPECT_TRUE(parseBlocking(R"({"blocking":"enabled","timer":null})")->enabled);
    for (const char *word : {"disabled", "failure", "unknown", "Enabled", "enabled ", ""}) {
        const auto state = parseBlocking("{\"blocking\":\"" + QByteArray(word) + "\"}");
        ASSERT_TRUE(state) << word;
        EXPECT_FALSE(state->enabled) << word;
    }
}

TEST(BlockingAnswer, A_timer_is_given_as_it_is_and_only_when_it_is_a_number)
{
    EXPECT_EQ(parseBlocking(R"({"blocking":"disabled","timer":4.4000000000000021})")->timerSeconds, 4.4000000000000021);
    EXPECT_EQ(parseBlocking(R"({"blocking":"disabled","timer":-0.099999999999998979})")->timerSeconds,
              -0.099999999999998979);
    EXPECT_EQ(parseBlocking(R"({"blocking":"disabled","timer":0})")->timerSeconds, 0.0);
    for (const char *timer : {"null", "\"5\"", "true", "[]", "{}"})
        EXPECT_FALSE(parseBlocking(R"({"blocking":"disabled","timer":)" + QByteArray(timer) + "}")->timerSeconds)
            << timer;
    EXPECT_FALSE(parseBlocking(R"({"blocking":"disabled"})")->timerSeconds);
}

TEST(BlockingAnswer, Without_a_word_about_blocking_it_is_not_understood)
{
    for (const QByteArray &json : kNoObjects)
        EXPECT_TRUE(isBadResponse(parseBlocking(json))) << json.left(40).constData();
    for (const char *json : {"{}", R"({"blocking":true})", R"({"timer":3})", R"({"blocking":{}})"})
        EXPECT_TRUE(isBadResponse(parseBlocking(json))) << json;
}

TEST(QueriesAnswer, Entries_keep_their_order)
{
    const auto queries = parseQueries(R"({"queries":[{"id":44,"status":"GRAVITY","domain":"doubleclick.net"},)"
                                      R"({"domain":"example.com","status":"FORWARDED"}],"cursor":44})");
    ASSERT_TRUE(queries);
    EXPECT_EQ(*queries, (QList<PiholeQuery>{{QStringLiteral("doubleclick.net"), QStringLiteral("GRAVITY")},
                                            {QStringLiteral("example.com"), QStringLiteral("FORWARDED")}}));
}

TEST(QueriesAnswer, An_empty_log_is_an_empty_list)
{
    const auto queries = parseQueries(R"({"queries":[],"cursor":44})");
    ASSERT_TRUE(queries);
    EXPECT_TRUE(queries->isEmpty());
}

TEST(QueriesAnswer, An_odd_entry_does_not_hide_the_others)
{
    const auto queries = parseQueries(R"({"queries":[{"domain":null,"status":"GRAVITY"},7,)"
                                      R"({"domain":"example.com","status":"CACHE"}]})");
    ASSERT_TRUE(queries);
    EXPECT_EQ(*queries, (QList<PiholeQuery>{{QStringLiteral("example.com"), QStringLiteral("CACHE")}}));
}

TEST(QueriesAnswer, A_list_of_anything_else_is_not_understood)
{
    for (const QByteArray &json : kNoObjects)
        EXPECT_TRUE(isBadResponse(parseQueries(json))) << json.left(40).constData();
    for (const char *list :
         {"{}", "null", "5", "[1]", "[null]", "[[]]", "[{}]", R"([{"domain":"a"}])", R"([{"domain":"a","status":3}])",
          R"([{"domain":null,"status":"GRAVITY"}])", R"([7,{"domain":"a"}])"})
        EXPECT_TRUE(isBadResponse(parseQueries("{\"queries\":" + QByteArray(list) + "}"))) << list;
    EXPECT_TRUE(isBadResponse(parseQueries("{}")));
}

TEST(LoginBody, Any_password_survives_the_writing)
{
    const QString password = QStringLiteral("p\"ä\\\n\t€\U0001F600</>");
    const QJsonObject body = QJsonDocument::fromJson(loginBody(password)).object();
    EXPECT_EQ(body.keys(), QStringList{QStringLiteral("password")});
    EXPECT_EQ(body.value(u"password").toString(), password);
}

TEST(BlockingBody, The_timer_is_written_only_when_given)
{
    EXPECT_EQ(blockingBody(false, 300), R"({"blocking":false,"timer":300})");
    EXPECT_EQ(blockingBody(true, std::nullopt), R"({"blocking":true})");
}
