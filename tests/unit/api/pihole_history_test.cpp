#include "api/pihole_answers.h"
#include "api/pihole_history.h"

#include <QFile>
#include <gtest/gtest.h>

#include <numeric>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

/// The body that a real Pi-hole answered with.
QByteArray recorded(const char *name)
{
    QFile file(QStringLiteral(CORVANE_TEST_DATA "/pihole-api/%1.txt").arg(QLatin1String(name)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    const QByteArray text = file.readAll();
    const qsizetype body = text.indexOf("\n{") + 1;
    return text.mid(body, text.indexOf('\n', body) - body);
}

template <class T>
bool isBadResponse(const std::expected<T, PiholeAPIError> &outcome)
{
    return !outcome && outcome.error() == PiholeAPIError::badResponse();
}

QStringList namesOf(const PiholeTopBlocked &top)
{
    QStringList names;
    for (const NameCount &each : top.names)
        names << each.name;
    return names;
}

PiholeQuery asked(const QString &name, const QString &ledTo = {})
{
    PiholeQuery query;
    query.domain = name;
    query.cname = ledTo;
    return query;
}

const QList<QByteArray> kOdd = {"", "null", "[]", "{", "\xff\xfe", QByteArray(100000, '[')};

} // namespace

TEST(HistoryAnswer, A_recorded_day_has_145_slots_that_begin_at_round_times)
{
    const auto day = parseHistory(recorded("40d-history-day"));
    ASSERT_TRUE(day);
    ASSERT_EQ(day->size(), 145);
    // 1795202700 is the middle of its slot.
    EXPECT_EQ(day->first(), (PiholeSlot{1795202400, 141, 17}));
    for (qsizetype i = 1; i < day->size(); ++i)
        EXPECT_EQ(day->at(i).start - day->at(i - 1).start, 600);
}

TEST(HistoryAnswer, An_odd_slot_does_not_hide_the_others)
{
    const auto day =
        parseHistory(R"({"history":[{"timestamp":900,"total":4,"blocked":1},7,null,{"timestamp":"x"},)"
                     R"({"timestamp":1500,"total":-4,"blocked":1},{"timestamp":1e300,"total":1,"blocked":0},)"
                     R"({"timestamp":-900,"total":1,"blocked":0},{"timestamp":2100,"total":1e18,"blocked":0}]})");
    ASSERT_TRUE(day);
    EXPECT_EQ(*day, (PiholeHistory{{600, 4, 1}}));
}

TEST(HistoryAnswer, Slots_come_in_their_order_and_each_once)
{
    const auto day =
        parseHistory(R"({"history":[{"timestamp":1500,"total":2,"blocked":0},)"
                     R"({"timestamp":900,"total":1,"blocked":0},{"timestamp":900,"total":9,"blocked":0}]})");
    ASSERT_TRUE(day);
    EXPECT_EQ(*day, (PiholeHistory{{600, 1, 0}, {1200, 2, 0}}));
}

TEST(HistoryAnswer, No_slot_has_more_blocked_than_asked)
{
    EXPECT_EQ(parseHistory(R"({"history":[{"timestamp":900,"total":4,"blocked":9}]})")->first(),
              (PiholeSlot{600, 4, 4}));
}

TEST(HistoryAnswer, An_endless_list_is_cut_off)
{
    QByteArray json = R"({"history":[{"timestamp":900,"total":1,"blocked":0})";
    for (int i = 1; i < 5000; ++i)
        json += R"(,{"timestamp":)" + QByteArray::number(900 + 600 * i) + R"(,"total":1,"blocked":0})";
    EXPECT_EQ(parseHistory(json + "]}")->size(), 1000);
}

TEST(HistoryAnswer, Anything_else_is_not_understood)
{
    for (const QByteArray &json : kOdd)
        EXPECT_TRUE(isBadResponse(parseHistory(json))) << json.left(20).constData();
    for (const char *json : {"{}", R"({"history":{}})", R"({"history":[1]})", R"({"history":[{}]})"})
        EXPECT_TRUE(isBadResponse(parseHistory(json))) << json;
}

TEST(TopBlockedAnswer, The_recorded_names_come_with_their_numbers)
{
    const auto top = parseTopBlocked(recorded("42c-top-domains-blocked"));
    ASSERT_TRUE(top);
    EXPECT_FALSE(top->hidden);
    ASSERT_EQ(top->names.size(), 10);
    EXPECT_EQ(top->names.at(1), (NameCount{u"stats.g.doubleclick.net"_s, 4}));
}

TEST(TopBlockedAnswer, A_pihole_that_tells_no_names_is_told_from_one_that_blocked_none)
{
    EXPECT_TRUE(parseTopBlocked(R"({"domains":[],"total_queries":-1,"blocked_queries":-1})")->hidden);
    EXPECT_FALSE(parseTopBlocked(R"({"domains":[],"total_queries":5,"blocked_queries":0})")->hidden);
}

TEST(TopBlockedAnswer, What_is_no_name_is_left_out)
{
    const auto top =
        parseTopBlocked(R"({"domains":[{"domain":"a.example","count":3},{"domain":"","count":2},)"
                        R"({"domain":"x\ny","count":2},{"domain":"\u202eevil","count":2},{"domain":5,"count":2},)"
                        R"({"domain":"b.example","count":-2},{"domain":")" +
                        QByteArray(256, 'a') + R"(","count":2}],"total_queries":1})");
    ASSERT_TRUE(top);
    EXPECT_EQ(namesOf(*top), QStringList{u"a.example"_s});
}

TEST(TopBlockedAnswer, Anything_else_is_not_understood)
{
    for (const QByteArray &json : kOdd)
        EXPECT_TRUE(isBadResponse(parseTopBlocked(json))) << json.left(20).constData();
    EXPECT_TRUE(isBadResponse(parseTopBlocked(R"({"domains":[{}]})")));
}

TEST(AskedFor, A_name_that_only_others_led_to_is_left_out)
{
    const auto top = parseTopBlocked(recorded("42c-top-domains-blocked"));
    const auto questions = parseQueries(recorded("41a-queries-blocked-since"));
    const PiholeTopBlocked shown = askedFor(*top, *questions);
    EXPECT_FALSE(namesOf(shown).contains(u"stats.g.doubleclick.net"_s)) << "nobody asked for it";
    EXPECT_EQ(shown.names.first(), (NameCount{u"doubleclick.net"_s, 9}));
    EXPECT_EQ(shown.names.at(1), (NameCount{u"metrics.example.org"_s, 3}));
}

TEST(AskedFor, A_name_that_was_asked_as_well_counts_as_often_as_it_was_asked)
{
    const PiholeTopBlocked counted{{{u"t.example"_s, 40}, {u"a.example"_s, 20}}, false};
    const QList<PiholeQuery> newest{asked(u"t.example"_s), asked(u"a.example"_s, u"t.example"_s),
                                    asked(u"a.example"_s, u"t.example"_s), asked(u"b.example"_s, u"t.example"_s)};
    EXPECT_EQ(askedFor(counted, newest).names, (QList<NameCount>{{u"a.example"_s, 20}, {u"t.example"_s, 10}}));
}

TEST(AskedFor, Without_a_word_about_a_name_its_number_stays)
{
    const PiholeTopBlocked counted{{{u"a.example"_s, 2}}, false};
    EXPECT_EQ(askedFor(counted, {}), counted);
    EXPECT_TRUE(askedFor({{}, true}, {}).hidden);
}
