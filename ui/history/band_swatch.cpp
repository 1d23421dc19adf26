#include "ui/history/band_swatch.h"

#include <QQuickWindow>

namespace corvane {

BandSwatch::BandSwatch(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(this, &BandSwatch::looksChanged, this, &QQuickItem::update);
}

QSGNode *BandSwatch::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    ColoredAreas areas;
    const double pixel = 1 / window()->effectiveDevicePixelRatio();
    for (const QRectF &part : bandPattern(static_cast<Protection>(m_protection), boundingRect(), pixel))
        areas << ColoredArea{part, m_color};
    return showAreas(*window(), old, areas);
}

} // namespace corvane
