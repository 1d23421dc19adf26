#pragma once

#include <QStringList>

#include <compare>
#include <deque>

namespace corvane {

/// Where the lines of a log are when each is broken into rows of equally many characters.
class LogLayout {
public:
    /// A place between two characters.
    struct Place {
        int line = 0;
        int column = 0;

        auto operator<=>(const Place &) const = default;
    };

    /// Lays all lines out again.
    void reset(const QStringList &lines, int columns);
    /// Follows a change of the lines: `removed` went from the front, then `appended` came at the end.
    void change(const QStringList &lines, int removed, int appended);

    [[nodiscard]] int columns() const { return m_columns; }
    [[nodiscard]] int rowCount() const { return m_rowCount; }
    /// The first character of the row.
    [[nodiscard]] Place start(int row) const;
    [[nodiscard]] int rowOf(Place place) const;

private:
    [[nodiscard]] int rowsOf(const QString &line) const;

    std::deque<int> m_rows;
    int m_rowCount = 0;
    int m_columns = 1;
};

/// The text between two places.
[[nodiscard]] QString textBetween(const QStringList &lines, LogLayout::Place from, LogLayout::Place to);

/// How many characters the lines have, with one break between each two of them.
[[nodiscard]] int sizeOf(const QStringList &lines);
/// How many characters come before a place, and the place that comes after so many.
[[nodiscard]] int offsetOf(const QStringList &lines, LogLayout::Place place);
[[nodiscard]] LogLayout::Place placeOf(const QStringList &lines, int offset);
/// The nearest place that the lines have.
[[nodiscard]] LogLayout::Place within(const QStringList &lines, LogLayout::Place place);

/// The text of a row as it is drawn: control characters become spaces. Every character takes one column, so those of
/// East Asian scripts, which are wider, overlap.
[[nodiscard]] QString drawable(QStringView text);

} // namespace corvane
