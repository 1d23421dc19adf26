#include "exec/line_splitter.h"

#include <QStringList>
#include <gtest/gtest.h>

#include <vector>

namespace corvane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList linesOf(const std::vector<QByteArray> &chunks)
{
    QStringList lines;
    LineSplitter splitter([&lines](QString line) { lines << line; });
    for (const QByteArray &chunk : chunks)
        splitter.feed(chunk);
    splitter.flush();
    return lines;
}

/// The bytes cut in two, and in three, at every place, and into single bytes: all give the same lines.
void expectSameHoweverCut(const QByteArray &bytes, const QStringList &expected)
{
    ASSERT_EQ(linesOf({bytes}), expected);
    for (qsizetype first = 0; first <= bytes.size(); ++first) {
        for (qsizetype second = first; second <= bytes.size(); ++second) {
            ASSERT_EQ(linesOf({bytes.left(first), bytes.mid(first, second - first), bytes.mid(second)}), expected)
                << "cut at " << first << " and " << second;
        }
    }
    std::vector<QByteArray> single;
    for (const char byte : bytes)
        single.emplace_back(1, byte);
    EXPECT_EQ(linesOf(single), expected);
}

} // namespace

TEST(LineSplitter, Complete_lines_come_at_once_and_the_rest_at_the_flush)
{
    QStringList lines;
    LineSplitter splitter([&lines](QString line) { lines << line; });
    splitter.feed("one\ntwo\nthr");
    EXPECT_EQ(lines, (QStringList{u"one"_s, u"two"_s}));
    splitter.feed("ee");
    EXPECT_EQ(lines.size(), 2);
    splitter.flush();
    EXPECT_EQ(lines.last(), u"three"_s);
}

TEST(LineSplitter, Nothing_gives_nothing)
{
    EXPECT_EQ(linesOf({}), QStringList());
    EXPECT_EQ(linesOf({QByteArray()}), QStringList());
}

TEST(LineSplitter, A_final_line_break_gives_no_empty_line) { EXPECT_EQ(linesOf({"a\n"}), QStringList{u"a"_s}); }

TEST(LineSplitter, Empty_lines_are_lines)
{
    EXPECT_EQ(linesOf({"\n\na\n\n"}), (QStringList{QString(), QString(), u"a"_s, QString()}));
}

TEST(LineSplitter, A_carriage_return_and_line_feed_count_once)
{
    expectSameHoweverCut("a\r\nb", {u"a"_s, u"b"_s});
    expectSameHoweverCut("a\r\n\r\nb\r\n", {u"a"_s, QString(), u"b"_s});
}

TEST(LineSplitter, A_lone_carriage_return_ends_its_line_at_once)
{
    QStringList lines;
    LineSplitter splitter([&lines](QString line) { lines << line; });
    splitter.feed("10%\r");
    EXPECT_EQ(lines, QStringList{u"10%"_s});
    splitter.feed("20%\r");
    EXPECT_EQ(lines, (QStringList{u"10%"_s, u"20%"_s}));
    splitter.feed("\n");
    splitter.flush();
    EXPECT_EQ(lines.size(), 2);
}

TEST(LineSplitter, Carriage_returns_and_line_feeds_in_any_order)
{
    expectSameHoweverCut("a\n\rb\r\rc\r\n\nd", {u"a"_s, QString(), u"b"_s, QString(), u"c"_s, QString(), u"d"_s});
}

TEST(LineSplitter, Every_unicode_line_break_ends_a_line)
{
    const QByteArray bytes = u"a\nb\vc\fd\re\u0085f\u2028g\u2029h"_s.toUtf8();
    expectSameHoweverCut(bytes, {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s, u"g"_s, u"h"_s});
}

TEST(LineSplitter, Other_control_characters_stay_in_their_line)
{
    EXPECT_EQ(linesOf({"a\tb\x1b[0m\x1c\x1e"}), QStringList{u"a\tb\x1b[0m\x1c\x1e"_s});
    EXPECT_EQ(linesOf({QByteArray("a\0b", 3)}), QStringList{QString::fromLatin1("a\0b", 3)});
}

TEST(LineSplitter, Characters_of_every_length_survive_every_cut)
{
    const QString text = u"aäंक€語🐧é\nß𝄞\r\nя"_s;
    expectSameHoweverCut(text.toUtf8(), {u"aäंक€語🐧é"_s, u"ß𝄞"_s, u"я"_s});
}

TEST(LineSplitter, Invalid_bytes_are_repaired)
{
    EXPECT_EQ(linesOf({"a\xff"
                       "b\n\xc3(\n"}),
              (QStringList{u"a\uFFFDb"_s, u"\uFFFD("_s}));
}

TEST(LineSplitter, A_character_that_breaks_off_at_the_end_is_repaired)
{
    EXPECT_EQ(linesOf({"gr\xc3"}), QStringList{u"gr\uFFFD"_s});
    EXPECT_EQ(linesOf({"\xe2\x82"}).join(QString()).left(1), u"\uFFFD"_s);
}

TEST(LineSplitter, An_invalid_sequence_never_swallows_a_line_break)
{
    const QByteArray bytes("a\xf0\x9f\nb\xc3\r\nc\xe2\x80");
    for (qsizetype cut = 0; cut <= bytes.size(); ++cut) {
        const QStringList lines = linesOf({bytes.left(cut), bytes.mid(cut)});
        ASSERT_EQ(lines.size(), 3) << "cut at " << cut;
        EXPECT_EQ(lines.at(0).front(), u'a');
        EXPECT_EQ(lines.at(1).front(), u'b');
        EXPECT_EQ(lines.at(2).front(), u'c');
    }
}

TEST(LineSplitter, A_line_of_50_million_bytes_in_small_chunks_takes_linear_time)
{
    QStringList lines;
    LineSplitter splitter([&lines](QString line) { lines << line; });
    const QByteArray chunk(1000, 'x');
    for (int i = 0; i < 50'000; ++i)
        splitter.feed(chunk);
    EXPECT_TRUE(lines.isEmpty());
    splitter.feed("\n");
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines.first().size(), 50'000'000);
}

TEST(LineSplitter, A_flushed_splitter_starts_afresh)
{
    QStringList lines;
    LineSplitter splitter([&lines](QString line) { lines << line; });
    splitter.feed("a\r");
    splitter.flush();
    splitter.flush();
    splitter.feed("b");
    splitter.flush();
    EXPECT_EQ(lines, (QStringList{u"a"_s, u"b"_s}));
}

} // namespace corvane::test
