#include "platform/status_item.h"
#include "tests/mac/played/diary.h"
#include "tests/mac/played/mac.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

using played::Diary;
using played::Mac;

/// The Mac's item in the menu bar.
class MacStatusItem : public testing::Test {
protected:
    MacStatusItem() { m_beginning = Diary::take(); }

    /// A picture of one colour that notes the scale it was asked for.
    void show(Qt::GlobalColor color)
    {
        m_item->setPicture([this, color](double scale) {
            m_scales << scale;
            QImage image(qRound(16 * scale), qRound(16 * scale), QImage::Format_ARGB32);
            image.fill(color);
            return image;
        });
    }

    std::unique_ptr<StatusItem> m_item = systemStatusItem();
    QStringList m_beginning;
    QList<double> m_scales;
};

TEST_F(MacStatusItem, It_is_square_and_keeps_the_place_that_the_user_gave_it)
{
    EXPECT_EQ(m_beginning, (QStringList{QStringLiteral("item of length -2"),
                                        QStringLiteral("place remembered as CorvaneStatusItem")}));
}

TEST_F(MacStatusItem, The_picture_is_16_points_upright_and_keeps_its_colour)
{
    show(Qt::green);
    EXPECT_EQ(Diary::take(), (QStringList{QStringLiteral("image 16x16 flipped=0"), QStringLiteral("template=0"),
                                          QStringLiteral("shown")}));
}

TEST_F(MacStatusItem, The_picture_is_drawn_for_the_scale_of_each_screen)
{
    show(Qt::green);
    for (const double scale : {1.0, 2.0}) {
        const QImage drawn = Mac::drawn(scale);
        EXPECT_EQ(drawn.width(), qRound(16 * scale));
        EXPECT_EQ(drawn.pixelColor(drawn.width() / 2, 0), QColor(Qt::green)) << "it fills its place";
    }
    EXPECT_EQ(m_scales, (QList<double>{1.0, 2.0}));
}

TEST_F(MacStatusItem, A_new_picture_takes_the_place_of_the_old_one)
{
    show(Qt::green);
    show(Qt::red);
    EXPECT_EQ(Mac::drawn(2).pixelColor(5, 5), QColor(Qt::red));
}

TEST_F(MacStatusItem, What_is_spoken_is_also_the_tool_tip)
{
    m_item->setSpokenName(QStringLiteral("Pi-hole is stopped"));
    EXPECT_EQ(Diary::take(), (QStringList{QStringLiteral("spoken Pi-hole is stopped"),
                                          QStringLiteral("tool tip Pi-hole is stopped")}));
}

TEST_F(MacStatusItem, It_leaves_the_menu_bar_with_its_owner)
{
    m_item.reset();
    EXPECT_EQ(Diary::take(), QStringList{QStringLiteral("removed")});
}

} // namespace

} // namespace corvane::test
