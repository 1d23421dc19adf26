#include "remote/request.h"

#include <gtest/gtest.h>

#include <random>

namespace corvane::remote {
namespace {

using Kind = Request::Kind;
using std::chrono::seconds;

TEST(Request, Is_read_as_it_was_written)
{
    for (const Request &request :
         {Request{Kind::Show}, Request{Kind::Status}, Request{Kind::Pause, seconds(30)},
          Request{Kind::Pause, kLongestPause}, Request{Kind::Resume}, Request{Kind::RestoreDns}}) {
        const QByteArray line = encode(request);
        EXPECT_TRUE(line.endsWith('\n'));
        EXPECT_LE(line.size(), kLongestRequest);
        EXPECT_EQ(decodeRequest(line.chopped(1)), request) << line.constData();
    }
}

TEST(Request, Is_none_in_other_words)
{
    for (const char *line :
         {"", " ", "show ", " show", "SHOW", "show 5m", "status --json", "pause", "pause ", "pause 5", "pause -5m",
          "pause 5m 5m", "pause  5m", "resume now", "quit", "restore-dns\r", "{}"})
        EXPECT_FALSE(decodeRequest(line)) << line;
    EXPECT_FALSE(decodeRequest(QByteArray("status\0", 7)));
}

TEST(Request, Of_random_bytes_never_is_a_longer_pause_than_a_day)
{
    std::mt19937 random(5);
    const QByteArray pieces = "pause showresume 0123456789smh\n\0\xff-";
    for (int i = 0; i < 200'000; ++i) {
        QByteArray line = i % 2 ? "pause " : "";
        for (std::size_t n = random() % 12; n > 0; --n)
            line += pieces[static_cast<qsizetype>(random() % static_cast<std::size_t>(pieces.size()))];
        const auto request = decodeRequest(line);
        if (!request || request->kind != Kind::Pause) continue;
        EXPECT_GT(request->length.count(), 0) << line.constData();
        EXPECT_LE(request->length, kLongestPause) << line.constData();
    }
}

TEST(Length, Is_a_number_and_a_unit)
{
    EXPECT_EQ(readLength("30s"), seconds(30));
    EXPECT_EQ(readLength("5m"), seconds(300));
    EXPECT_EQ(readLength("1h"), seconds(3600));
    EXPECT_EQ(readLength("24h"), kLongestPause);
    EXPECT_EQ(readLength("86400s"), kLongestPause);
}

TEST(Length, Is_none_without_a_unit_of_nothing_or_of_more_than_a_day)
{
    for (const char *text : {"", "s", "m", "5", "0s", "00m", "25h", "86401s", "99999h", "100000s", "5 m", "+5m", "-1h",
                             "5.5m", "5M", "5d", "0x5m", "\xd9\xa5m"})
        EXPECT_FALSE(readLength(text)) << text;
}

} // namespace
} // namespace corvane::remote
