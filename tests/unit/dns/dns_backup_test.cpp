#include "dns/dns_backup.h"
#include "dns/dns_configurator.h"
#include "tests/support/file_trouble.h"
#include "tests/support/home_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

namespace corvane {
namespace {

const QString kPihole = QStringLiteral("127.0.0.1");

QStringList list(std::initializer_list<const char *> items)
{
    QStringList result;
    for (const char *item : items)
        result += QString::fromUtf8(item);
    return result;
}

NetworkService service(const char *name, std::initializer_list<const char *> servers)
{
    return {.name = QString::fromUtf8(name), .servers = list(servers), .isDefaultRoute = false};
}

DNSBackupEntry entry(const char *name, std::initializer_list<const char *> servers)
{
    return {.service = QString::fromUtf8(name), .servers = list(servers)};
}

const DNSBackup::Entries kTwo{entry("Anna's \"LAN\" \\ ü 🙂", {"9.9.9.9", "fe80::1%en0"}), entry("Wi-Fi", {})};

TEST(BackupText, Is_pretty_json_with_sorted_keys)
{
    EXPECT_EQ(DNSBackup::encode({entry("Wi-Fi", {"9.9.9.9"}), entry("LAN", {})}), R"([
    {
        "servers": [
            "9.9.9.9"
        ],
        "service": "Wi-Fi"
    },
    {
        "servers": [
        ],
        "service": "LAN"
    }
]
)");
}

TEST(BackupText, Gives_back_what_was_written)
{
    EXPECT_EQ(DNSBackup::decode(DNSBackup::encode(kTwo)), kTwo);
    EXPECT_EQ(DNSBackup::decode(DNSBackup::encode({})), DNSBackup::Entries());
}

TEST(BackupText, Cut_short_anywhere_counts_as_empty)
{
    const QByteArray whole = DNSBackup::encode(kTwo).trimmed();
    for (qsizetype length = 0; length < whole.size(); ++length) {
        EXPECT_TRUE(DNSBackup::decode(whole.first(length)).isEmpty()) << length;
    }
    EXPECT_EQ(DNSBackup::decode(whole), kTwo);
}

TEST(BackupText, Of_any_other_shape_counts_as_empty)
{
    const QByteArray good = R"({"service":"Wi-Fi","servers":["1.1.1.1"]})";
    ASSERT_EQ(DNSBackup::decode('[' + good + ']').size(), 1);
    const QList<QByteArray> foreign{
        "",
        "null",
        "{}",
        "[1]",
        "[[]]",
        "[null]",
        "\"text\"",
        good,
        '[' + good + ",]",
        '[' + good + ",{}]",
        '[' + good + "] more",
        R"([{"service":"Wi-Fi"}])",
        R"([{"servers":[]}])",
        R"([{"service":1,"servers":[]}])",
        R"([{"service":"Wi-Fi","servers":{}}])",
        R"([{"service":"Wi-Fi","servers":"1.1.1.1"}])",
        R"([{"service":"Wi-Fi","servers":["1.1.1.1",null]}])",
        "[{\"service\":\"\xff\",\"servers\":[]}]",
        QByteArray(100000, '['),
        QByteArray(1000, '\0'),
    };
    for (const QByteArray &text : foreign)
        EXPECT_TRUE(DNSBackup::decode(text).isEmpty()) << text.left(80).toStdString();
}

TEST(MergingBackups, Appends_services_in_the_order_of_their_first_save)
{
    const auto first = DNSBackup::merged({}, {service("B", {"9.9.9.9"}), service("A", {})});
    EXPECT_EQ(first, (DNSBackup::Entries{entry("B", {"9.9.9.9"}), entry("A", {})}));
    EXPECT_EQ(DNSBackup::merged(first, {service("C", {"8.8.8.8"}), service("A", {"1.2.3.4"})}),
              (DNSBackup::Entries{entry("B", {"9.9.9.9"}), entry("A", {"1.2.3.4"}), entry("C", {"8.8.8.8"})}));
}

TEST(MergingBackups, A_service_at_pihole_keeps_what_was_saved_first)
{
    const DNSBackup::Entries saved{entry("Wi-Fi", {"9.9.9.9"})};
    EXPECT_EQ(DNSBackup::merged(saved, {service("Wi-Fi", {"127.0.0.1", "1.1.1.1"})}), saved);
    EXPECT_EQ(DNSBackup::merged(saved, {service("Wi-Fi", {"127.0.0.1"})}), saved);
}

TEST(MergingBackups, A_service_that_was_at_pihole_before_is_saved_as_automatic)
{
    EXPECT_EQ(DNSBackup::merged({}, {service("Wi-Fi", {"127.0.0.1", "1.1.1.1"})}),
              DNSBackup::Entries{entry("Wi-Fi", {})});
}

TEST(MergingBackups, Only_the_first_server_tells_that_a_service_points_at_pihole)
{
    const DNSBackup::Entries saved{entry("Wi-Fi", {"9.9.9.9"})};
    EXPECT_EQ(DNSBackup::merged(saved, {service("Wi-Fi", {"1.1.1.1", "127.0.0.1"})}),
              DNSBackup::Entries{entry("Wi-Fi", {"1.1.1.1", "127.0.0.1"})});
    EXPECT_EQ(DNSBackup::merged(saved, {service("Wi-Fi", {})}), DNSBackup::Entries{entry("Wi-Fi", {})});
}

TEST(MergingBackups, A_name_that_the_file_holds_twice_is_saved_in_its_first_entry)
{
    const DNSBackup::Entries twice{entry("A", {"1.1.1.1"}), entry("A", {"2.2.2.2"})};
    EXPECT_EQ(DNSBackup::merged(twice, {service("A", {"3.3.3.3"})}),
              (DNSBackup::Entries{entry("A", {"3.3.3.3"}), entry("A", {"2.2.2.2"})}));
}

/// A Mac with a few services that are pointed at Pi-hole and back.
class RandomMac {
public:
    explicit RandomMac(unsigned seed)
        : m_random(seed)
    {
        const QList<QStringList> choices{{}, list({"9.9.9.9"}), list({"8.8.8.8", "127.0.0.1"}), list({"127.0.0.1"})};
        for (int i = 0; i < 5; ++i)
            m_servers.insert(QString::number(i), choices[below(choices.size())]);
        m_original = m_servers;
    }

    void applyToSome()
    {
        QList<NetworkService> chosen;
        for (const QString &name : m_servers.keys()) {
            if (below(2) == 0) chosen += NetworkService{name, m_servers[name], false};
        }
        m_backup = DNSBackup::decode(DNSBackup::encode(DNSBackup::merged(m_backup, chosen)));
        for (const NetworkService &one : chosen)
            m_servers[one.name] = below(2) ? list({"127.0.0.1"}) : withSpare();
    }

    void restore()
    {
        for (const DNSBackupEntry &saved : m_backup)
            m_servers[saved.service] = saved.servers;
    }

    void expectAsBefore() const
    {
        for (const DNSBackupEntry &saved : m_backup) {
            const QStringList before = m_original[saved.service];
            const bool wasAtPihole = !before.isEmpty() && before.first() == kPihole;
            EXPECT_EQ(m_servers[saved.service], wasAtPihole ? QStringList() : before);
        }
        for (const QString &name : m_servers.keys()) {
            EXPECT_TRUE(isSaved(name) || m_servers[name] == m_original[name]) << name.toStdString();
        }
    }

    [[nodiscard]] qsizetype below(qsizetype limit) { return static_cast<qsizetype>(m_random() % std::size_t(limit)); }

private:
    static QStringList withSpare() { return list({"127.0.0.1", "1.1.1.1"}); }
    [[nodiscard]] bool isSaved(const QString &name) const
    {
        return std::ranges::find(m_backup, name, &DNSBackupEntry::service) != m_backup.end();
    }

    std::mt19937 m_random;
    QMap<QString, QStringList> m_servers;
    QMap<QString, QStringList> m_original;
    DNSBackup::Entries m_backup;
};

TEST(MergingBackups, After_any_sequence_restore_gives_every_service_what_it_had_before_the_first_change)
{
    for (unsigned seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE(seed);
        RandomMac mac(seed);
        for (qsizetype step = mac.below(12); step >= 0; --step) {
            if (mac.below(3) == 0)
                mac.restore();
            else
                mac.applyToSome();
        }
        mac.restore();
        mac.expectAsBefore();
    }
}

class BackupFile : public testing::Test {
protected:
    test::HomeFolder m_home;
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
        const test::FileSizeLimit limit(40);
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
        const test::ReadOnlyFolder readOnly(QFileInfo(m_file).path());
        if (!readOnly.ready()) GTEST_SKIP() << "root cannot give its rights up here";
        const auto saved = DNSBackup::store({});
        ASSERT_FALSE(saved);
        EXPECT_FALSE(saved.error().isEmpty());
    }
    EXPECT_EQ(DNSBackup::load(), kTwo);
}

[[noreturn]] void saveForEver(const DNSBackup::Entries &one, const DNSBackup::Entries &other)
{
    for (;;) {
        if (!DNSBackup::store(one) || !DNSBackup::store(other)) ::_exit(1);
    }
}

TEST_F(BackupFile, Is_whole_whenever_the_program_is_killed)
{
    DNSBackup::Entries large;
    for (int i = 0; i < 1000; ++i)
        large += {QStringLiteral("Service %1").arg(i), list({"9.9.9.9"})};
    ASSERT_TRUE(DNSBackup::store(kTwo));

    std::mt19937 random(7);
    int largeOnes = 0;
    for (int kill = 0; kill < 40; ++kill) {
        const pid_t child = ::fork();
        if (child == 0) saveForEver(kTwo, large);
        ::usleep(2000 + random() % 80000);
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "a save failed";
        const DNSBackup::Entries found = DNSBackup::load();
        EXPECT_TRUE(found == kTwo || found == large) << kill;
        if (found == large) ++largeOnes;
    }
    EXPECT_GT(largeOnes, 0);
}

} // namespace
} // namespace corvane
