#pragma once

#include "app/protection.h"

#include <QColor>
#include <QList>
#include <QRectF>

class QQuickWindow;
class QSGNode;

namespace corvane {

/// A rectangle in one colour.
struct ColoredArea {
    QRectF area;
    QColor color;
};
using ColoredAreas = QList<ColoredArea>;

/// Has the scene graph show these, with what `old` holds already.
[[nodiscard]] QSGNode *showAreas(QQuickWindow &window, QSGNode *old, const ColoredAreas &areas);

/// How a state looks in the band: each fills the area in a way of its own, so that it is known without its colour.
/// `pixel`: the size of one of the display's pixels.
[[nodiscard]] QList<QRectF> bandPattern(Protection state, const QRectF &area, double pixel);

} // namespace corvane
