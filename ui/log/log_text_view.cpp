#include "ui/log/log_text_view.h"

#include "ui/log/log_accessible.h"

#include <QClipboard>
#include <QCursor>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace corvane {

LogTextView::LogTextView(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAcceptedMouseButtons(Qt::LeftButton);
    setFlag(ItemAcceptsInputMethod, false);
    setActiveFocusOnTab(true);
    setCursor(Qt::IBeamCursor);
    setClip(true);
    setOpaquePainting(false);
    connect(this, &LogTextView::colorsChanged, this, [this] { layOut(); });
    connect(this, &LogTextView::activeFocusChanged, this, [this] { update(); });
    static const bool spoken = (makeLogsAccessible(), true);
    Q_UNUSED(spoken)
}

void LogTextView::setSource(OperationRunner *source)
{
    if (m_source == source) return;
    if (m_source) m_source->disconnect(this);
    m_source = source;
    if (m_source) {
        connect(m_source, &OperationRunner::linesChanged, this, &LogTextView::onLinesChanged);
        connect(m_source, &OperationRunner::linesReset, this, &LogTextView::showOtherLines);
    }
    Q_EMIT sourceChanged();
    showOtherLines();
}

void LogTextView::setText(const QString &text)
{
    const QStringList now = text.isEmpty() ? QStringList() : text.split(u'\n');
    if (now == m_text) return;
    const bool asMany = now.size() == m_text.size();
    const QString selected = m_source ? QString() : selectedText();
    m_text = now;
    Q_EMIT textChanged();
    if (m_source) return;
    if (!asMany) return showOtherLines();
    m_anchor = within(now, m_anchor);
    m_caret = within(now, m_caret);
    if (selectedText() != selected) m_anchor = m_caret;
    onLinesReplaced();
}

void LogTextView::setFont(const QFont &font)
{
    if (font == m_font) return;
    m_font = font;
    const QFontMetricsF metrics(font);
    m_charWidth = std::max(1.0, metrics.horizontalAdvance(u'0'));
    m_rowHeight = std::ceil(metrics.height() * 1.15);
    m_baseline = (m_rowHeight - metrics.height()) / 2 + metrics.ascent();
    Q_EMIT fontChanged();
    layOut();
}

double LogTextView::contentHeight() const { return m_layout.rowCount() * m_rowHeight + 2 * m_padding; }

double LogTextView::position() const { return contentHeight() > 0 ? m_top / contentHeight() : 0; }

double LogTextView::pageSize() const { return contentHeight() > height() ? height() / contentHeight() : 1; }

QString LogTextView::selectedText() const { return textBetween(lines(), m_anchor, m_caret); }

void LogTextView::scrollTo(double position) { setTop(position * contentHeight()); }

void LogTextView::copy() const
{
    if (m_anchor != m_caret) QGuiApplication::clipboard()->setText(selectedText());
}

void LogTextView::selectAll() { select({}, end()); }

void LogTextView::deselect() { select(m_caret, m_caret); }

void LogTextView::select(LogLayout::Place anchor, LogLayout::Place caret)
{
    m_anchor = anchor;
    m_caret = caret;
    update();
    Q_EMIT selectionChanged();
}

void LogTextView::layOut()
{
    const double room = width() - 2 * m_padding;
    m_layout.reset(lines(), static_cast<int>(room / m_charWidth));
    setTop(m_top);
    update();
}

void LogTextView::onLinesChanged(int removed, int appended)
{
    const int rowsRemoved = m_layout.rowOf({removed, 0});
    const bool caretAtEnd = m_anchor == m_caret && m_caret == m_end;
    m_layout.change(lines(), removed, appended);
    m_end = end();
    for (LogLayout::Place *place : {&m_anchor, &m_caret})
        *place = place->line < removed ? LogLayout::Place() : LogLayout::Place{place->line - removed, place->column};
    if (caretAtEnd) m_anchor = m_caret = m_end;
    Q_EMIT contentChanged();
    Q_EMIT linesMoved(removed, appended);
    m_linesCameMeanwhile = m_dragging;
    if (m_dragging)
        setTop(m_top - rowsRemoved * m_rowHeight);
    else
        scrollToEnd();
}

void LogTextView::onLinesReplaced()
{
    m_layout.reset(lines(), m_layout.columns());
    m_end = end();
    Q_EMIT contentChanged();
    Q_EMIT selectionChanged();
    Q_EMIT linesMoved(-1, static_cast<int>(lines().size()));
    setTop(m_top);
}

void LogTextView::showOtherLines()
{
    m_anchor = m_caret = end();
    onLinesReplaced();
    scrollToEnd();
}

void LogTextView::scrollToEnd() { setTop(contentHeight()); }

void LogTextView::setTop(double top)
{
    m_top = std::round(std::clamp(top, 0.0, std::max(0.0, contentHeight() - height())));
    update();
    Q_EMIT scrolled();
}

LogLayout::Place LogTextView::placeAt(QPointF point) const
{
    if (lines().isEmpty()) return {};
    const int row = static_cast<int>(std::floor((point.y() + m_top - m_padding) / m_rowHeight));
    if (row < 0) return {};
    if (row >= m_layout.rowCount()) return end();
    const LogLayout::Place start = m_layout.start(row);
    const int offset = static_cast<int>(std::lround((point.x() - m_padding) / m_charWidth));
    const int last = std::min(start.column + m_layout.columns(), static_cast<int>(lines().at(start.line).size()));
    return {start.line, std::clamp(start.column + offset, start.column, last)};
}

LogLayout::Place LogTextView::end() const
{
    if (lines().isEmpty()) return {};
    return {static_cast<int>(lines().size()) - 1, static_cast<int>(lines().last().size())};
}

QRectF LogTextView::areaOf(LogLayout::Place place) const
{
    const int row = m_layout.rowOf(place);
    const int across = place.column - m_layout.start(row).column;
    return {m_padding + across * m_charWidth, m_padding + row * m_rowHeight - m_top, m_charWidth, m_rowHeight};
}

void LogTextView::reveal(LogLayout::Place place)
{
    const double y = areaOf(place).top();
    if (y < 0) setTop(m_top + y - m_padding);
    if (y + m_rowHeight > height()) setTop(m_top + y + m_rowHeight + m_padding - height());
}

void LogTextView::moveCaret(LogLayout::Place caret, bool extend) { select(extend ? m_anchor : caret, caret); }

void LogTextView::paintRow(QPainter *painter, int row, double y) const
{
    const LogLayout::Place start = m_layout.start(row);
    if (start.line >= lines().size()) return;
    const QString shown = drawable(QStringView(lines().at(start.line)).mid(start.column, m_layout.columns()));
    painter->setPen(m_color);
    painter->drawText(QPointF(m_padding, y + m_baseline), shown);
    if (m_anchor != m_caret) paintSelection(painter, start, shown, y);
}

void LogTextView::paintSelection(QPainter *painter, LogLayout::Place start, const QString &shown, double y) const
{
    const auto [from, to] = std::minmax(m_anchor, m_caret);
    const LogLayout::Place stop{start.line, start.column + static_cast<int>(shown.size())};
    const auto first = std::clamp(from, start, stop);
    const auto last = std::clamp(to, start, stop);
    const bool lineEndSelected = from <= stop && to.line > start.line && stop.column == lines().at(start.line).size();
    if (first >= last && !lineEndSelected) return;
    const double left = m_padding + (first.column - start.column) * m_charWidth;
    const double columns = last.column - first.column + (lineEndSelected ? 0.5 : 0);
    const QRectF area(left, y, columns * m_charWidth, m_rowHeight);
    painter->fillRect(area, m_selectionColor);
    painter->save();
    painter->setClipRect(area);
    painter->setPen(m_selectedTextColor);
    painter->drawText(QPointF(m_padding, y + m_baseline), shown);
    painter->restore();
}

void LogTextView::paint(QPainter *painter)
{
    painter->setFont(m_font);
    const int first = std::max(0, static_cast<int>((m_top - m_padding) / m_rowHeight));
    const int last = std::min(m_layout.rowCount() - 1, static_cast<int>((m_top + height()) / m_rowHeight));
    for (int row = first; row <= last; ++row)
        paintRow(painter, row, row * m_rowHeight + m_padding - m_top);
    if (!hasActiveFocus() || m_anchor != m_caret) return;
    const QRectF area = areaOf(m_caret);
    painter->fillRect(QRectF(std::floor(area.left()), area.top(), 1, area.height()), m_color);
}

} // namespace corvane
