#pragma once

#include "ui/decisions/rows.h"

#include <QAbstractListModel>

namespace corvane {

/// A list of rows for a view. A row that changes is reported as such, so that its neighbours keep their place and
/// focus.
class RowList : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    using QAbstractListModel::QAbstractListModel;

    void show(const QList<Row> &rows);
    [[nodiscard]] int count() const { return static_cast<int>(m_rows.size()); }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    QList<Row> m_rows;
};

} // namespace corvane
