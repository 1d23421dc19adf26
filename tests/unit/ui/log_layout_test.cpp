#include "ui/log/log_layout.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace corvane::test {

namespace {

using Place = LogLayout::Place;

TEST(LogLayout, Breaks_lines_into_rows_and_gives_an_empty_line_one)
{
    LogLayout layout;
    layout.reset({QStringLiteral("abcdef"), {}, QStringLiteral("abcdefg")}, 3);
    EXPECT_EQ(layout.rowCount(), 2 + 1 + 3);
    EXPECT_EQ(layout.start(1), (Place{0, 3}));
    EXPECT_EQ(layout.start(2), (Place{1, 0}));
    EXPECT_EQ(layout.start(5), (Place{2, 6}));
}

TEST(LogLayout, Finds_the_row_of_a_place)
{
    LogLayout layout;
    layout.reset({QStringLiteral("abcdef"), {}, QStringLiteral("abcdefg")}, 3);
    EXPECT_EQ(layout.rowOf({0, 2}), 0);
    EXPECT_EQ(layout.rowOf({0, 6}), 1);
    EXPECT_EQ(layout.rowOf({1, 0}), 2);
    EXPECT_EQ(layout.rowOf({2, 7}), 5);
    EXPECT_EQ(layout.rowOf({9, 0}), 6);
}

TEST(LogLayout, Following_a_change_is_the_same_as_laying_out_anew)
{
    QStringList lines;
    LogLayout followed;
    followed.reset(lines, 7);
    for (int i = 0; i < 300; ++i) {
        const int removed = i % 3 == 0 ? std::min<int>(i % 5, static_cast<int>(lines.size())) : 0;
        lines = lines.mid(removed);
        for (int n = 0; n < i % 4; ++n)
            lines << QString(i * 7 % 40, u'x');
        followed.change(lines, removed, i % 4);
        LogLayout anew;
        anew.reset(lines, 7);
        ASSERT_EQ(followed.rowCount(), anew.rowCount()) << i;
        ASSERT_EQ(followed.start(followed.rowCount() / 2), anew.start(anew.rowCount() / 2)) << i;
    }
}

TEST(LogLayout, Copies_whole_lines_however_they_were_broken)
{
    const QStringList lines{QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third")};
    EXPECT_EQ(textBetween(lines, {0, 2}, {2, 3}), QStringLiteral("rst\nsecond\nthi"));
    EXPECT_EQ(textBetween(lines, {2, 3}, {0, 2}), QStringLiteral("rst\nsecond\nthi"));
    EXPECT_EQ(textBetween(lines, {1, 1}, {1, 1}), QString());
    EXPECT_EQ(textBetween(lines, {1, 0}, {7, 0}), QStringLiteral("second\nthird"));
}

TEST(LogLayout, Every_place_has_an_offset_and_every_offset_a_place)
{
    const QStringList lines{QStringLiteral("first"), {}, QStringLiteral("third")};
    const QString joined = lines.join(u'\n');
    ASSERT_EQ(sizeOf(lines), joined.size());
    for (int offset = 0; offset <= joined.size(); ++offset) {
        const Place place = placeOf(lines, offset);
        EXPECT_EQ(offsetOf(lines, place), offset);
        EXPECT_EQ(textBetween(lines, {}, place), joined.first(offset));
    }
    EXPECT_EQ(placeOf(lines, 99), (Place{2, 5}));
    EXPECT_EQ(placeOf(lines, -1), Place());
    EXPECT_EQ(sizeOf({}), 0);
    EXPECT_EQ(placeOf({}, 3), Place());
}

TEST(LogLayout, A_place_that_is_not_there_is_brought_to_the_nearest)
{
    const QStringList lines{QStringLiteral("first"), QStringLiteral("second")};
    EXPECT_EQ(within(lines, {0, 9}), (Place{0, 5}));
    EXPECT_EQ(within(lines, {2, 0}), (Place{1, 6}));
    EXPECT_EQ(within(lines, {1, 2}), (Place{1, 2}));
    EXPECT_EQ(within({}, {1, 2}), Place());
}

TEST(LogLayout, Draws_a_blank_for_signs_without_a_picture)
{
    EXPECT_EQ(drawable(QStringLiteral("a\tb\x1b[1m")), QStringLiteral("a b [1m"));
}

} // namespace

} // namespace corvane::test
