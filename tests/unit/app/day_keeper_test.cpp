#include "app/day_keeper.h"
#include "exec/background.h"
#include "tests/support/file_trouble.h"
#include "tests/support/home_folder.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace corvane;
using namespace corvane::test;

namespace {

/// Lets what runs on workers come to its end.
void settle()
{
    ASSERT_TRUE(waitForWorkers(std::chrono::seconds(20)));
    QCoreApplication::processEvents();
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QByteArray &bytes)
{
    QFile file(DayKeeper::path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

class DayKeeping : public testing::Test {
protected:
    HomeFolder m_home;
};

} // namespace

TEST_F(DayKeeping, What_was_seen_outlives_corvane)
{
    {
        DayKeeper keeper;
        settle();
        keeper.note(Protection::Protected);
        keeper.countOwn();
    }
    DayKeeper keeper;
    settle();
    ASSERT_EQ(keeper.record().spans().size(), 1);
    EXPECT_EQ(keeper.record().spans().first().state, Protection::Protected);
    const qint64 start = keeper.record().spans().first().start;
    EXPECT_EQ(keeper.record().ownIn(start / 600 * 600).asked + keeper.record().ownIn(start / 600 * 600 + 600).asked, 1);
}

TEST_F(DayKeeping, Only_its_owner_may_read_the_file)
{
    DayKeeper keeper;
    settle();
    keeper.note(Protection::Protected);
    settle();
    EXPECT_EQ(QFileInfo(DayKeeper::path()).permissions() & ~(QFile::ReadUser | QFile::WriteUser),
              QFile::ReadOwner | QFile::WriteOwner);
}

TEST_F(DayKeeping, What_is_noted_before_the_file_was_read_does_not_replace_it)
{
    write("corvane day 1\nspan 1000 2000 1\nend\n");
    DayKeeper keeper;
    keeper.note(Protection::NotUsed);
    EXPECT_TRUE(contentOf(DayKeeper::path()).contains("span 1000 2000 1"));
    settle();
    EXPECT_EQ(keeper.record().spans().last().state, Protection::NotUsed);
}

TEST_F(DayKeeping, A_damaged_file_starts_anew)
{
    for (const QByteArray &bytes : {QByteArray("corvane day 1\nspan 5 4 1\nend\n"), QByteArray("\0\xff", 2),
                                    QByteArray(2 << 20, 'x'), QByteArray()}) {
        write(bytes);
        DayKeeper keeper;
        settle();
        EXPECT_TRUE(keeper.record().spans().isEmpty());
        keeper.note(Protection::Protected);
        settle();
        EXPECT_TRUE(DayRecord::fromBytes(contentOf(DayKeeper::path())));
    }
}

TEST_F(DayKeeping, A_folder_in_the_files_place_is_told_and_nothing_is_lost)
{
    ASSERT_TRUE(QDir().mkpath(DayKeeper::path() + QStringLiteral("/inside")));
    DayKeeper keeper;
    settle();
    keeper.note(Protection::Protected);
    settle();
    EXPECT_TRUE(keeper.trouble().startsWith(QStringLiteral("The day's record could not be saved: ")));
    EXPECT_EQ(keeper.record().spans().size(), 1);
    ASSERT_TRUE(QDir(DayKeeper::path()).removeRecursively());
    keeper.note(Protection::Backup);
    settle();
    EXPECT_EQ(keeper.trouble(), QString());
}

TEST_F(DayKeeping, A_full_disk_leaves_the_old_record)
{
    DayKeeper keeper;
    settle();
    keeper.note(Protection::Protected);
    settle();
    const QByteArray before = contentOf(DayKeeper::path());
    {
        const FileSizeLimit full(3);
        keeper.note(Protection::Backup);
        settle();
    }
    EXPECT_EQ(contentOf(DayKeeper::path()), before);
    EXPECT_NE(keeper.trouble(), QString());
}

TEST_F(DayKeeping, The_file_is_written_when_something_changes_and_not_at_every_look)
{
    DayKeeper keeper;
    settle();
    keeper.note(Protection::Protected);
    settle();
    ASSERT_TRUE(QFile::remove(DayKeeper::path()));
    const qint64 slot = QDateTime::currentSecsSinceEpoch() / DayRecord::kSlot;
    for (int look = 0; look < 20; ++look)
        keeper.note(Protection::Protected);
    settle();
    const bool anotherSlot = QDateTime::currentSecsSinceEpoch() / DayRecord::kSlot != slot;
    EXPECT_TRUE(anotherSlot || !QFile::exists(DayKeeper::path()));
    keeper.note(Protection::NotBlocking);
    settle();
    EXPECT_TRUE(QFile::exists(DayKeeper::path()));
}
