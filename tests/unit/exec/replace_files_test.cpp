#include "exec/replace_file.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace corvane::test {
namespace {

/// This process is another user, as far as files go, while it lives.
class SomebodyElse {
public:
    SomebodyElse()
        : m_ready(::geteuid() == 0 && ::seteuid(65534) == 0)
    {}
    ~SomebodyElse()
    {
        if (m_ready) m_ready = ::seteuid(0) == 0;
    }
    SomebodyElse(const SomebodyElse &) = delete;
    SomebodyElse &operator=(const SomebodyElse &) = delete;

    [[nodiscard]] bool ready() const { return m_ready; }

private:
    bool m_ready;
};

class ReplacingFiles : public testing::Test {
protected:
    QTemporaryDir m_folder;

    [[nodiscard]] QString path(const char *name) const { return m_folder.filePath(QString::fromLatin1(name)); }
    void put(const char *name, const QByteArray &content) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    [[nodiscard]] QByteArray content(const char *name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }
    [[nodiscard]] qsizetype files() const { return QDir(m_folder.path()).entryList(QDir::Files).size(); }
};

TEST_F(ReplacingFiles, All_get_their_content_and_their_permissions)
{
    put("one", "old");
    constexpr auto mine = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    ASSERT_TRUE(replaceFiles({{path("one"), "1", mine}, {path("two"), "2"}}));
    EXPECT_EQ(content("one"), "1");
    EXPECT_EQ(content("two"), "2");
    EXPECT_EQ(QFile::permissions(path("one")) &
                  ~(QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser),
              mine);
    put("three", "3");
    EXPECT_EQ(QFile::permissions(path("two")), QFile::permissions(path("three"))) << "as any new file";
    EXPECT_EQ(files(), 3);
}

TEST_F(ReplacingFiles, One_that_cannot_be_prepared_leaves_all_as_they_were)
{
    put("one", "old");
    ASSERT_TRUE(QDir().mkpath(path("two")));
    const auto written = replaceFiles({{path("one"), "1"}, {path("two"), "2"}});
    ASSERT_FALSE(written);
    EXPECT_FALSE(written.error().isEmpty());
    EXPECT_EQ(content("one"), "old");
    EXPECT_EQ(files(), 1);
}

TEST_F(ReplacingFiles, One_that_cannot_be_put_into_place_puts_the_others_back)
{
    // In a folder that keeps everyone's files from the others, what is not ours can be written to, but not replaced.
    put("theirs", "theirs");
    ASSERT_EQ(::chmod(QFile::encodeName(path("theirs")).constData(), 0666), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(m_folder.path()).constData(), 01777), 0);
    const SomebodyElse other;
    if (!other.ready()) GTEST_SKIP() << "only root can be somebody else";
    put("one", "old");
    ASSERT_EQ(::chmod(QFile::encodeName(path("one")).constData(), 0700), 0);

    ASSERT_FALSE(replaceFiles({{path("one"), "1"}, {path("new"), "2"}, {path("theirs"), "3"}}));
    EXPECT_EQ(content("one"), "old");
    EXPECT_TRUE(QFile::permissions(path("one")) & QFileDevice::ExeOwner);
    EXPECT_EQ(content("new"), "none");
    EXPECT_EQ(content("theirs"), "theirs");
    EXPECT_EQ(files(), 2);
}

} // namespace
} // namespace corvane::test
