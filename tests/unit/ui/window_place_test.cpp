#include "ui/window_place.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

const QSize kMinimum(860, 620);
const QRect kScreen(0, 25, 1440, 800);
const QRect kOther(1440, 0, 1920, 1080);

TEST(WindowPlace, A_frame_that_still_fits_stays_where_it_was)
{
    const QRect frame(100, 60, 980, 720);
    EXPECT_EQ(placeOn({kScreen}, frame, kMinimum), frame);
    const QRect beside(1500, 200, 1200, 800);
    EXPECT_EQ(placeOn({kScreen, kOther}, beside, kMinimum), beside);
}

TEST(WindowPlace, A_frame_of_a_screen_that_is_gone_comes_to_the_first_one)
{
    const QRect frame = placeOn({kScreen}, {1500, 200, 1200, 700}, kMinimum);
    EXPECT_TRUE(kScreen.contains(frame));
    EXPECT_EQ(frame.size(), QSize(1200, 700));
}

TEST(WindowPlace, A_frame_that_hangs_over_an_edge_is_moved_back)
{
    for (const QPoint &place : {QPoint(-500, 100), QPoint(1000, 100), QPoint(100, -300), QPoint(100, 700)})
        EXPECT_TRUE(kScreen.contains(placeOn({kScreen}, {place, QSize(980, 720)}, kMinimum)))
            << place.x() << ' ' << place.y();
}

TEST(WindowPlace, A_size_is_never_below_the_smallest_nor_beyond_the_screen)
{
    EXPECT_EQ(placeOn({kScreen}, {100, 100, 10, 10}, kMinimum).size(), kMinimum);
    EXPECT_EQ(placeOn({kScreen}, {0, 25, 5000, 5000}, kMinimum), kScreen);
    const QRect small(0, 0, 640, 480);
    EXPECT_EQ(placeOn({small}, {100, 100, 900, 700}, kMinimum), QRect(QPoint(0, 0), kMinimum));
}

TEST(WindowPlace, Without_a_screen_nothing_changes)
{
    EXPECT_EQ(placeOn({}, {1, 2, 900, 700}, kMinimum), QRect(1, 2, 900, 700));
}

TEST(WindowPlace, A_frame_is_written_and_read_back)
{
    const QRect frame(-40, 12, 980, 720);
    EXPECT_EQ(frameFromText(textFromFrame(frame)), frame);
}

TEST(WindowPlace, Rubbish_is_no_frame)
{
    for (const char *text : {"", " ", "1 2 3", "1 2 3 4 5", "a b c d", "1 2 0 5", "1 2 -3 4", "1 2 99999999999 4",
                             "900000 0 100 100", "1,2,3,4"})
        EXPECT_FALSE(frameFromText(QString::fromLatin1(text))) << text;
}

} // namespace

} // namespace corvane::test
