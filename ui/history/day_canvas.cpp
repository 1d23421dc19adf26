#include "ui/history/day_canvas.h"

#include <QHoverEvent>
#include <QKeyEvent>
#include <QQuickWindow>

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr double kGapShare = 0.2;       // of a slot's width
constexpr double kNarrowestWithGap = 3; // pixels
constexpr int kColumnsOfSlot = 2;       // the band is drawn twice as fine as the bars at least

} // namespace

DayCanvas::DayCanvas(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setAcceptHoverEvents(true);
    setActiveFocusOnTab(true);
    connect(this, &DayCanvas::looksChanged, this, &QQuickItem::update);
}

void DayCanvas::setDay(DayView *day)
{
    if (day == m_day) return;
    if (m_day) m_day->disconnect(this);
    m_day = day;
    if (m_day) connect(m_day, &DayView::changed, this, &QQuickItem::update);
    Q_EMIT dayChanged();
    update();
}

QColor DayCanvas::colorOf(Protection state) const
{
    switch (state) {
    case Protection::Protected:
        return m_protected;
    case Protection::NotBlocking:
        return m_notBlocking;
    case Protection::Backup:
        return m_backup;
    case Protection::Down:
        return m_down;
    case Protection::NotUsed:
    case Protection::Asleep:
    case Protection::Unknown:
        break;
    }
    return m_idle;
}

int DayCanvas::lastSlot() const { return DayWindow::kSlots - 1; }

void DayCanvas::setCurrent(int slot)
{
    const int shown = std::clamp(slot, -1, lastSlot());
    if (shown == m_current) return;
    m_current = shown;
    Q_EMIT currentChanged();
}

QRectF DayCanvas::currentArea() const
{
    if (m_current < 0) return {};
    return {m_current * slotWidth(), 0, slotWidth(), height()};
}

double DayCanvas::fittingWidth(double width, double pixelRatio)
{
    const double pixels = std::floor(width * pixelRatio / DayWindow::kSlots);
    return std::max(1.0, pixels) * DayWindow::kSlots / pixelRatio;
}

QSGNode *DayCanvas::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    ColoredAreas areas;
    const double pixel = 1 / window()->effectiveDevicePixelRatio();
    addGrid(areas, pixel);
    if (m_day) {
        addBars(areas, pixel);
        addBand(areas, pixel);
    }
    return showAreas(*window(), old, areas);
}

void DayCanvas::addGrid(ColoredAreas &areas, double pixel) const
{
    for (const double share : {0.0, 0.5, 1.0}) {
        const double y = std::round(barsHeight() * share / pixel) * pixel;
        areas << ColoredArea{QRectF(0, share == 1.0 ? y - pixel : y, width(), pixel), m_grid};
    }
}

/// Blocked below, allowed above, a line of background between them.
void DayCanvas::addBars(ColoredAreas &areas, double pixel) const
{
    const QList<DayBar> &bars = m_day->bars();
    const double scale = barsHeight() / static_cast<double>(axisTop(bars));
    const double gap = slotWidth() / pixel < kNarrowestWithGap
                           ? 0
                           : std::max(1.0, std::round(slotWidth() * kGapShare / pixel)) * pixel;
    const auto heightOf = [&](qint64 count) {
        return count > 0 ? std::max(1.0, std::round(static_cast<double>(count) * scale / pixel)) * pixel : 0;
    };
    for (qsizetype slot = 0; slot < bars.size(); ++slot) {
        const DayBar &bar = bars.at(slot);
        const double left = static_cast<double>(slot) * slotWidth();
        const double whole = heightOf(bar.allowed + bar.blocked);
        const double blocked = std::min(heightOf(bar.blocked), whole);
        const double base = blocked > 0 ? blocked + pixel : 0;
        if (blocked > 0) areas << ColoredArea{{left, barsHeight() - blocked, slotWidth() - gap, blocked}, m_blocked};
        if (whole > base)
            areas << ColoredArea{{left, barsHeight() - whole, slotWidth() - gap, whole - base}, m_allowed};
    }
}

void DayCanvas::addBand(ColoredAreas &areas, double pixel) const
{
    // Columns of two pixels, so that what lasted a minute can still be seen.
    const int columns = std::max(DayWindow::kSlots * kColumnsOfSlot / 2,
                                 static_cast<int>(std::round(width() / pixel)) / kColumnsOfSlot);
    const double column = width() / columns;
    for (const BandPiece &piece : bandPieces(m_day->window(), m_day->spans(), columns)) {
        const QRectF area(piece.column * column, height() - m_bandHeight, piece.columns * column, m_bandHeight);
        const QColor color = colorOf(piece.state);
        for (const QRectF &part : bandPattern(piece.state, area, pixel))
            areas << ColoredArea{part, color};
    }
}

void DayCanvas::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) update();
    QQuickItem::itemChange(change, data);
}

void DayCanvas::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    update();
    if (m_current >= 0) Q_EMIT currentChanged();
}

void DayCanvas::hoverMoveEvent(QHoverEvent *event)
{
    setCurrent(static_cast<int>(event->position().x() / std::max(1e-6, slotWidth())));
}

void DayCanvas::hoverLeaveEvent(QHoverEvent *) { setCurrent(-1); }

void DayCanvas::keyPressEvent(QKeyEvent *event)
{
    int slot = m_current;
    switch (event->key()) {
    case Qt::Key_Left:
        slot = m_current < 0 ? lastSlot() : std::max(0, m_current - 1);
        break;
    case Qt::Key_Right:
        slot = m_current < 0 ? 0 : m_current + 1;
        break;
    case Qt::Key_Home:
        slot = 0;
        break;
    case Qt::Key_End:
        slot = lastSlot();
        break;
    default:
        event->ignore();
        return;
    }
    setCurrent(slot);
    Q_EMIT walked(m_current);
}

void DayCanvas::focusOutEvent(QFocusEvent *event)
{
    setCurrent(-1);
    QQuickItem::focusOutEvent(event);
}

} // namespace corvane
