#pragma once

#include "tests/ui/screen.h"

namespace corvane::test {

/// The set-up in its window.
class Wizard : public Screen {
protected:
    /// Expects the item to show each row of the list, whatever it says.
    void expectRows(const QString &name, RowList *rows)
    {
        ASSERT_TRUE(shows(name)) << qPrintable(name);
        const QStringList all = texts();
        for (int i = 0; i < rows->count(); ++i) {
            const Row row = rows->data(rows->index(i), Qt::UserRole).value<Row>();
            EXPECT_TRUE(all.contains(row.title)) << qPrintable(row.title);
        }
    }
};

} // namespace corvane::test
