#include "api/http_answer_reader.h"

#include <gtest/gtest.h>

using namespace corvane;
using State = HttpAnswerReader::State;

namespace {

const QByteArray kMeasured = "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello";
const QByteArray kChunked =
    "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3;x=y\r\nhel\r\n02\r\nlo\r\n0\r\nTrailer: "
    "1\r\n\r\n";
const QByteArray kToTheEnd = "HTTP/1.1 200 OK\r\n\r\nhello";

State read(const QByteArray &bytes, qint64 largest = 1000)
{
    HttpAnswerReader reader(largest);
    return reader.feed(bytes);
}

QByteArray withHeader(const QByteArray &line) { return "HTTP/1.1 200 OK\r\n" + line + "\r\n\r\nhello"; }

} // namespace

TEST(HttpAnswerReader, Every_way_to_split_an_answer_gives_the_same)
{
    for (const QByteArray &bytes : {kMeasured, kChunked, kToTheEnd}) {
        for (qsizetype first = 0; first <= bytes.size(); ++first) {
            for (qsizetype step : {qsizetype{1}, qsizetype{3}, bytes.size()}) {
                HttpAnswerReader reader(1000);
                reader.feed(bytes.left(first));
                for (qsizetype at = first; at < bytes.size(); at += step)
                    reader.feed(bytes.mid(at, step));
                EXPECT_EQ(reader.finish(), State::Complete) << bytes.constData() << first << ' ' << step;
                EXPECT_EQ(reader.answer().status, 200);
                EXPECT_EQ(reader.answer().body, "hello");
            }
        }
    }
}

TEST(HttpAnswerReader, A_measured_or_chunked_answer_needs_no_end_of_the_connection)
{
    EXPECT_EQ(read(kMeasured), State::Complete);
    EXPECT_EQ(read(kChunked), State::Complete);
    EXPECT_EQ(read(kToTheEnd), State::Reading);
}

TEST(HttpAnswerReader, A_body_of_just_the_limit_is_taken_and_one_more_byte_is_not)
{
    for (const QByteArray &bytes : {kMeasured, kChunked, kToTheEnd}) {
        EXPECT_NE(read(bytes, 5), State::TooLarge) << bytes.constData();
        EXPECT_EQ(read(bytes, 4), State::TooLarge) << bytes.constData();
    }
}

TEST(HttpAnswerReader, A_promise_of_too_much_is_refused_before_a_byte_of_it_came)
{
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\nContent-Length: 1001\r\n\r\n"), State::TooLarge);
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\nContent-Length: 9223372036854775807\r\n\r\n"), State::TooLarge);
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n7fffffffffffffff\r\n"), State::TooLarge);
}

TEST(HttpAnswerReader, A_head_may_not_grow_without_end)
{
    EXPECT_EQ(read(QByteArray(70000, 'x')), State::Malformed);
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\nX: " + QByteArray(70000, 'x')), State::Malformed);
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\n" + QByteArray("X: y\r\n").repeated(20000)), State::Malformed);
    EXPECT_EQ(read(QByteArray("HTTP/1.1 100 Continue\r\n\r\n").repeated(5000)), State::Malformed);
    EXPECT_EQ(read(kChunked.chopped(2) + QByteArray("X: y\r\n").repeated(20000)), State::Malformed);
    EXPECT_EQ(read(withHeader("X: " + QByteArray(60000, 'x') + "\r\nContent-Length: 5")), State::Complete);
    EXPECT_EQ(read(withHeader("X: " + QByteArray(66000, 'x') + "\r\nContent-Length: 5")), State::Malformed);
}

TEST(HttpAnswerReader, A_chunk_line_may_not_grow_without_end)
{
    const QByteArray head = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    EXPECT_EQ(read(head + QByteArray(2000, '0')), State::Malformed);
    EXPECT_EQ(read(head + "1;" + QByteArray(2000, 'x')), State::Malformed);
}

TEST(HttpAnswerReader, An_answer_cut_off_is_none)
{
    for (const QByteArray &bytes : {kMeasured, kChunked}) {
        for (qsizetype length = 0; length < bytes.size(); ++length) {
            HttpAnswerReader reader(1000);
            reader.feed(bytes.left(length));
            EXPECT_EQ(reader.finish(), State::Malformed) << bytes.left(length).constData();
        }
    }
}

TEST(HttpAnswerReader, Words_before_the_answer_proper_are_skipped)
{
    HttpAnswerReader reader(1000);
    EXPECT_EQ(reader.feed("HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 103 Early\r\nLink: x\r\n\r\n" + kMeasured),
              State::Complete);
    EXPECT_EQ(reader.answer().status, 200);
    EXPECT_EQ(reader.answer().body, "hello");
}

TEST(HttpAnswerReader, Some_statuses_never_have_a_body)
{
    for (const char *status : {"204", "304"})
        EXPECT_EQ(read("HTTP/1.1 " + QByteArray(status) + " X\r\nContent-Length: 5\r\n\r\n"), State::Complete)
            << status;
}

TEST(HttpAnswerReader, Lines_may_end_in_a_bare_line_feed)
{
    EXPECT_EQ(read("HTTP/1.1 200 OK\nContent-Length: 5\n\nhello"), State::Complete);
}

TEST(HttpAnswerReader, A_first_line_of_another_kind_is_malformed)
{
    for (const char *line : {"", "HTTP/1.1", "HTTP/1.1 20", "HTTP/1.1 2000 OK", "HTTP/1.1 099 X", "HTTP/2.0 200 OK",
                             "HTTP/1.2 200 OK", "http/1.1 200 OK", " HTTP/1.1 200 OK", "HTTP/1.1  200 OK",
                             "HTTP/1.1 200OK", "HTTP/1.1 -20 OK", "SSH-2.0-x", "HTTP/1.1 101 Upgrade"})
        EXPECT_EQ(read(QByteArray(line) + "\r\n\r\n"), State::Malformed) << line;
}

TEST(HttpAnswerReader, A_header_that_cannot_be_understood_is_malformed)
{
    for (const char *line :
         {"no colon", ": no name", " folded: yes", "space : x", "Content-Length: -1", "Content-Length: 5 ,5",
          "Content-Length: 0x5", "Content-Length:", "Content-Length: +5", "Content-Length: 5\r\nContent-Length: 6",
          "Content-Length: 99999999999999999999", "Transfer-Encoding: gzip", "Transfer-Encoding: gzip, chunked",
          "Transfer-Encoding: chunked\r\nTransfer-Encoding: chunked"})
        EXPECT_EQ(read(withHeader(line)), State::Malformed) << line;
}

TEST(HttpAnswerReader, The_same_length_said_twice_is_fine)
{
    EXPECT_EQ(read(withHeader("Content-Length: 5\r\ncontent-length:5")), State::Complete);
}

TEST(HttpAnswerReader, Rubbish_between_chunks_is_malformed)
{
    const QByteArray head = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    for (const char *chunks : {"zz\r\n", "-1\r\n", "\r\n", "3\r\nhello\r\n", "0x3\r\nhel\r\n", "fffffffffffffffff\r\n"})
        EXPECT_EQ(read(head + chunks), State::Malformed) << chunks;
}

TEST(HttpAnswerReader, Only_a_clean_answer_leaves_the_connection_for_another)
{
    const auto reusable = [](const QByteArray &bytes) {
        HttpAnswerReader reader(1000);
        reader.feed(bytes);
        return reader.reusable();
    };
    EXPECT_TRUE(reusable(kMeasured));
    EXPECT_TRUE(reusable(kChunked));
    EXPECT_FALSE(reusable(kMeasured + "x"));
    EXPECT_FALSE(reusable(kMeasured.chopped(1)));
    EXPECT_FALSE(reusable(kToTheEnd));
    HttpAnswerReader ended(1000);
    ended.feed(kToTheEnd);
    ASSERT_EQ(ended.finish(), State::Complete);
    EXPECT_FALSE(ended.reusable());
    EXPECT_FALSE(reusable(QByteArray(kMeasured).replace("1.1", "1.0")));
    EXPECT_FALSE(reusable(withHeader("Connection: Close\r\nContent-Length: 5")));
}

TEST(HttpAnswerReader, The_headers_of_an_interim_answer_say_nothing_about_the_last_one)
{
    for (const char *header : {"Content-Length: 3", "Transfer-Encoding: chunked"}) {
        HttpAnswerReader reader(1000);
        reader.feed(QByteArray("HTTP/1.1 100 Continue\r\n") + header + "\r\n\r\n" + kToTheEnd);
        EXPECT_EQ(reader.finish(), State::Complete) << header;
        EXPECT_EQ(reader.answer().body, "hello") << header;
    }
}

TEST(HttpAnswerReader, A_head_that_readers_could_take_in_two_ways_is_refused)
{
    for (const char *header : {"A\rContent-Length: 3", "A: b\rContent-Length: 3", "A:\rContent-Length: 3",
                               "Set\x01-A: b", "A: b\x0b", ": b", "A(b): c", "A\x7f: b", "A: \x7f"})
        EXPECT_EQ(read(withHeader(header)), State::Malformed) << header;
    EXPECT_EQ(read(withHeader(QByteArray("A: b\0c", 6))), State::Malformed);
    EXPECT_NE(read(withHeader("A-!#$%&'*+.^_`|~1: \tb\xc3\xa4 \t")), State::Malformed);
}

TEST(HttpAnswerReader, A_chunk_ends_with_both_bytes_of_its_line_break)
{
    const QByteArray head = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    EXPECT_EQ(read(head + "3\r\nhel\r\n0\r\n\r\n"), State::Complete);
    EXPECT_EQ(read(head + "3\r\nhel\n0\r\n\r\n"), State::Malformed);
    EXPECT_EQ(read(head + "3\nhel\r\n0\r\n\r\n"), State::Malformed);
}
