// The password store of the desktop, as another program sees it too. Needs a Secret Service.

#include "exec/keychain.h"
#include "tests/io/test_child.h"

#include <gtest/gtest.h>

namespace corvane::test {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QStringList kAttributes{u"service"_s, u"Corvane"_s, u"account"_s, u"pihole-admin-password"_s};

CommandResult secretTool(const QStringList &args) { return runProgram(u"/usr/bin/secret-tool"_s, args + kAttributes); }

/// How many items another program finds under Corvane's attributes.
qsizetype itemCount()
{
    const CommandResult found = secretTool({u"search"_s, u"--all"_s});
    return (found.standardOutput + found.standardError).count(u"secret = "_s);
}

class KeychainTest : public testing::Test {
protected:
    KeychainTest() { Keychain::remove(); }
    ~KeychainTest() override { Keychain::remove(); }
};

} // namespace

TEST_F(KeychainTest, Nothing_was_ever_stored)
{
    EXPECT_EQ(Keychain::load(), std::nullopt);
    EXPECT_EQ(itemCount(), 0);
}

TEST_F(KeychainTest, A_saved_password_is_loaded_again)
{
    EXPECT_TRUE(Keychain::save(u"correct horse"_s));
    EXPECT_EQ(Keychain::load(), u"correct horse"_s);
}

TEST_F(KeychainTest, Another_program_finds_the_item_under_its_service_and_account)
{
    ASSERT_TRUE(Keychain::save(u"battery staple"_s));
    EXPECT_EQ(secretTool({u"lookup"_s}).standardOutput, u"battery staple"_s);
    EXPECT_EQ(itemCount(), 1);
}

TEST_F(KeychainTest, Saving_twice_leaves_one_item_with_the_second_password)
{
    ASSERT_TRUE(Keychain::save(u"first"_s));
    ASSERT_TRUE(Keychain::save(u"second"_s));
    EXPECT_EQ(itemCount(), 1);
    EXPECT_EQ(Keychain::load(), u"second"_s);
}

TEST_F(KeychainTest, Any_text_survives)
{
    for (const QString &password : {u"Grüße 🐧"_s, u" space and \"quotes\" 'n' $signs "_s, u"line\nfeed"_s, QString()}) {
        ASSERT_TRUE(Keychain::save(password));
        EXPECT_EQ(Keychain::load(), password);
    }
}

TEST_F(KeychainTest, A_removed_password_is_gone)
{
    ASSERT_TRUE(Keychain::save(u"short-lived"_s));
    Keychain::remove();
    EXPECT_EQ(Keychain::load(), std::nullopt);
    EXPECT_EQ(itemCount(), 0);
}

TEST_F(KeychainTest, Removing_what_is_not_there_does_nothing)
{
    Keychain::remove();
    Keychain::remove();
    EXPECT_EQ(Keychain::load(), std::nullopt);
}

TEST_F(KeychainTest, Where_no_keychain_answers_nothing_is_kept_and_nothing_hangs)
{
    EXPECT_TRUE(Keychain::save(u"kept"_s)) << "the keychain answers before";
    const QString program = QString::fromUtf8(KEYCHAIN_PROBE);
    const CommandResult refused =
        runProgram(program, {u"lost"_s}, 10s, {{u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nowhere"_s}});
    EXPECT_FALSE(refused.timedOut);
    EXPECT_EQ(refused.standardOutput, u"refused, nothing"_s);
    EXPECT_EQ(Keychain::load(), u"kept"_s);
}

} // namespace corvane::test
