#include "ui/log_text_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>

namespace corvane {

namespace {

constexpr int kRowsPerWheelStep = 3;
constexpr double kWheelStep = 120;

bool isWordSign(QChar sign) { return sign.isLetterOrNumber() || sign == u'_'; }

int wordStart(const QString &line, int column)
{
    while (column > 0 && isWordSign(line.at(column - 1)))
        --column;
    return column;
}

int wordEnd(const QString &line, int column)
{
    while (column < line.size() && isWordSign(line.at(column)))
        ++column;
    return column;
}

} // namespace

void LogTextView::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickPaintedItem::geometryChange(now, before);
    const bool atEnd = m_top >= contentHeight() - before.height() - 1;
    if (now.width() != before.width()) layOut();
    setTop(atEnd ? contentHeight() : m_top);
}

void LogTextView::mousePressEvent(QMouseEvent *event)
{
    forceActiveFocus(Qt::MouseFocusReason);
    moveCaret(placeAt(event->position()), event->modifiers().testFlag(Qt::ShiftModifier));
    setKeepMouseGrab(true);
}

void LogTextView::mouseMoveEvent(QMouseEvent *event)
{
    moveCaret(placeAt(event->position()), true);
    showCaret();
}

void LogTextView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const LogLayout::Place place = placeAt(event->position());
    if (place.line >= lines().size()) return;
    const QString &line = lines().at(place.line);
    m_anchor = {place.line, wordStart(line, place.column)};
    moveCaret({place.line, wordEnd(line, place.column)}, true);
}

void LogTextView::wheelEvent(QWheelEvent *event)
{
    const double turned = event->pixelDelta().isNull()
                              ? event->angleDelta().y() / kWheelStep * kRowsPerWheelStep * m_rowHeight
                              : event->pixelDelta().y();
    const double before = m_top;
    setTop(m_top - turned);
    event->setAccepted(m_top != before);
}

LogLayout::Place LogTextView::moved(int key, bool byWord) const
{
    const QStringList &all = lines();
    const int size = static_cast<int>(all.at(m_caret.line).size());
    const int row = m_layout.rowOf(m_caret);
    const int across = m_caret.column % m_layout.columns();
    const auto inRow = [&](int wanted) {
        if (wanted < 0) return LogLayout::Place();
        if (wanted >= m_layout.rowCount()) return end();
        const LogLayout::Place start = m_layout.start(wanted);
        return LogLayout::Place{start.line,
                                std::min(start.column + across, static_cast<int>(all.at(start.line).size()))};
    };
    switch (key) {
    case Qt::Key_Left:
        if (byWord && m_caret.column > 0) return {m_caret.line, wordStart(all.at(m_caret.line), m_caret.column - 1)};
        if (m_caret.column > 0) return {m_caret.line, m_caret.column - 1};
        return m_caret.line > 0 ? LogLayout::Place{m_caret.line - 1, static_cast<int>(all.at(m_caret.line - 1).size())}
                                : m_caret;
    case Qt::Key_Right:
        if (byWord && m_caret.column < size) return {m_caret.line, wordEnd(all.at(m_caret.line), m_caret.column + 1)};
        if (m_caret.column < size) return {m_caret.line, m_caret.column + 1};
        return m_caret.line + 1 < all.size() ? LogLayout::Place{m_caret.line + 1, 0} : m_caret;
    case Qt::Key_Up:
        return inRow(row - 1);
    case Qt::Key_Down:
        return inRow(row + 1);
    case Qt::Key_Home:
        return byWord ? LogLayout::Place() : LogLayout::Place{m_caret.line, 0};
    default:
        return byWord ? end() : LogLayout::Place{m_caret.line, size};
    }
}

bool LogTextView::scrollByKey(int key)
{
    if (key == Qt::Key_PageUp) {
        setTop(m_top - height() + m_rowHeight);
        return true;
    }
    if (key == Qt::Key_PageDown) {
        setTop(m_top + height() - m_rowHeight);
        return true;
    }
    return false;
}

void LogTextView::keyPressEvent(QKeyEvent *event)
{
    const bool moves = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right || event->key() == Qt::Key_Up ||
                       event->key() == Qt::Key_Down || event->key() == Qt::Key_Home || event->key() == Qt::Key_End;
    if (event->matches(QKeySequence::Copy)) {
        copy();
    } else if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
    } else if (moves && !lines().isEmpty()) {
        const bool byWord = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
        moveCaret(moved(event->key(), byWord), event->modifiers().testFlag(Qt::ShiftModifier));
        showCaret();
    } else if (!scrollByKey(event->key())) {
        QQuickPaintedItem::keyPressEvent(event);
    }
}

} // namespace corvane
