#include "tests/flows/in_state.h"
#include "tests/flows/saved_files.h"

#include <QDir>

namespace corvane::test {

namespace {

/// A zip archive with nothing in it.
QByteArray emptyZip() { return "PK\x05\x06" + QByteArray(18, '\0'); }

class Imports : public Running {
protected:
    Imports() { Mac::ctl(QStringLiteral("pihole login-limit 100")); }

    void import(const char *name)
    {
        user.picks(QDir::home().filePath(QString::fromUtf8(name)));
        run(model().importBackup());
    }
};

} // namespace

TEST_F(Imports, A_zip_that_restored_nothing_is_no_backup)
{
    write(QDir::home().filePath(QStringLiteral("holiday.zip")), emptyZip());
    import("holiday.zip");
    EXPECT_TEXT(model().notice(), "Restore failed: holiday.zip holds no Pi-hole settings.");
}

TEST_F(Imports, A_backup_in_capital_letters_is_restored)
{
    user.picks(QDir::home().filePath(QStringLiteral("MINE.ZIP")));
    run(model().exportBackup());
    import("MINE.ZIP");
    EXPECT_TEXT(model().notice(), "Backup restored.");
}

TEST_F(Imports, The_counters_afterwards_are_those_of_the_pihole_that_started_anew)
{
    user.picks(QDir::home().filePath(QStringLiteral("mine.zip")));
    run(model().exportBackup());
    for (int i = 0; i < 30; ++i)
        run(model().refreshStatus(Stats::Leave));
    run(model().refreshStatus(Stats::Include));
    const qint64 before = model().summary()->total;
    ASSERT_GE(before, 30);
    import("mine.zip");
    ASSERT_TRUE(model().summary());
    EXPECT_NE(model().summary()->total, before) << "they were read after it";
}

} // namespace corvane::test
