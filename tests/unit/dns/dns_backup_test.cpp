#include "dns/dns_backup.h"
#include "tests/unit/dns/dns_values.h"

#include <QMap>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace corvane::test {
namespace {

const QString kPihole = QStringLiteral("127.0.0.1");

TEST(MergingBackups, Servers_that_macos_did_not_tell_never_replace_saved_ones)
{
    NetworkService unread = service("Wi-Fi", {});
    unread.serversKnown = false;
    EXPECT_EQ(DNSBackup::merged({entry("Wi-Fi", {"9.9.9.9"})}, {unread}),
              DNSBackup::Entries{entry("Wi-Fi", {"9.9.9.9"})});
    EXPECT_EQ(DNSBackup::merged({}, {unread}), DNSBackup::Entries{entry("Wi-Fi", {})});
}

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

} // namespace
} // namespace corvane::test
