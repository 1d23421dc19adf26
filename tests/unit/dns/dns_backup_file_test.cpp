#include "dns/dns_backup.h"
#include "dns/dns_configurator.h"
#include "tests/support/file_trouble.h"
#include "tests/support/home_folder.h"
#include "tests/unit/dns/dns_values.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <random>

namespace corvane::test {
namespace {

class BackupFile : public testing::Test {
protected:
    HomeFolder m_home;
    const QString m_file = DNSConfigurator::backupFile();

    void put(const QByteArray &content) const
    {
        QFile file(m_file);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
};

TEST_F(BackupFile, Stands_in_the_support_folder)
{
    EXPECT_EQ(m_file, m_home.path(QStringLiteral("Library/Application Support/Corvane/dns-backup.json")));
    EXPECT_FALSE(DNSConfigurator::hasBackup());
    ASSERT_TRUE(DNSConfigurator::saveBackup({service("Wi-Fi", {"9.9.9.9"})}));
    EXPECT_TRUE(DNSConfigurator::hasBackup());
    EXPECT_EQ(DNSBackup::load(), DNSBackup::Entries{entry("Wi-Fi", {"9.9.9.9"})});
}

TEST_F(BackupFile, A_second_save_merges_into_the_first)
{
    ASSERT_TRUE(DNSConfigurator::saveBackup({service("Wi-Fi", {"9.9.9.9"})}));
    ASSERT_TRUE(DNSConfigurator::saveBackup({service("Wi-Fi", {"127.0.0.1"}), service("LAN", {"127.0.0.1"})}));
    EXPECT_EQ(DNSBackup::load(), (DNSBackup::Entries{entry("Wi-Fi", {"9.9.9.9"}), entry("LAN", {})}));
}

TEST_F(BackupFile, A_damaged_one_counts_as_empty_and_is_replaced)
{
    put("[{\"service\":");
    EXPECT_FALSE(DNSConfigurator::hasBackup());
    ASSERT_TRUE(DNSConfigurator::saveBackup({service("Wi-Fi", {})}));
    EXPECT_EQ(DNSBackup::load(), DNSBackup::Entries{entry("Wi-Fi", {})});
}

TEST_F(BackupFile, One_without_entries_is_no_backup)
{
    put("[]");
    EXPECT_FALSE(DNSConfigurator::hasBackup());
}

TEST_F(BackupFile, One_of_ten_megabytes_is_not_ours)
{
    QByteArray large = DNSBackup::encode(kTwo);
    large.append(QByteArray(10 * 1024 * 1024, ' '));
    ASSERT_EQ(DNSBackup::decode(large), kTwo);
    put(large);
    EXPECT_TRUE(DNSBackup::load().isEmpty());
}

TEST_F(BackupFile, With_two_thousand_services_is_still_read)
{
    DNSBackup::Entries many;
    for (int i = 0; i < 2000; ++i)
        many += {QString::number(i), list({"192.168.100.200", "192.168.100.201"})};
    ASSERT_TRUE(DNSBackup::store(many));
    EXPECT_EQ(DNSBackup::load(), many);
}

TEST_F(BackupFile, A_folder_in_its_place_counts_as_empty_and_stops_the_save)
{
    ASSERT_TRUE(QDir().mkpath(m_file));
    EXPECT_TRUE(DNSBackup::load().isEmpty());
    const auto saved = DNSConfigurator::saveBackup({service("Wi-Fi", {})});
    ASSERT_FALSE(saved);
    EXPECT_FALSE(saved.error().isEmpty());
}

TEST_F(BackupFile, A_pipe_in_its_place_counts_as_empty_without_waiting)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(m_file).constData(), 0600), 0);
    EXPECT_TRUE(DNSBackup::load().isEmpty());
}

TEST_F(BackupFile, A_full_disk_keeps_the_old_one_whole)
{
    ASSERT_TRUE(DNSBackup::store(kTwo));
    {
        const FileSizeLimit limit(40);
        const auto saved = DNSConfigurator::saveBackup({service("LAN", {"8.8.8.8"})});
        ASSERT_FALSE(saved);
        EXPECT_EQ(saved.error(), QStringLiteral("File too large"));
    }
    EXPECT_EQ(DNSBackup::load(), kTwo);
}

TEST_F(BackupFile, A_read_only_folder_keeps_the_old_one)
{
    ASSERT_TRUE(DNSBackup::store(kTwo));
    {
        const ReadOnlyFolder readOnly(QFileInfo(m_file).path());
        if (!readOnly.ready()) GTEST_SKIP() << "root cannot give its rights up here";
        const auto saved = DNSBackup::store({});
        ASSERT_FALSE(saved);
        EXPECT_FALSE(saved.error().isEmpty());
    }
    EXPECT_EQ(DNSBackup::load(), kTwo);
}

/// Saves one and the other in turn, and writes a byte for each time that both were saved.
[[noreturn]] void saveForEver(int saved, const DNSBackup::Entries &one, const DNSBackup::Entries &other)
{
    for (;;) {
        if (!DNSBackup::store(one) || !DNSBackup::store(other) || ::write(saved, "s", 1) != 1) ::_exit(1);
    }
}

TEST_F(BackupFile, Is_whole_whenever_the_program_is_killed)
{
    DNSBackup::Entries large;
    for (int i = 0; i < 1000; ++i)
        large += {QStringLiteral("Service %1").arg(i), list({"9.9.9.9"})};
    ASSERT_TRUE(DNSBackup::store(kTwo));

    std::mt19937 random(7);
    for (int kill = 0; kill < 100; ++kill) {
        std::array<int, 2> saved{};
        ASSERT_EQ(::pipe(saved.data()), 0);
        const pid_t child = ::fork();
        if (child == 0) saveForEver(saved[1], kTwo, large);
        ::close(saved[1]);
        char byte = 0;
        EXPECT_EQ(::read(saved[0], &byte, 1), 1) << "it saves over and over by now";
        ::usleep(random() % 40000);
        ::kill(child, SIGKILL);
        ::close(saved[0]);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "a save failed";
        const DNSBackup::Entries found = DNSBackup::load();
        EXPECT_TRUE(found == kTwo || found == large) << kill;
    }
}

} // namespace
} // namespace corvane::test
