#include "tests/ui/screen.h"
#include "tests/ui/states.h"
#include "ui/accent.h"

#include <QApplication>
#include <QTest>

namespace corvane::test {

namespace {

struct NamedAccent {
    const char *name;
    QRgb light;
    QRgb dark;
};

/// The eight that System Settings offers.
constexpr NamedAccent kAccents[] = {
    {"blue", 0xff007aff, 0xff0a84ff},  {"purple", 0xff953d96, 0xffa550a7},   {"pink", 0xfff74f9e, 0xfff74f9e},
    {"red", 0xffe0383e, 0xffff5257},   {"orange", 0xfff7821b, 0xfff7821b},   {"yellow", 0xffffc726, 0xffffc600},
    {"green", 0xff62ba46, 0xff62ba46}, {"graphite", 0xff989898, 0xff8c8c8c},
};

/// The colour that lies behind an item.
QColor surface(const QQuickItem *item)
{
    for (const QQuickItem *place = item->parentItem(); place; place = place->parentItem()) {
        const QColor color = place->property("color").value<QColor>();
        if (color.alpha() == 255 && qobject_cast<const QQuickItem *>(place)->inherits("QQuickRectangle")) return color;
    }
    return item->window()->color();
}

QColor over(const QColor &color, const QColor &below)
{
    const auto mix = [&](float top, float bottom) { return top * color.alphaF() + bottom * (1 - color.alphaF()); };
    return QColor::fromRgbF(mix(color.redF(), below.redF()), mix(color.greenF(), below.greenF()),
                            mix(color.blueF(), below.blueF()));
}

/// Every control that wears the accent colour. Selected text has another colour all the while.
class AccentOnScreen : public Screen, public testing::WithParamInterface<std::tuple<NamedAccent, bool>> {
protected:
    void SetUp() override
    {
        const auto &[accent, dark] = GetParam();
        setDark(dark);
        QPalette palette = QApplication::palette();
        palette.setColor(QPalette::Highlight, QColor(0xb3, 0xd7, 0xff));
        QApplication::setPalette(palette);
        m_appearance.color = QColor(dark ? accent.dark : accent.light);
        Q_EMIT m_appearance.changed();
    }

    [[nodiscard]] QList<const QQuickItem *> ofKind(const char *kind) const
    {
        QList<const QQuickItem *> found;
        for (const QQuickItem *item : itemsOf(window()->contentItem()))
            if (inSight(item) && QByteArray(item->metaObject()->className()).startsWith(kind)) found << item;
        return found;
    }

    [[nodiscard]] static QColor colorOf(const QQuickItem *item) { return item->property("color").value<QColor>(); }

    void expectRingSeen(const QString &control)
    {
        find(control)->forceActiveFocus(Qt::TabFocusReason);
        const auto rings = ofKind("FocusRing");
        ASSERT_FALSE(rings.isEmpty()) << qPrintable(control);
        for (const QQuickItem *ring : rings) {
            const QColor border = ring->property("border").value<QObject *>()->property("color").value<QColor>();
            const QQuickItem *box = find(control)->parentItem();
            EXPECT_GE(contrast(over(border, surface(box)), surface(box)), 3) << qPrintable(control);
        }
    }
};

TEST_P(AccentOnScreen, Default_buttons_can_be_read)
{
    openStep(3);
    int prominent = 0;
    for (const QQuickItem *button : ofKind("PushButton")) {
        if (!button->property("prominent").toBool()) continue;
        const QColor fill = colorOf(button->property("background").value<QQuickItem *>());
        EXPECT_GE(contrast(fill, button->property("inked").value<QColor>()), 4.5) << qPrintable(button->objectName());
        ++prominent;
    }
    EXPECT_EQ(prominent, 2);
    expectRingSeen(QStringLiteral("nextButton"));
}

TEST_P(AccentOnScreen, Switches_tell_on_from_off)
{
    m_windows.openSettings();
    lookAt(m_windows.settings());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window()));
    const auto track = [this] {
        return find(QStringLiteral("launchAtLoginSwitch"))->property("indicator").value<QQuickItem *>();
    };
    const QColor off = colorOf(track());
    m_app.setLaunchAtLogin(true);
    const QColor on = colorOf(track());
    EXPECT_GE(contrast(on, surface(track())), 3);
    EXPECT_GE(contrast(on, colorOf(track()->childItems().first())), 3);
    EXPECT_GE(contrast(on, off), 1.5);
    expectRingSeen(QStringLiteral("launchAtLoginSwitch"));
    lookAt(nullptr);
}

TEST_P(AccentOnScreen, The_current_step_can_be_read)
{
    openStep(1);
    const QQuickItem *step = find(QStringLiteral("step2"));
    const QColor tint = colorOf(step->property("background").value<QQuickItem *>());
    const QColor behind = over(tint, surface(step));
    for (const QQuickItem *item : itemsOf(find(QStringLiteral("step2")))) {
        const bool isText = item->inherits("QQuickText");
        if (!inSight(item) || (!isText && !item->inherits("corvane::Symbol"))) continue;
        EXPECT_GE(contrast(colorOf(item), behind), isText ? 4.5 : 3) << item->metaObject()->className();
    }
    find(QStringLiteral("step2"))->forceActiveFocus(Qt::TabFocusReason);
    const auto rings = ofKind("FocusRing");
    ASSERT_EQ(rings.size(), 1);
    const QColor ring = rings.first()->property("border").value<QObject *>()->property("color").value<QColor>();
    EXPECT_GE(contrast(ring, behind), 3);
    EXPECT_EQ(tint.alphaF(), QColor::fromRgbF(0, 0, 0, 0.15F).alphaF());
    EXPECT_EQ(tint.rgb(), m_appearance.color.rgb());
}

TEST_P(AccentOnScreen, Work_under_way_can_be_seen)
{
    openStep(2);
    const SleepingOperation installing(*m_app.installOp());
    QTest::qWait(50); // the view makes room for it
    const auto pieces = ofKind("RunningPiece");
    ASSERT_EQ(pieces.size(), 1);
    const QQuickItem *piece = pieces.first()->childItems().first();
    const auto logs = ofKind("OperationLogView");
    EXPECT_GE(contrast(colorOf(piece), colorOf(logs.first())), 3);
}

std::string nameOf(const testing::TestParamInfo<std::tuple<NamedAccent, bool>> &info)
{
    return std::string(std::get<0>(info.param).name) + (std::get<1>(info.param) ? "_dark" : "_light");
}

INSTANTIATE_TEST_SUITE_P(Of, AccentOnScreen, testing::Combine(testing::ValuesIn(kAccents), testing::Bool()), nameOf);

using AccentOfTheSystem = Screen;

TEST_F(AccentOfTheSystem, Is_followed_and_not_the_colour_behind_selected_text)
{
    m_appearance.color = QColor(200, 30, 90);
    QPalette palette;
    palette.setColor(QPalette::Highlight, QColor(0xb3, 0xd7, 0xff));
    QApplication::setPalette(palette);
    EXPECT_EQ(m_looks.accent(), QColor(200, 30, 90));
    openDashboard();
    const auto shield = [this] {
        for (const QQuickItem *item : itemsOf(window()->contentItem()))
            if (item->property("name").toString() == QLatin1String("shield.lefthalf.filled"))
                return item->property("color").value<QColor>();
        return QColor();
    };
    EXPECT_EQ(shield(), QColor(200, 30, 90));
    m_appearance.color = QColor(20, 130, 90);
    Q_EMIT m_appearance.changed();
    EXPECT_EQ(shield(), QColor(20, 130, 90));
}

} // namespace

} // namespace corvane::test
