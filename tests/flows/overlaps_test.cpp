#include "tests/flows/in_state.h"

namespace corvane::test {

namespace {

const QString kSystem = QStringLiteral("system");
constexpr const char *kAllFound = "3 of 3 test lookups through the system resolver showed up in Pi-hole's log.";

/// A change of the Mac's DNS while something else tests or tells of it.
class Overlaps : public Running {
protected:
    Overlaps()
    {
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
        Mac::ctl(QStringLiteral("pihole login-limit 1000"));
        run(model().refreshStatus(false));
        run(model().loadServices());
    }
};

} // namespace

TEST_F(Overlaps, A_change_is_proved_by_its_own_test_whichever_runs_already)
{
    user.beforeAnswering([this] {
        Mac::ctl(QStringLiteral("fault scutil late 3 --at 1")); // the earlier test lasts longer than the change
        launch(model().runSystemTest());
    });
    run(model().applyDNS());
    waitFor([this] { return quiet(); }, "both tests ended");
    EXPECT_TEXT(model().systemTestDetail(), kAllFound);
    EXPECT_TRUE(passed(model().outcomes(), kSystem));
}

TEST_F(Overlaps, A_change_takes_back_what_was_said_of_a_restore)
{
    run(model().applyDNS());
    run(model().restoreOldSettings());
    EXPECT_TEXT(model().notice(), "Your old DNS settings are back.");
    run(model().applyDNS());
    EXPECT_TEXT(model().dnsMessage(), "DNS changed.");
    EXPECT_TEXT(model().notice(), "");
}

TEST_F(Overlaps, After_a_restore_the_dot_follows_at_once)
{
    run(model().applyDNS());
    EXPECT_TRUE(model().usedByMac());
    run(model().restoreOldSettings());
    EXPECT_FALSE(model().usedByMac());
}

TEST_F(Overlaps, Loading_the_lists_keeps_away_what_would_break_it_off)
{
    Mac::ctl(QStringLiteral("pihole silent on"));
    launch(model().loadBlockLists());
    const QString words = QStringLiteral("Not now: the block lists are being loaded. Try again when that is done.");
    run(model().stopPihole());
    EXPECT_EQ(model().startMessage(), words);
    model().setStartMessage({});
    run(model().restartPihole());
    EXPECT_EQ(model().startMessage(), words);
    model().setLatestTag(QStringLiteral("2026.10.0"));
    run(model().performUpdate());
    EXPECT_EQ(model().updateMessage(), words);
    Mac::ctl(QStringLiteral("pihole silent off"));
    waitFor([this] { return quiet(); }, "the lists are done with");
    EXPECT_TRUE(user.alerts().isEmpty());
}

} // namespace corvane::test
