#include "tests/flows/exchange.h"

namespace corvane::test {

namespace {

constexpr std::chrono::hours kAsLongAsItTakes{1};

class Quitting : public ExchangeTest {
protected:
    void windDown() { run(model().windDown(kAsLongAsItTakes)); }

    /// Begins to move the admin page and lets it come to the command that does not end by itself.
    void moveUpTo(const QString &command)
    {
        Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("hang"), QStringLiteral("--when"),
                  command + QStringLiteral(" *")});
        launch(model().changeWebPort(8083));
        waitForCall(command);
    }
};

} // namespace

TEST_F(Quitting, In_the_middle_of_an_update_puts_the_old_version_back_first)
{
    updateUpTo(QStringLiteral("pull"));
    EXPECT_TEXT(PiholeFiles::composeTag(), "2026.10.0");
    windDown();
    expectAllOf(kOldTag, 8080);
    EXPECT_TEXT(PiholeFiles::containerImage(), "pihole/pihole:2026.09.0");
}

TEST_F(Quitting, With_the_old_container_gone_pins_the_old_version_first)
{
    updateUpTo(QStringLiteral("run"));
    EXPECT_TEXT(PiholeFiles::containerImage(), "");
    windDown();
    expectAllOf(kOldTag, 8080);
}

TEST_F(Quitting, In_the_middle_of_a_port_change_puts_the_old_port_back_first)
{
    moveUpTo(QStringLiteral("rm"));
    EXPECT_EQ(PiholeFiles::composePort(), 8083);
    windDown();
    expectAllOf(kOldTag, 8080);
    EXPECT_FALSE(PiholeFiles::containerImage().isEmpty());
}

TEST_F(Quitting, With_the_container_of_the_old_port_gone_puts_the_old_port_back_first)
{
    moveUpTo(QStringLiteral("run"));
    windDown();
    expectAllOf(kOldTag, 8080);
}

TEST_F(Quitting, Lets_nothing_begin_any_more)
{
    windDown();
    run(model().performUpdate());
    run(model().changeWebPort(8083));
    run(model().removePihole());
    run(model().restoreOldSettings());
    EXPECT_TRUE(user.alerts().isEmpty());
    expectAllOf(kOldTag, 8080);
}

TEST_F(Quitting, A_question_that_is_agreed_to_too_late_begins_nothing)
{
    run(model().refreshStatus(Stats::Leave));
    run(model().loadServices());
    run(model().applyDNS());
    ASSERT_TEXT(model().dnsMessage(), "DNS changed.");
    const int before = Mac::prompts();
    user.beforeAnswering([this] { model().stopEverything(); });
    run(model().restoreOldSettings());
    EXPECT_EQ(user.alerts().size(), 2) << "the change's and the restore's";
    EXPECT_EQ(Mac::prompts(), before);
    EXPECT_TEXT(model().dnsMessage(), "DNS changed.") << "nothing new is told";
}

TEST_F(Quitting, Before_the_first_command_of_an_update_begins_none)
{
    launch(model().performUpdate());
    waitFor([this] { return model().underWay().contains(Activity::Exchange); }, "it is about to begin");
    windDown();
    expectAllOf(kOldTag, 8080);
    EXPECT_TRUE(Mac::calls(QStringLiteral("docker")).filter(QStringLiteral("pull")).isEmpty());
}

TEST_F(Quitting, Waits_no_longer_than_its_limit)
{
    updateUpTo(QStringLiteral("pull"));
    run(model().windDown(std::chrono::milliseconds(0)));
    EXPECT_TRUE(model().underWay().contains(Activity::Exchange)) << "the tool has not ended yet";
    relaunch();
    compare();
    expectAllOf(kOldTag, 8080);
}

TEST_F(Quitting, Waits_for_nothing_when_nothing_is_exchanged)
{
    Mac::ctl(QStringLiteral("pihole silent on")); // the backup does not come
    launch(model().performUpdate());
    waitFor([this] { return model().underWay().contains(Activity::Update); }, "the backup is on its way");
    const auto before = clock.waited();
    windDown();
    EXPECT_EQ(clock.waited(), before);
    expectAllOf(kOldTag, 8080);
}

} // namespace corvane::test
