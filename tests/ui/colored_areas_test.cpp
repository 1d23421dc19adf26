#include "ui/history/colored_areas.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <gtest/gtest.h>

namespace corvane::test {

namespace {

constexpr int kLeft = 60;
constexpr int kTop = 40;

/// An item that draws areas and stands away from its window's corner.
class Drawing : public QQuickItem {
public:
    Drawing()
    {
        setFlag(ItemHasContents);
        setPosition({kLeft, kTop});
        setSize({100, 100});
    }

    void show(const ColoredAreas &areas)
    {
        m_areas = areas;
        update();
    }

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *) override
    {
        return showAreas(*window(), old, m_areas);
    }

private:
    ColoredAreas m_areas;
};

ColoredArea square(int place, const QColor &color) { return {QRectF(place, place, 10, 10), color}; }

QColor middleOf(const QImage &picture, int place) { return picture.pixelColor(place + 5, place + 5); }

} // namespace

TEST(ColoredAreas, Are_in_their_place_also_when_they_come_later)
{
    QQuickWindow window;
    window.setColor(Qt::white);
    window.resize(200, 200);
    Drawing drawing;
    drawing.setParentItem(window.contentItem());
    drawing.show({square(0, Qt::red)});
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const QColor before = window.grabWindow().pixelColor(kLeft + 5, kTop + 5);
    EXPECT_EQ(before.name().toStdString(), "#ff0000");

    drawing.show({square(0, Qt::red), square(20, Qt::green), square(40, Qt::blue)});
    const QImage picture = window.grabWindow();
    const QImage item = picture.copy(kLeft, kTop, 100, 100);
    EXPECT_EQ(middleOf(item, 0).name().toStdString(), "#ff0000");
    EXPECT_EQ(middleOf(item, 20).name().toStdString(), "#00ff00");
    EXPECT_EQ(middleOf(item, 40).name().toStdString(), "#0000ff");
    EXPECT_EQ(middleOf(picture, 20).name().toStdString(), "#ffffff") << "the window's corner is empty";

    drawing.show({square(20, Qt::green)});
    const QImage fewer = window.grabWindow().copy(kLeft, kTop, 100, 100);
    EXPECT_EQ(middleOf(fewer, 0).name().toStdString(), "#ffffff");
    EXPECT_EQ(middleOf(fewer, 20).name().toStdString(), "#00ff00");
    EXPECT_EQ(middleOf(fewer, 40).name().toStdString(), "#ffffff");
}

} // namespace corvane::test
