#include "exec/app_paths.h"
#include "runtime/pihole_controller.h"
#include "tests/support/file_trouble.h"
#include "tests/support/home_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <atomic>
#include <thread>

namespace corvane::test {
namespace {

/// Sets the file-creation mask while it lives.
class Umask {
public:
    explicit Umask(mode_t mask)
        : m_before(::umask(mask))
    {}
    ~Umask() { ::umask(m_before); }
    Umask(const Umask &) = delete;
    Umask &operator=(const Umask &) = delete;

private:
    mode_t m_before;
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

void put(const QString &path, const QByteArray &content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

/// 0 when there is no such file.
mode_t modeOf(const QString &path)
{
    struct stat facts = {};
    return ::stat(QFile::encodeName(path).constData(), &facts) == 0 ? facts.st_mode & 07777 : 0;
}

std::expected<void, QString> write(const QString &password)
{
    return PiholeController::writeFiles(QStringLiteral("2026.09.0"), 8080, password);
}

const QString kPassword = QStringLiteral("pass word-ü");
const QByteArray kSecret = "FTLCONF_webserver_api_password=pass word-ü\n";

class PiholeFiles : public testing::Test {
protected:
    HomeFolder m_home;
    const QString m_folder = AppPaths::supportDir().path();
    const QString m_secret = PiholeController::environmentFile();
    const QString m_compose = PiholeController::composeFile();
};

TEST_F(PiholeFiles, Both_stand_in_the_support_folder)
{
    ASSERT_TRUE(write(kPassword));
    EXPECT_EQ(m_compose, m_home.path(QStringLiteral("Library/Application Support/Corvane/docker-compose.yml")));
    EXPECT_EQ(m_secret, m_home.path(QStringLiteral("Library/Application Support/Corvane/pihole.env")));
    const QString compose =
        PiholeController::composeText(QStringLiteral("2026.09.0"), 8080, PiholeController::safeTimeZone());
    EXPECT_EQ(contentOf(m_compose), compose.toUtf8());
    EXPECT_EQ(contentOf(m_secret), kSecret);
    EXPECT_EQ(QDir(m_folder).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

TEST_F(PiholeFiles, Only_the_owner_may_read_the_password_whatever_the_mask)
{
    for (const mode_t mask : {0000, 0022, 0077, 0777}) {
        const Umask umask(mask);
        ASSERT_TRUE(write(kPassword));
        EXPECT_EQ(modeOf(m_secret), 0600U) << mask;
        EXPECT_EQ(contentOf(m_secret), kSecret) << mask;
    }
}

TEST_F(PiholeFiles, At_no_moment_can_anybody_else_read_the_password)
{
    std::atomic<bool> done = false;
    std::atomic<int> seen = 0;
    std::atomic<mode_t> allModes = 0;
    std::thread watcher([&, path = m_secret] {
        while (!done) {
            const mode_t mode = modeOf(path);
            if (mode != 0) ++seen;
            allModes |= mode;
        }
    });
    const Umask open(0000);
    for (int i = 0; i < 100; ++i)
        EXPECT_TRUE(write(kPassword));
    done = true;
    watcher.join();
    EXPECT_GT(seen, 20);
    EXPECT_EQ(allModes, 0600U);
}

TEST_F(PiholeFiles, An_old_file_is_replaced_whatever_its_rights_and_length)
{
    put(m_secret, QByteArray(5000, 'x'));
    QFile::setPermissions(m_secret, QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther);
    ASSERT_TRUE(write(kPassword));
    EXPECT_EQ(modeOf(m_secret), 0600U);
    EXPECT_EQ(contentOf(m_secret), kSecret);
}

TEST_F(PiholeFiles, A_link_in_place_of_the_file_is_replaced_and_not_followed)
{
    const QString elsewhere = m_home.path(QStringLiteral("elsewhere"));
    put(elsewhere, "untouched");
    ASSERT_TRUE(QFile::link(elsewhere, m_secret));
    ASSERT_TRUE(write(kPassword));
    EXPECT_FALSE(QFileInfo(m_secret).isSymLink());
    EXPECT_EQ(contentOf(elsewhere), "untouched");
}

TEST_F(PiholeFiles, A_folder_in_place_of_the_password_file_is_reported)
{
    ASSERT_TRUE(QDir().mkpath(m_secret + QStringLiteral("/inside")));
    const auto written = write(kPassword);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error(), QStringLiteral("Could not write the password file."));
    EXPECT_TRUE(QFileInfo(m_secret + QStringLiteral("/inside")).isDir());
}

TEST_F(PiholeFiles, Without_a_compose_file_the_password_file_is_not_touched)
{
    put(m_secret, "as it was");
    ASSERT_TRUE(QDir().mkpath(m_compose));
    const auto written = write(kPassword);
    ASSERT_FALSE(written);
    EXPECT_FALSE(written.error().isEmpty());
    EXPECT_NE(written.error(), QStringLiteral("Could not write the password file."));
    EXPECT_EQ(contentOf(m_secret), "as it was");
}

TEST_F(PiholeFiles, In_a_read_only_folder_everything_stays_as_it_was)
{
    put(m_secret, "as it was");
    put(m_compose, "old");
    {
        const ReadOnlyFolder readOnly(m_folder);
        if (!readOnly.ready()) GTEST_SKIP() << "root cannot give its rights up here";
        const auto written = write(kPassword);
        ASSERT_FALSE(written);
        EXPECT_FALSE(written.error().isEmpty());
    }
    EXPECT_EQ(contentOf(m_secret), "as it was");
    EXPECT_EQ(contentOf(m_compose), "old");
}

TEST_F(PiholeFiles, A_full_disk_leaves_no_part_of_the_password)
{
    const FileSizeLimit limit(2000);
    const auto written = write(QString(5000, u'p'));
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error(), QStringLiteral("Could not write the password file."));
    EXPECT_FALSE(QFileInfo::exists(m_secret));
}

TEST_F(PiholeFiles, A_full_disk_keeps_the_old_compose_file_whole)
{
    ASSERT_TRUE(write(kPassword));
    const QByteArray before = contentOf(m_compose);
    {
        const FileSizeLimit limit(100);
        const auto written = PiholeController::writeFiles(QStringLiteral("1"), 8081, QStringLiteral("new"));
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error(), QStringLiteral("File too large"));
    }
    EXPECT_EQ(contentOf(m_compose), before);
    EXPECT_EQ(contentOf(m_secret), kSecret);
    EXPECT_EQ(QDir(m_folder).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

} // namespace
} // namespace corvane::test
