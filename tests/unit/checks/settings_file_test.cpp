#include "checks/settings_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <thread>

namespace corvane::test {
namespace {

class SettingsFile : public testing::Test {
protected:
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("Local State"));

    void put(const QByteArray &content) const
    {
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    [[nodiscard]] QByteArray encodedPath() const { return QFile::encodeName(m_path); }
};

TEST_F(SettingsFile, Is_read_whole)
{
    for (const qsizetype size : {0, 1, 100, 3'000'000}) {
        put(QByteArray(size, 'x'));
        EXPECT_EQ(readSettingsFile(m_path), QByteArray(size, 'x')) << size;
    }
}

TEST_F(SettingsFile, Keeps_every_byte)
{
    const QByteArray bytes("a\0b\r\n\xff", 6);
    put(bytes);
    EXPECT_EQ(readSettingsFile(m_path), bytes);
}

TEST_F(SettingsFile, That_is_missing_cannot_be_read)
{
    EXPECT_EQ(readSettingsFile(m_path), std::nullopt);
    EXPECT_EQ(readSettingsFile(QString()), std::nullopt);
}

TEST_F(SettingsFile, A_link_is_followed_but_not_in_a_circle)
{
    put("content");
    const QString link = m_folder.filePath(QStringLiteral("link"));
    ASSERT_TRUE(QFile::link(m_path, link));
    EXPECT_EQ(readSettingsFile(link), QByteArray("content"));

    const QString circle = m_folder.filePath(QStringLiteral("circle"));
    ASSERT_TRUE(QFile::link(circle, circle));
    EXPECT_EQ(readSettingsFile(circle), std::nullopt);
}

TEST_F(SettingsFile, A_folder_a_pipe_a_socket_and_a_device_are_no_files)
{
    EXPECT_EQ(readSettingsFile(m_folder.path()), std::nullopt);
    EXPECT_EQ(readSettingsFile(QStringLiteral("/dev/null")), std::nullopt);
    EXPECT_EQ(readSettingsFile(QStringLiteral("/dev/zero")), std::nullopt);
    EXPECT_EQ(readSettingsFile(QStringLiteral("/dev/tty")), std::nullopt);

    ASSERT_EQ(::mkfifo(encodedPath().constData(), 0600), 0);
    EXPECT_EQ(readSettingsFile(m_path), std::nullopt);
    ASSERT_TRUE(QFile::remove(m_path));

    const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, encodedPath().constData(), sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    EXPECT_EQ(readSettingsFile(m_path), std::nullopt);
    ::close(listener);
}

TEST_F(SettingsFile, Of_two_hundred_megabytes_is_no_settings_file)
{
    put({});
    ASSERT_TRUE(QFile::resize(m_path, 200LL * 1024 * 1024));
    EXPECT_EQ(readSettingsFile(m_path), std::nullopt);
}

TEST_F(SettingsFile, May_be_as_large_as_the_limit_and_no_larger)
{
    constexpr qint64 kLimit = 64LL * 1024 * 1024;
    put({});
    ASSERT_TRUE(QFile::resize(m_path, kLimit));
    const auto bytes = readSettingsFile(m_path);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), kLimit);
    ASSERT_TRUE(QFile::resize(m_path, kLimit + 1));
    EXPECT_EQ(readSettingsFile(m_path), std::nullopt);
}

TEST_F(SettingsFile, That_changes_while_it_is_read_gives_some_bytes_and_ends)
{
    put(QByteArray(100'000, 'a'));
    std::atomic<bool> done = false;
    std::thread writer([&] {
        for (int i = 0; !done; ++i) {
            QFile file(m_path);
            if (file.open(QIODevice::WriteOnly)) file.write(QByteArray(i % 3 * 100'000, 'b'));
        }
    });
    for (int i = 0; i < 200; ++i) {
        const auto bytes = readSettingsFile(m_path);
        ASSERT_TRUE(bytes);
        EXPECT_LE(bytes->size(), 200'000);
    }
    done = true;
    writer.join();
}

TEST_F(SettingsFile, Is_neither_written_nor_locked)
{
    put("content");
    const QDateTime before = QFileInfo(m_path).lastModified();
    ASSERT_EQ(::chmod(encodedPath().constData(), 0400), 0);
    EXPECT_EQ(readSettingsFile(m_path), QByteArray("content"));
    EXPECT_EQ(QFileInfo(m_path).lastModified(), before);
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 1);
}

TEST_F(SettingsFile, Leaves_no_descriptor_open)
{
    put("content");
    const int before = ::dup(0);
    ::close(before);
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(readSettingsFile(m_path));
        EXPECT_FALSE(readSettingsFile(m_folder.path()));
        EXPECT_FALSE(readSettingsFile(QStringLiteral("/dev/null")));
    }
    const int after = ::dup(0);
    ::close(after);
    EXPECT_EQ(after, before);
}

} // namespace
} // namespace corvane::test
