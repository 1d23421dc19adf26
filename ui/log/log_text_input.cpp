#include "ui/log/log_text_view.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWheelEvent>

#include <array>
#include <cmath>

namespace corvane {

namespace {

constexpr int kRowsPerWheelStep = 3;
constexpr double kWheelStep = 120;
constexpr int kDragInterval = 40; // milliseconds between two steps while the mouse drags beyond an edge

bool isWordCharacter(QChar character) { return character.isLetterOrNumber() || character == u'_'; }

int wordStart(const QString &line, int column)
{
    while (column > 0 && isWordCharacter(line.at(column - 1)))
        --column;
    return column;
}

int wordEnd(const QString &line, int column)
{
    while (column < line.size() && isWordCharacter(line.at(column)))
        ++column;
    return column;
}

} // namespace

/// The system's keys of a motion of the caret: alone, and with the selection.
struct LogTextView::KeyMotion {
    QKeySequence::StandardKey moves;
    QKeySequence::StandardKey selects;
    Motion motion;
};

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
    setKeepMouseGrab(true);
    m_dragging = true;
    const LogLayout::Place place = placeAt(event->position());
    if (isThirdClick(event->position()))
        select({place.line, 0}, within(lines(), {place.line + 1, 0}));
    else
        moveCaret(place, event->modifiers().testFlag(Qt::ShiftModifier));
    m_dragPoint = event->position();
}

void LogTextView::mouseMoveEvent(QMouseEvent *event)
{
    dragTo(event->position());
    const bool inside = event->position().y() >= 0 && event->position().y() < height();
    if (inside) m_dragTimer.stop();
    if (!inside && !m_dragTimer.isActive()) m_dragTimer.start(kDragInterval, this);
}

void LogTextView::mouseReleaseEvent(QMouseEvent *) { endDrag(); }

void LogTextView::mouseUngrabEvent() { endDrag(); }

void LogTextView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const LogLayout::Place place = placeAt(event->position());
    if (place.line >= lines().size()) return;
    const QString &line = lines().at(place.line);
    select({place.line, wordStart(line, place.column)}, {place.line, wordEnd(line, place.column)});
    m_dragPoint = event->position();
    m_sinceDoubleClick.start();
}

bool LogTextView::isThirdClick(QPointF point) const
{
    const QStyleHints &hints = *QGuiApplication::styleHints();
    return m_sinceDoubleClick.isValid() && m_sinceDoubleClick.elapsed() < hints.mouseDoubleClickInterval() &&
           (point - m_dragPoint).manhattanLength() < hints.mouseDoubleClickDistance();
}

// A shake of the hand while a word or a line is clicked must not take the selection away.
void LogTextView::dragTo(QPointF point)
{
    if ((point - m_dragPoint).manhattanLength() < 2) return;
    m_dragPoint = point;
    moveCaret(placeAt({point.x(), std::clamp(point.y(), 0.0, height() - 1)}), true);
}

void LogTextView::endDrag()
{
    m_dragging = false;
    m_dragTimer.stop();
    if (std::exchange(m_linesCameMeanwhile, false)) scrollToEnd();
}

// The further beyond the edge, the faster.
void LogTextView::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_dragTimer.timerId()) return QQuickPaintedItem::timerEvent(event);
    const double beyond = m_dragPoint.y() < 0 ? m_dragPoint.y() : m_dragPoint.y() - height();
    setTop(m_top + std::copysign(std::max(std::abs(beyond), m_rowHeight / 2), beyond));
    moveCaret(placeAt({m_dragPoint.x(), std::clamp(m_dragPoint.y(), 0.0, height() - 1)}), true);
}

void LogTextView::wheelEvent(QWheelEvent *event)
{
    const double turned = event->pixelDelta().isNull()
                              ? event->angleDelta().y() / kWheelStep * kRowsPerWheelStep * m_rowHeight
                              : event->pixelDelta().y();
    const double before = m_top;
    setTop(m_top - turned);
    const bool moved = m_top != before;
    // A gesture that has moved the log stays with it: what is left of it at the end does not move the page.
    const bool goesOn = m_gestureIsOurs && event->phase() != Qt::ScrollBegin;
    m_gestureIsOurs = event->phase() != Qt::NoScrollPhase && (goesOn || moved);
    event->setAccepted(moved || m_gestureIsOurs);
}

LogLayout::Place LogTextView::besideCaret(int direction, bool byWord) const
{
    const QString &line = lines().at(m_caret.line);
    const int next = m_caret.column + direction;
    if (next < 0) {
        return m_caret.line == 0
                   ? m_caret
                   : LogLayout::Place{m_caret.line - 1, static_cast<int>(lines().at(m_caret.line - 1).size())};
    }
    if (next > line.size()) return m_caret == end() ? m_caret : LogLayout::Place{m_caret.line + 1, 0};
    if (!byWord) return {m_caret.line, next};
    return {m_caret.line, direction < 0 ? wordStart(line, next) : wordEnd(line, next)};
}

LogLayout::Place LogTextView::rowsFromCaret(int rows) const
{
    const int row = m_layout.rowOf(m_caret);
    if (row + rows < 0) return {};
    if (row + rows >= m_layout.rowCount()) return end();
    const LogLayout::Place start = m_layout.start(row + rows);
    return within(lines(), {start.line, start.column + m_caret.column - m_layout.start(row).column});
}

LogLayout::Place LogTextView::moved(Motion motion) const
{
    switch (motion) {
    case Motion::NextSign:
        return besideCaret(1, false);
    case Motion::PreviousSign:
        return besideCaret(-1, false);
    case Motion::NextWord:
        return besideCaret(1, true);
    case Motion::PreviousWord:
        return besideCaret(-1, true);
    case Motion::NextRow:
        return rowsFromCaret(1);
    case Motion::PreviousRow:
        return rowsFromCaret(-1);
    case Motion::NextPage:
        return rowsFromCaret(rowsInSight());
    case Motion::PreviousPage:
        return rowsFromCaret(-rowsInSight());
    case Motion::LineStart:
        return {m_caret.line, 0};
    case Motion::LineEnd:
        return {m_caret.line, static_cast<int>(lines().at(m_caret.line).size())};
    case Motion::Start:
        return {};
    case Motion::End:
        return end();
    }
    return m_caret;
}

bool LogTextView::moveByKey(const QKeyEvent &event)
{
    using Keys = QKeySequence;
    static constexpr std::array kMotions{
        KeyMotion{Keys::MoveToNextChar, Keys::SelectNextChar, Motion::NextSign},
        KeyMotion{Keys::MoveToPreviousChar, Keys::SelectPreviousChar, Motion::PreviousSign},
        KeyMotion{Keys::MoveToNextWord, Keys::SelectNextWord, Motion::NextWord},
        KeyMotion{Keys::MoveToPreviousWord, Keys::SelectPreviousWord, Motion::PreviousWord},
        KeyMotion{Keys::MoveToNextLine, Keys::SelectNextLine, Motion::NextRow},
        KeyMotion{Keys::MoveToPreviousLine, Keys::SelectPreviousLine, Motion::PreviousRow},
        KeyMotion{Keys::UnknownKey, Keys::SelectNextPage, Motion::NextPage},
        KeyMotion{Keys::UnknownKey, Keys::SelectPreviousPage, Motion::PreviousPage},
        KeyMotion{Keys::MoveToStartOfLine, Keys::SelectStartOfLine, Motion::LineStart},
        KeyMotion{Keys::MoveToStartOfBlock, Keys::SelectStartOfBlock, Motion::LineStart},
        KeyMotion{Keys::MoveToEndOfLine, Keys::SelectEndOfLine, Motion::LineEnd},
        KeyMotion{Keys::MoveToEndOfBlock, Keys::SelectEndOfBlock, Motion::LineEnd},
        KeyMotion{Keys::MoveToStartOfDocument, Keys::SelectStartOfDocument, Motion::Start},
        KeyMotion{Keys::MoveToEndOfDocument, Keys::SelectEndOfDocument, Motion::End},
    };
    for (const KeyMotion &key : kMotions) {
        const bool selects = event.matches(key.selects);
        if (!selects && !event.matches(key.moves)) continue;
        moveCaret(moved(key.motion), selects);
        reveal(m_caret);
        return true;
    }
    return false;
}

void LogTextView::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy)) {
        copy();
    } else if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
    } else if (event->matches(QKeySequence::MoveToNextPage)) {
        setTop(m_top + rowsInSight() * m_rowHeight);
    } else if (event->matches(QKeySequence::MoveToPreviousPage)) {
        setTop(m_top - rowsInSight() * m_rowHeight);
    } else if (lines().isEmpty() || !moveByKey(*event)) {
        QQuickPaintedItem::keyPressEvent(event);
    }
}

} // namespace corvane
