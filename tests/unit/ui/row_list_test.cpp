#include "ui/row_list.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace corvane::test {

namespace {

QList<Row> rows(const QString &secondDetail)
{
    return {{QStringLiteral("a"), {}, QStringLiteral("A"), {}},
            {QStringLiteral("b"), {}, QStringLiteral("B"), secondDetail}};
}

TEST(RowList, A_changed_row_leaves_its_neighbours_alone)
{
    RowList list;
    list.show(rows(QStringLiteral("before")));
    QSignalSpy resets(&list, &RowList::modelReset);
    QSignalSpy changes(&list, &RowList::dataChanged);
    list.show(rows(QStringLiteral("after")));
    EXPECT_EQ(resets.size(), 0);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes.first().at(0).toModelIndex().row(), 1);
    EXPECT_EQ(list.data(list.index(1), Qt::UserRole).value<Row>().detail, QStringLiteral("after"));
}

TEST(RowList, Equal_rows_tell_nobody)
{
    RowList list;
    list.show(rows({}));
    QSignalSpy resets(&list, &RowList::modelReset);
    QSignalSpy changes(&list, &RowList::dataChanged);
    list.show(rows({}));
    EXPECT_EQ(resets.size() + changes.size(), 0);
}

TEST(RowList, Other_rows_replace_the_list_whole)
{
    RowList list;
    list.show(rows({}));
    QSignalSpy counts(&list, &RowList::countChanged);
    list.show({});
    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(counts.size(), 1);
}

} // namespace

} // namespace corvane::test
