#include "exec/replace_file.h"
#include "runtime/pihole_controller.h"
#include "tests/support/home_folder.h"

#include <QFile>
#include <gtest/gtest.h>

namespace corvane::test {
namespace {

const QString kTag = QStringLiteral("2026.09.0");
const QString kPassword = QStringLiteral("pass word-ü");

class FilesSay : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(PiholeController::writeFiles(kTag, 8080, kPassword)); }

    static bool say(const QString &tag, int port, const QString &password)
    {
        return PiholeController::filesSay(tag, port, password);
    }

    HomeFolder m_home;
};

TEST_F(FilesSay, What_was_written)
{
    EXPECT_TRUE(say(kTag, 8080, kPassword));
    EXPECT_TRUE(say(kTag, 8080, {})) << "an unknown password";
    EXPECT_FALSE(say(QStringLiteral("2026.09.01"), 8080, kPassword));
    EXPECT_FALSE(say(QStringLiteral("2026.09"), 8080, kPassword));
    EXPECT_FALSE(say(kTag, 8083, kPassword));
    EXPECT_FALSE(say(kTag, 80, kPassword));
    EXPECT_FALSE(say(kTag, 8080, QStringLiteral("pass word")));
}

TEST_F(FilesSay, Nothing_when_one_is_missing_or_a_part)
{
    ASSERT_TRUE(replaceFile(PiholeController::environmentFile(), "FTLCONF_webserver"));
    EXPECT_FALSE(say(kTag, 8080, kPassword));
    QFile::remove(PiholeController::environmentFile());
    EXPECT_FALSE(say(kTag, 8080, kPassword));
    EXPECT_FALSE(say(kTag, 8080, {}));
    ASSERT_TRUE(PiholeController::writeFiles(kTag, 8080, kPassword));
    QFile::remove(PiholeController::composeFile());
    EXPECT_FALSE(say(kTag, 8080, kPassword));
}

TEST_F(FilesSay, Another_port_when_the_compose_file_alone_was_written_anew)
{
    ASSERT_TRUE(PiholeController::writeComposeFile(kTag, 8083));
    EXPECT_TRUE(say(kTag, 8083, kPassword)) << "the password stayed";
}

} // namespace
} // namespace corvane::test
