#include "tests/ui/driver.h"

#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>

namespace corvane::test {

QList<QQuickItem *> itemsOf(QQuickItem *root)
{
    QList<QQuickItem *> items{root};
    for (QQuickItem *child : root->childItems())
        items << itemsOf(child);
    return items;
}

bool inSight(const QQuickItem *item) { return item->isVisible() && item->width() > 0 && item->height() > 0; }

QQuickItem *Driver::find(const QString &name) const
{
    for (QQuickItem *item : itemsOf(window()->contentItem())) {
        if (item->objectName() == name) return item;
    }
    return nullptr;
}

bool Driver::shows(const QString &name) const
{
    const QQuickItem *item = find(name);
    return item && inSight(item);
}

bool Driver::enabled(const QString &name) const
{
    const QQuickItem *item = find(name);
    return item && inSight(item) && item->isEnabled();
}

QString Driver::textOf(const QString &name) const
{
    const QQuickItem *item = find(name);
    return item && inSight(item) ? item->property("text").toString() : QString();
}

QStringList Driver::texts() const
{
    QStringList texts;
    for (const QQuickItem *item : itemsOf(window()->contentItem())) {
        const QString text = inSight(item) ? item->property("text").toString() : QString();
        if (!text.isEmpty()) texts << text;
    }
    return texts;
}

bool Driver::reads(const QString &text) const
{
    const QStringList all = texts();
    return std::ranges::any_of(all, [&](const QString &shown) { return shown.contains(text); });
}

void Driver::layOut()
{
    QTest::qWait(5);
    // A window lays its views out when it is drawn.
    Q_UNUSED(window()->grabWindow())
}

void Driver::click(const QString &name)
{
    QQuickItem *item = find(name);
    ASSERT_TRUE(item) << qPrintable(name);
    click(*item);
}

void Driver::click(QQuickItem &item)
{
    layOut();
    item.forceActiveFocus();
    layOut();
    const QPointF middle = item.mapToScene(QPointF(item.width() / 2, item.height() / 2));
    QTest::mouseClick(window(), Qt::LeftButton, {}, middle.toPoint());
    QTest::qWait(10);
}

void Driver::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(window(), key, modifiers);
    QTest::qWait(5);
}

void Driver::type(const QString &text)
{
    for (const QChar character : text)
        QTest::keyClick(window(), character.toLatin1());
    QTest::qWait(5);
}

QString Driver::focused() const
{
    const QQuickItem *item = window()->activeFocusItem();
    return item ? item->objectName() : QString();
}

} // namespace corvane::test
