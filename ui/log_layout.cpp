#include "ui/log_layout.h"

#include <algorithm>
#include <utility>

namespace corvane {

int LogLayout::rowsOf(const QString &line) const
{
    return std::max(1, static_cast<int>((line.size() + m_columns - 1) / m_columns));
}

void LogLayout::reset(const QStringList &lines, int columns)
{
    m_columns = std::max(1, columns);
    m_rows.clear();
    m_rowCount = 0;
    change(lines, 0, static_cast<int>(lines.size()));
}

void LogLayout::change(const QStringList &lines, int removed, int appended)
{
    for (; removed > 0 && !m_rows.empty(); --removed) {
        m_rowCount -= m_rows.front();
        m_rows.pop_front();
    }
    for (qsizetype i = std::max<qsizetype>(0, lines.size() - appended); i < lines.size(); ++i) {
        m_rows.push_back(rowsOf(lines.at(i)));
        m_rowCount += m_rows.back();
    }
}

LogLayout::Place LogLayout::start(int row) const
{
    int line = 0;
    for (const int rows : m_rows) {
        if (row < rows) return {line, row * m_columns};
        row -= rows;
        ++line;
    }
    return {line, 0};
}

int LogLayout::rowOf(Place place) const
{
    const auto end = m_rows.begin() + std::min<std::ptrdiff_t>(place.line, std::ssize(m_rows));
    int row = 0;
    for (auto rows = m_rows.begin(); rows != end; ++rows)
        row += *rows;
    if (end == m_rows.end()) return row;
    return row + std::min(place.column / m_columns, *end - 1);
}

QString textBetween(const QStringList &lines, LogLayout::Place from, LogLayout::Place to)
{
    if (to < from) std::swap(from, to);
    QStringList parts;
    for (int line = from.line; line <= to.line && line < lines.size(); ++line) {
        const int first = line == from.line ? from.column : 0;
        const int end = line == to.line ? to.column : static_cast<int>(lines.at(line).size());
        parts << lines.at(line).mid(first, end - first);
    }
    return parts.join(u'\n');
}

QString drawable(QStringView text)
{
    QString shown = text.toString();
    for (QChar &sign : shown) {
        if (sign.category() == QChar::Other_Control) sign = u' ';
    }
    return shown;
}

} // namespace corvane
