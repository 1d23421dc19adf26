#include "ui/symbol.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace corvane {

namespace {

/// The symbol's drawing with its placeholder replaced by the colour.
QByteArray drawing(const QString &name, const QColor &color)
{
    QFile file(QStringLiteral(":/qt/qml/Corvane/symbols/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return file.readAll().replace("currentColor", color.name().toLatin1());
}

} // namespace

Symbol::Symbol(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setImplicitSize(16, 16);
}

void Symbol::setName(const QString &name)
{
    if (name == m_name) return;
    m_name = name;
    update();
    Q_EMIT nameChanged();
}

void Symbol::setColor(const QColor &color)
{
    if (color == m_color) return;
    m_color = color;
    update();
    Q_EMIT colorChanged();
}

void Symbol::paint(QPainter *painter)
{
    if (m_name.isEmpty()) return;
    QSvgRenderer renderer(drawing(m_name, m_color));
    painter->setRenderHint(QPainter::Antialiasing);
    renderer.render(painter, QRectF(0, 0, width(), height()));
}

} // namespace corvane
