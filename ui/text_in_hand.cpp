#include "ui/text_in_hand.h"

#include <QQmlComponent>
#include <QQmlEngine>

namespace corvane {

bool TextInHand::editable() const
{
    const QVariant readOnly = m_item ? m_item->property("readOnly") : QVariant();
    return readOnly.isValid() && !readOnly.toBool();
}

bool TextInHand::selected() const { return m_item && !m_item->property("selectedText").toString().isEmpty(); }

bool TextInHand::canPaste() const { return editable() && m_item->property("canPaste").toBool(); }

void TextInHand::openMenu(QQuickItem *item, QPointF place)
{
    if (!m_menu) {
        QQmlComponent component(qmlEngine(this), QUrl(QStringLiteral("qrc:/qt/qml/Corvane/style/TextMenu.qml")));
        m_menu = component.create();
        if (!m_menu) qFatal("%s", qPrintable(component.errorString()));
        m_menu->setParent(this);
    }
    m_item = item;
    m_hasFocus = item->hasActiveFocus();
    Q_EMIT itemChanged();
    QMetaObject::invokeMethod(m_menu, "openAt", Q_ARG(QQuickItem *, item), Q_ARG(double, place.x()),
                              Q_ARG(double, place.y()));
}

void TextInHand::openMenuBelow(QQuickItem *item) { openMenu(item, {0, item->height()}); }

void TextInHand::letGo()
{
    if (m_item && m_hasFocus) m_item->forceActiveFocus(Qt::PopupFocusReason);
    m_item.clear();
    Q_EMIT itemChanged();
}

void TextInHand::copy() const
{
    const bool whole = !selected();
    if (whole) tell("selectAll");
    tell("copy");
    if (whole) tell("deselect");
}

void TextInHand::selectAll()
{
    m_hasFocus = true;
    tell("selectAll");
}

void TextInHand::tell(const char *what) const
{
    if (m_item) QMetaObject::invokeMethod(m_item, what);
}

} // namespace corvane
