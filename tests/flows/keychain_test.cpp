#include "tests/flows/flow_test.h"
#include "ui/commands.h"

namespace corvane::test {

namespace {

/// A Mac that uses its Pi-hole, and whose keychain waits for a user who does not see its question.
class SilentKeychain : public MacTest {
protected:
    SilentKeychain()
    {
        begin(QStringLiteral("protected"));
        Mac::ctl(QStringLiteral("keychain-silent on"));
        launchModel();
    }
    ~SilentKeychain() override { Mac::ctl(QStringLiteral("keychain-silent off")); }

    void answer()
    {
        Mac::ctl(QStringLiteral("keychain-silent off"));
        waitFor([this] { return model().passwordKnown(); }, "the keychain answered");
    }
};

const QString kNotYet =
    QStringLiteral("Your Keychain has not given Corvane the admin password yet. macOS may be asking "
                   "for it in another window.");

} // namespace

TEST_F(SilentKeychain, The_dot_is_green_before_the_keychain_answers)
{
    run(model().refreshStatus(Stats::Leave));
    EXPECT_EQ(model().icon(), MenuIcon::Active);
    EXPECT_FALSE(model().passwordKnown());
    answer();
    EXPECT_TEXT(model().adminPassword(), "correct-horse-9");
}

TEST_F(SilentKeychain, A_late_answer_brings_the_counters_at_once)
{
    run(model().refreshStatus(Stats::Include));
    EXPECT_FALSE(model().summary());
    EXPECT_EQ(model().apiMessage(), kNotYet);
    answer();
    waitFor([this] { return model().summary().has_value(); }, "the counters came");
    waitFor([this] { return model().apiMessage().isEmpty(); }, "the message went away");
}

TEST_F(SilentKeychain, What_needs_the_password_says_so_and_changes_nothing)
{
    run(model().exportBackup());
    EXPECT_EQ(model().notice(), QStringLiteral("Backup failed: ") + kNotYet);
    run(model().changeWebPort(8083));
    EXPECT_EQ(model().notice(), kNotYet);
    EXPECT_EQ(model().webPort(), 8080);
    answer();
}

TEST_F(SilentKeychain, The_set_up_waits_for_the_saved_password_instead_of_making_a_new_one)
{
    Commands commands(model(), *workspace);
    commands.piholeAppeared();
    commands.piholeAppeared();
    EXPECT_TEXT(model().passwordInput(), "");
    answer();
    EXPECT_TEXT(model().passwordInput(), "correct-horse-9");
}

} // namespace corvane::test
