#include "ui/accent.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

TEST(Accent, Contrast_runs_from_1_to_21)
{
    EXPECT_DOUBLE_EQ(contrast(Qt::white, Qt::white), 1);
    EXPECT_NEAR(contrast(Qt::white, Qt::black), 21, 0.01);
    EXPECT_DOUBLE_EQ(contrast(Qt::black, Qt::white), contrast(Qt::white, Qt::black));
}

class AnyAccent : public testing::TestWithParam<int> {
protected:
    [[nodiscard]] static QList<QColor> colors()
    {
        QList<QColor> colors;
        for (const int lightness : {0, 60, 128, 200, 255})
            colors << QColor::fromHsl(GetParam(), 255, lightness);
        return colors;
    }
};

TEST_P(AnyAccent, Carries_white_text)
{
    for (const QColor &color : colors())
        EXPECT_GE(contrast(accentFill(color), Qt::white), 4.5) << color.name().toStdString();
}

TEST_P(AnyAccent, Is_seen_on_light_and_dark_surfaces)
{
    for (const QColor &color : colors()) {
        EXPECT_GE(contrast(accentMark(color, false), Qt::white), 3) << color.name().toStdString();
        EXPECT_GE(contrast(accentMark(color, true), QColor(0x2a, 0x2a, 0x2c)), 3) << color.name().toStdString();
    }
}

TEST_P(AnyAccent, Lets_a_white_knob_be_seen)
{
    for (const QColor &color : colors())
        for (const bool dark : {false, true})
            EXPECT_GE(contrast(accentTrack(color, dark), Qt::white), 3) << color.name().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Hues, AnyAccent, testing::Range(0, 360, 15));

TEST(Accent, Stays_as_it_is_where_it_can_be_seen)
{
    const QColor blue(0x00, 0x7a, 0xff);
    EXPECT_EQ(accentMark(blue, true), blue);
    EXPECT_EQ(accentTrack(blue, true), blue);
}

} // namespace

} // namespace corvane::test
