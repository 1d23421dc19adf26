#include "ui/log/log_layout.h"

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

int sizeOf(const QStringList &lines)
{
    qsizetype size = std::max<qsizetype>(0, lines.size() - 1);
    for (const QString &line : lines)
        size += line.size();
    return static_cast<int>(size);
}

int offsetOf(const QStringList &lines, LogLayout::Place place)
{
    qsizetype offset = place.column;
    for (int line = 0; line < place.line; ++line)
        offset += lines.at(line).size() + 1;
    return static_cast<int>(offset);
}

LogLayout::Place placeOf(const QStringList &lines, int offset)
{
    LogLayout::Place place{0, std::max(0, offset)};
    while (place.line + 1 < lines.size() && place.column > lines.at(place.line).size())
        place = {place.line + 1, place.column - static_cast<int>(lines.at(place.line).size()) - 1};
    return within(lines, place);
}

LogLayout::Place within(const QStringList &lines, LogLayout::Place place)
{
    if (lines.isEmpty()) return {};
    const int line = std::clamp(place.line, 0, static_cast<int>(lines.size()) - 1);
    const int size = static_cast<int>(lines.at(line).size());
    return {line, line < place.line ? size : std::clamp(place.column, 0, size)};
}

QString drawable(QStringView text)
{
    QString shown = text.toString();
    for (QChar &character : shown) {
        if (character.category() == QChar::Other_Control) character = u' ';
    }
    return shown;
}

} // namespace corvane
