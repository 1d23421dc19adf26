#include "ui/row_list.h"

#include <algorithm>

namespace corvane {

namespace {

bool sameRows(const QList<Row> &one, const QList<Row> &other)
{
    return std::ranges::equal(one, other, {}, &Row::id, &Row::id);
}

} // namespace

void RowList::show(const QList<Row> &rows)
{
    if (!sameRows(m_rows, rows)) {
        beginResetModel();
        m_rows = rows;
        endResetModel();
        Q_EMIT countChanged();
        return;
    }
    for (int i = 0; i < count(); ++i) {
        if (m_rows.at(i) == rows.at(i)) continue;
        m_rows[i] = rows.at(i);
        Q_EMIT dataChanged(index(i), index(i));
    }
}

int RowList::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : count(); }

QVariant RowList::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != Qt::UserRole) return {};
    return QVariant::fromValue(m_rows.at(index.row()));
}

QHash<int, QByteArray> RowList::roleNames() const { return {{Qt::UserRole, "row"}}; }

} // namespace corvane
