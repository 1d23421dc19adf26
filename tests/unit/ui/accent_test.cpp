#include "ui/accent.h"

#include <gtest/gtest.h>

namespace corvane {

namespace {

QPalette accented(const QColor &color)
{
    QPalette palette;
    palette.setColor(QPalette::Highlight, color);
    return palette;
}

TEST(Accent, Contrast_runs_from_1_to_21)
{
    EXPECT_DOUBLE_EQ(contrast(Qt::white, Qt::white), 1);
    EXPECT_NEAR(contrast(Qt::white, Qt::black), 21, 0.01);
    EXPECT_DOUBLE_EQ(contrast(Qt::black, Qt::white), contrast(Qt::white, Qt::black));
}

TEST(Accent, Is_the_colour_that_the_user_chose)
{
    EXPECT_EQ(accentColor(accented(QColor(200, 30, 90))), QColor(200, 30, 90));
}

TEST(Accent, White_text_can_be_read_on_it_whatever_the_colour)
{
    for (int hue = 0; hue < 360; hue += 10) {
        for (const int lightness : {60, 128, 200, 255})
            EXPECT_GE(contrast(accentFill(accented(QColor::fromHsl(hue, 255, lightness))), Qt::white), 4.5)
                << hue << ' ' << lightness;
    }
}

} // namespace

} // namespace corvane
