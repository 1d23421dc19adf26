#include "exec/app_paths.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace corvane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Another home folder while it lives.
class HomeFolder {
public:
    explicit HomeFolder(const QString &path)
        : m_before(qgetenv("HOME"))
    {
        qputenv("HOME", path.toUtf8());
    }
    ~HomeFolder() { qputenv("HOME", m_before); }

private:
    QByteArray m_before;
};

} // namespace

TEST(AppPaths, Both_folders_are_made_with_everything_above_them_on_access)
{
    QTemporaryDir home;
    const HomeFolder guard(home.path());
    const QString support = home.filePath(u"Library/Application Support/Corvane"_s);
    EXPECT_EQ(AppPaths::supportDir().path(), support);
    EXPECT_TRUE(QDir(support).exists());
    EXPECT_FALSE(QDir(support + u"/backups"_s).exists());
    EXPECT_EQ(AppPaths::backupsDir().path(), support + u"/backups"_s);
    EXPECT_TRUE(QDir(support + u"/backups"_s).exists());
}

TEST(AppPaths, A_removed_folder_is_made_again)
{
    QTemporaryDir home;
    const HomeFolder guard(home.path());
    ASSERT_TRUE(AppPaths::backupsDir().removeRecursively());
    EXPECT_TRUE(AppPaths::backupsDir().exists());
}

TEST(AppPaths, A_folder_that_cannot_be_made_is_answered_all_the_same)
{
    QTemporaryDir home;
    const HomeFolder guard(home.path());
    QFile inTheWay(home.filePath(u"Library"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    EXPECT_EQ(AppPaths::supportDir().path(), home.filePath(u"Library/Application Support/Corvane"_s));
    EXPECT_FALSE(AppPaths::backupsDir().exists());
}

} // namespace corvane
