#pragma once

#include "ui/history/colored_areas.h"
#include "ui/history/day_view.h"

#include <QColor>
#include <QQuickItem>

namespace corvane {

/// Draws the bars of the day and, below them on the same axis, the band of its protection, out of rectangles that
/// begin and end at whole pixels of the display. Two things never differ in their colour alone.
class DayCanvas : public QQuickItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(DayCanvas)
    Q_PROPERTY(corvane::DayView *day READ day WRITE setDay NOTIFY dayChanged)
    Q_PROPERTY(double bandHeight MEMBER m_bandHeight NOTIFY looksChanged)
    Q_PROPERTY(double bandGap MEMBER m_bandGap NOTIFY looksChanged)
    Q_PROPERTY(QColor allowedColor MEMBER m_allowed NOTIFY looksChanged)
    Q_PROPERTY(QColor blockedColor MEMBER m_blocked NOTIFY looksChanged)
    Q_PROPERTY(QColor gridColor MEMBER m_grid NOTIFY looksChanged)
    Q_PROPERTY(QColor protectedColor MEMBER m_protected NOTIFY looksChanged)
    Q_PROPERTY(QColor notBlockingColor MEMBER m_notBlocking NOTIFY looksChanged)
    Q_PROPERTY(QColor backupColor MEMBER m_backup NOTIFY looksChanged)
    Q_PROPERTY(QColor downColor MEMBER m_down NOTIFY looksChanged)
    /// Of the band where nothing is to be protected.
    Q_PROPERTY(QColor idleColor MEMBER m_idle NOTIFY looksChanged)
    /// The slot that is pointed at or has been walked to; -1 for none.
    Q_PROPERTY(int current READ current WRITE setCurrent NOTIFY currentChanged)
    /// Where that slot is.
    Q_PROPERTY(QRectF currentArea READ currentArea NOTIFY currentChanged)

public:
    explicit DayCanvas(QQuickItem *parent = nullptr);

    [[nodiscard]] DayView *day() const { return m_day; }
    void setDay(DayView *day);
    [[nodiscard]] int current() const { return m_current; }
    void setCurrent(int slot);
    [[nodiscard]] QRectF currentArea() const;

    /// The largest width up to this one in which every slot has the same whole number of the display's pixels.
    Q_INVOKABLE [[nodiscard]] static double fittingWidth(double width, double pixelRatio);

Q_SIGNALS:
    void dayChanged();
    void looksChanged();
    void currentChanged();
    /// A slot was walked to by keyboard.
    void walked(int slot);

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void hoverMoveEvent(QHoverEvent *event) override;
    void hoverLeaveEvent(QHoverEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    [[nodiscard]] double barsHeight() const { return height() - m_bandHeight - m_bandGap; }
    [[nodiscard]] double slotWidth() const { return width() / DayWindow::kSlots; }
    [[nodiscard]] int lastSlot() const;
    [[nodiscard]] QColor colorOf(Protection state) const;
    void addGrid(ColoredAreas &areas, double pixel) const;
    void addBars(ColoredAreas &areas, double pixel) const;
    void addBand(ColoredAreas &areas, double pixel) const;

    QPointer<DayView> m_day;
    double m_bandHeight = 12;
    double m_bandGap = 6;
    QColor m_allowed;
    QColor m_blocked;
    QColor m_grid;
    QColor m_protected;
    QColor m_notBlocking;
    QColor m_backup;
    QColor m_down;
    QColor m_idle;
    int m_current = -1;
};

} // namespace corvane
