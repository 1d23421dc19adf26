#pragma once

#include "ui/history/colored_areas.h"

#include <QQuickItem>

namespace corvane {

/// A piece of the band for its legend.
class BandSwatch : public QQuickItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(BandSwatch)
    /// The number of a Protection.
    Q_PROPERTY(int protection MEMBER m_protection NOTIFY looksChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY looksChanged)

public:
    explicit BandSwatch(QQuickItem *parent = nullptr);

Q_SIGNALS:
    void looksChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *) override;

private:
    int m_protection = 0;
    QColor m_color;
};

} // namespace corvane
