#include "exec/app_paths.h"
#include "tests/support/home_folder.h"

#include <QFile>
#include <gtest/gtest.h>

namespace corvane::test {

using namespace Qt::Literals::StringLiterals;

TEST(AppPaths, Both_folders_are_made_with_everything_above_them_on_access)
{
    const HomeFolder home;
    const QString support = home.path(u"Library/Application Support/Corvane"_s);
    EXPECT_EQ(AppPaths::supportDir().path(), support);
    EXPECT_TRUE(QDir(support).exists());
    EXPECT_FALSE(QDir(support + u"/backups"_s).exists());
    EXPECT_EQ(AppPaths::backupsDir().path(), support + u"/backups"_s);
    EXPECT_TRUE(QDir(support + u"/backups"_s).exists());
}

TEST(AppPaths, A_removed_folder_is_made_again)
{
    const HomeFolder home;
    ASSERT_TRUE(AppPaths::backupsDir().removeRecursively());
    EXPECT_TRUE(AppPaths::backupsDir().exists());
}

TEST(AppPaths, A_folder_that_cannot_be_made_is_answered_all_the_same)
{
    const HomeFolder home;
    QFile inTheWay(home.path(u"Library"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    EXPECT_EQ(AppPaths::supportDir().path(), home.path(u"Library/Application Support/Corvane"_s));
    EXPECT_FALSE(AppPaths::backupsDir().exists());
}

} // namespace corvane::test
