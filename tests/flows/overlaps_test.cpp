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
        run(model().refreshStatus(Stats::Leave));
        run(model().loadServices());
    }

    void expectNoProof()
    {
        EXPECT_TEXT(model().systemTestDetail(), "");
        EXPECT_FALSE(model().outcomes().contains(kSystem));
        EXPECT_FALSE(model().wizardFinished());
    }

    void expectColimaLeftAlone(const char *words)
    {
        const QStringList before = Mac::calls(QStringLiteral("colima")) + Mac::calls(QStringLiteral("brew"));
        const auto expectRefused = [&] {
            EXPECT_TEXT(model().notice(), words);
            model().setNotice({});
        };
        run(model().changeAutostart(false));
        expectRefused();
        EXPECT_TRUE(model().autostartColima()) << "the switch goes back";
        model().startColimaOnly();
        expectRefused();
        model().installColimaAndDocker();
        expectRefused();
        run(model().fixUDPForwarding());
        expectRefused();
        const QStringList after = Mac::calls(QStringLiteral("colima")) + Mac::calls(QStringLiteral("brew"));
        EXPECT_EQ(after, before);
    }
};

} // namespace

TEST_F(Overlaps, A_change_is_proved_by_its_own_test_whichever_runs_already)
{
    relaunchInRealTime(); // the earlier test lasts longer than the change
    run(model().refreshStatus(Stats::Leave));
    run(model().loadServices());
    user.beforeAnswering([this] { launch(model().runSystemTest()); });
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

TEST_F(Overlaps, A_restore_that_is_cancelled_takes_back_what_was_said_of_the_one_before)
{
    run(model().applyDNS());
    run(model().restoreOldSettings());
    EXPECT_TEXT(model().notice(), "Your old DNS settings are back.");
    Mac::ctl(QStringLiteral("prompt cancel once"));
    run(model().restoreOldSettings());
    EXPECT_TEXT(model().dnsMessage(), "You cancelled the administrator prompt. Nothing was changed.");
    EXPECT_TEXT(model().notice(), "");
}

TEST_F(Overlaps, A_restore_takes_back_what_a_test_had_found)
{
    run(model().applyDNS());
    EXPECT_TEXT(model().systemTestDetail(), kAllFound);
    run(model().restoreOldSettings());
    expectNoProof();
}

TEST_F(Overlaps, A_test_that_began_before_a_restore_says_nothing_after_it)
{
    run(model().applyDNS());
    user.beforeAnswering([this] {
        Mac::ctl(QStringLiteral("fault scutil late 3 --at 1")); // the test lasts longer than the restore
        launch(model().runSystemTest());
    });
    run(model().restoreOldSettings());
    EXPECT_TEXT(model().notice(), "Your old DNS settings are back.");
    waitFor([this] { return quiet(); }, "the test ended");
    expectNoProof();
}

TEST_F(Overlaps, A_test_that_began_before_a_restore_says_nothing_when_the_restore_is_cancelled)
{
    run(model().applyDNS());
    model().setSystemTestDetail({});
    user.beforeAnswering([this] {
        Mac::ctl(QStringLiteral("fault scutil late 3 --at 1"));
        launch(model().runSystemTest());
    });
    Mac::ctl(QStringLiteral("prompt cancel once"));
    run(model().restoreOldSettings());
    EXPECT_TEXT(model().dnsMessage(), "You cancelled the administrator prompt. Nothing was changed.");
    waitFor([this] { return quiet(); }, "the test ended");
    EXPECT_TEXT(model().systemTestDetail(), "");
}

TEST_F(Overlaps, Colima_is_left_alone_while_pihole_is_removed)
{
    Mac::ctl(QStringLiteral("fault docker late 0.5 --when rm*"));
    launch(model().removePihole());
    waitFor([] { return Mac::calls(QStringLiteral("docker")).contains(QStringLiteral("rm -f pihole")); }, "it removes");
    expectColimaLeftAlone("Not now: Pi-hole is being removed. Try again when that is done.");
    waitFor([this] { return quiet(); }, "the removal ended");
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
}

TEST_F(Overlaps, Colima_is_left_alone_while_the_backup_before_an_update_is_saved)
{
    Mac::ctl(QStringLiteral("pihole silent on"));
    model().setLatestTag(QStringLiteral("2026.10.0"));
    launch(model().performUpdate());
    waitFor([this] { return model().underWay().contains(Activity::Update); }, "the backup is on its way");
    expectColimaLeftAlone("Not now: Pi-hole is being updated. Try again when that is done.");
    Mac::ctl(QStringLiteral("pihole silent off"));
    waitFor([this] { return quiet(); }, "the update ended");
}

TEST_F(Overlaps, A_second_press_saves_or_restores_no_second_backup)
{
    Mac::ctl(QStringLiteral("pihole silent on"));
    launch(model().exportBackup());
    run(model().exportBackup());
    Mac::ctl(QStringLiteral("pihole silent off"));
    waitFor([this] { return quiet(); }, "the first was saved");
    EXPECT_EQ(user.panels().size(), 1);
    launch(model().importBackup());
    run(model().importBackup());
    waitFor([this] { return user.panels().size() > 1; }, "the first has its panel");
    EXPECT_EQ(user.panels().size(), 2);
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
