#include "ui/history/colored_areas.h"

#include <QQuickWindow>
#include <QSGRectangleNode>

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

/// The same length in whole pixels, and at least one.
double whole(double length, double pixel) { return std::max(1.0, std::round(length / pixel)) * pixel; }

/// Pieces of that length with such gaps, from the left.
QList<QRectF> striped(const QRectF &area, double length, double gap)
{
    QList<QRectF> stripes;
    for (double x = area.left(); x < area.right(); x += length + gap)
        stripes << QRectF(x, area.top(), std::min(length, area.right() - x), area.height());
    return stripes;
}

QRectF lowest(const QRectF &area, double height) { return {area.left(), area.bottom() - height, area.width(), height}; }

} // namespace

QSGNode *showAreas(QQuickWindow &window, QSGNode *old, const ColoredAreas &areas)
{
    // Of a plain node Qt's software renderer keeps no position, and would draw what is added later at the window's
    // corner.
    QSGNode *root = old ? old : new QSGTransformNode;
    while (root->childCount() > areas.size()) {
        QSGNode *last = root->lastChild();
        root->removeChildNode(last);
        delete last;
    }
    while (root->childCount() < areas.size())
        root->appendChildNode(window.createRectangleNode());
    QSGNode *child = root->firstChild();
    for (const ColoredArea &each : areas) {
        auto *node = static_cast<QSGRectangleNode *>(child);
        node->setRect(each.area);
        node->setColor(each.color);
        child = child->nextSibling();
    }
    return root;
}

QList<QRectF> bandPattern(Protection state, const QRectF &area, double pixel)
{
    const double point = whole(1, pixel);
    switch (state) {
    case Protection::Protected:
        return {area};
    case Protection::NotBlocking:
        return {lowest(area, whole(area.height() / 2, pixel))};
    case Protection::Backup:
        return striped(area, 2 * point, 2 * point);
    case Protection::Down: {
        const double third = whole(area.height() / 3, pixel);
        return {{area.left(), area.top(), area.width(), third}, lowest(area, third)};
    }
    case Protection::NotUsed:
        return {lowest(area, 2 * point)};
    case Protection::Asleep: {
        const double y = area.top() + whole(area.height() / 2, pixel) - point;
        return striped({area.left(), y, area.width(), 2 * point}, 2 * point, 4 * point);
    }
    case Protection::Unknown:
        break;
    }
    return {};
}

} // namespace corvane
