#include "ui/log_text_view.h"

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
}

void LogTextView::setSource(OperationRunner *source)
{
    if (m_source == source) return;
    if (m_source) m_source->disconnect(this);
    m_source = source;
    if (m_source) {
        connect(m_source, &OperationRunner::linesChanged, this, &LogTextView::onLinesChanged);
        connect(m_source, &OperationRunner::linesReset, this, [this] { onLinesChanged(-1, 0); });
    }
    Q_EMIT sourceChanged();
    onLinesChanged(-1, 0);
}

void LogTextView::setText(const QString &text)
{
    const QStringList now = text.isEmpty() ? QStringList() : text.split(u'\n');
    if (now == m_text) return;
    m_text = now;
    Q_EMIT textChanged();
    if (!m_source) onLinesChanged(-1, 0);
}

void LogTextView::setFont(const QFont &font)
{
    if (font == m_font) return;
    m_font = font;
    const QFontMetricsF metrics(font);
    m_charWidth = std::max(1.0, metrics.horizontalAdvance(u'0'));
    m_rowHeight = std::ceil(metrics.height() * 1.15);
    Q_EMIT fontChanged();
    layOut();
}

double LogTextView::contentHeight() const { return m_layout.rowCount() * m_rowHeight + 2 * m_padding; }

double LogTextView::position() const { return contentHeight() > 0 ? m_top / contentHeight() : 0; }

double LogTextView::pageSize() const { return contentHeight() > height() ? height() / contentHeight() : 1; }

QString LogTextView::selectedText() const { return textBetween(lines(), m_anchor, m_caret); }

QString LogTextView::spokenText() const
{
    if (m_anchor != m_caret) return selectedText();
    return m_caret.line < lines().size() ? lines().at(m_caret.line) : QString();
}

void LogTextView::scrollTo(double position) { setTop(position * contentHeight()); }

void LogTextView::copy() const
{
    if (m_anchor != m_caret) QGuiApplication::clipboard()->setText(selectedText());
}

void LogTextView::selectAll()
{
    m_anchor = {};
    m_caret = end();
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
    if (removed < 0) {
        m_anchor = m_caret = {};
        m_layout.reset(lines(), m_layout.columns());
    } else {
        m_layout.change(lines(), removed, appended);
        for (LogLayout::Place *place : {&m_anchor, &m_caret})
            *place =
                place->line < removed ? LogLayout::Place() : LogLayout::Place{place->line - removed, place->column};
    }
    Q_EMIT contentChanged();
    scrollToEnd();
    update();
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

void LogTextView::moveCaret(LogLayout::Place caret, bool extend)
{
    m_caret = caret;
    if (!extend) m_anchor = caret;
    update();
    Q_EMIT selectionChanged();
}

void LogTextView::showCaret()
{
    const double y = m_layout.rowOf(m_caret) * m_rowHeight + m_padding;
    if (y < m_top) setTop(y);
    if (y + m_rowHeight > m_top + height()) setTop(y + m_rowHeight + m_padding - height());
}

void LogTextView::paintRow(QPainter *painter, int row, double y) const
{
    const LogLayout::Place start = m_layout.start(row);
    if (start.line >= lines().size()) return;
    const QString shown = drawable(QStringView(lines().at(start.line)).mid(start.column, m_layout.columns()));
    const double baseline = y + (m_rowHeight - QFontMetricsF(m_font).height()) / 2 + QFontMetricsF(m_font).ascent();
    painter->setPen(m_color);
    painter->drawText(QPointF(m_padding, baseline), shown);

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
    painter->drawText(QPointF(m_padding, baseline), shown);
    painter->restore();
}

void LogTextView::paint(QPainter *painter)
{
    painter->setFont(m_font);
    const int first = std::max(0, static_cast<int>((m_top - m_padding) / m_rowHeight));
    const int last = std::min(m_layout.rowCount() - 1, static_cast<int>((m_top + height()) / m_rowHeight));
    for (int row = first; row <= last; ++row)
        paintRow(painter, row, row * m_rowHeight + m_padding - m_top);
}

} // namespace corvane
