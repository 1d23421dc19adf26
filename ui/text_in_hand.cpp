#include "ui/text_in_hand.h"

namespace corvane {

void TextInHand::setItem(QQuickItem *item)
{
    m_item = item;
    Q_EMIT itemChanged();
}

bool TextInHand::editable() const
{
    const QVariant readOnly = m_item ? m_item->property("readOnly") : QVariant();
    return readOnly.isValid() && !readOnly.toBool();
}

bool TextInHand::selected() const { return m_item && !m_item->property("selectedText").toString().isEmpty(); }

bool TextInHand::canPaste() const { return editable() && m_item->property("canPaste").toBool(); }

void TextInHand::copy() const
{
    const bool whole = !selected();
    if (whole) tell("selectAll");
    tell("copy");
    if (whole) tell("deselect");
}

void TextInHand::selectAll() const
{
    if (m_item) m_item->forceActiveFocus();
    tell("selectAll");
}

void TextInHand::tell(const char *what) const
{
    if (m_item) QMetaObject::invokeMethod(m_item, what);
}

} // namespace corvane
