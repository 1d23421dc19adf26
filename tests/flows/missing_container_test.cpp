#include "tests/flows/exchange.h"

namespace corvane::test {

namespace {

/// An exchange has taken the old container away and could not make the new one.
class MissingContainer : public ExchangeTest {
protected:
    static void letRunFail()
    {
        Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("125"),
                  QStringLiteral("something odd"), QStringLiteral("--when"), QStringLiteral("run *")});
    }

    void failAnUpdate()
    {
        letRunFail();
        run(model().performUpdate());
        Mac::ctl(QStringLiteral("fault clear"));
        ASSERT_TEXT(model().updateMessage(), kRolledBack);
        ASSERT_TEXT(PiholeFiles::containerImage(), "");
    }

    void expectBack()
    {
        EXPECT_TEXT(PiholeFiles::containerImage(), "pihole/pihole:2026.09.0");
        EXPECT_TRUE(model().containerState().isRunning());
        EXPECT_TRUE(model().answering());
        EXPECT_TEXT(model().startMessage(), "");
        EXPECT_TEXT(model().wayBack(), "");
        EXPECT_TEXT(versionNote(), "");
        expectAllOf(kOldTag, 8080);
    }
};

} // namespace

TEST_F(MissingContainer, Is_made_again_by_one_press_of_start)
{
    failAnUpdate();
    run(model().startPiholeNow(Place::Banner));
    EXPECT_TEXT(model().maintOp()->title(), "Bringing version 2026.09.0 back");
    EXPECT_TEXT(model().updateMessage(), "Version 2026.09.0 is back.");
    expectBack();
}

TEST_F(MissingContainer, Is_made_again_once_colima_runs)
{
    failAnUpdate();
    Mac::ctl(QStringLiteral("engine stop"));
    run(model().refreshStatus(Stats::Leave));
    run(model().startPiholeNow());
    expectBack();
}

TEST_F(MissingContainer, Is_made_again_by_a_corvane_that_was_opened_while_docker_was_down)
{
    failAnUpdate();
    Mac::ctl(QStringLiteral("engine stop"));
    relaunch();
    compare();
    ASSERT_TEXT(model().wayBack(), "");
    run(model().startPiholeNow());
    expectBack();
}

TEST_F(MissingContainer, Is_made_at_the_old_version_when_the_update_was_cut_off)
{
    updateUpTo(QStringLiteral("run"));
    ASSERT_TEXT(model().pinnedTag(), "2026.10.0");
    quit();
    Mac::ctl(QStringLiteral("fault clear"));
    Mac::ctl(QStringLiteral("engine stop"));
    relaunch();
    compare();
    run(model().startPiholeNow());
    expectBack();
}

TEST_F(MissingContainer, Is_no_more_made_by_start_once_it_was_removed_for_good)
{
    run(model().removePihole());
    run(model().startPiholeNow());
    EXPECT_TEXT(model().startMessage(), "Pi-hole is not installed yet. Run step 4 of the wizard.");
    EXPECT_TEXT(PiholeFiles::containerImage(), "");
}

TEST_F(MissingContainer, Stays_on_offer_when_it_cannot_be_made)
{
    failAnUpdate();
    letRunFail();
    run(model().startPiholeNow());
    EXPECT_TRUE(model().startMessage().startsWith(QStringLiteral("Version 2026.09.0 was not brought back: ")))
        << model().startMessage().toStdString();
    EXPECT_TRUE(model().containerState().isMissing());
    EXPECT_TEXT(model().wayBack(), "2026.09.0");
    Mac::ctl(QStringLiteral("fault clear"));
    run(model().startPiholeNow());
    expectBack();
}

TEST_F(MissingContainer, Is_told_after_a_change_of_port_and_made_again_at_the_old_one)
{
    letRunFail();
    run(model().changeWebPort(8083));
    Mac::ctl(QStringLiteral("fault clear"));
    EXPECT_TRUE(model().notice().endsWith(QStringLiteral("The web port is 8080 again. There is no container of Pi-hole "
                                                         "at the moment. Press Start to get it back.")))
        << model().notice().toStdString();
    run(model().startPiholeNow());
    expectBack();
}

TEST_F(MissingContainer, Is_not_told_where_the_old_one_is_still_there)
{
    Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("1"),
              QStringLiteral("something odd"), QStringLiteral("--when"), QStringLiteral("rm *")});
    run(model().changeWebPort(8083));
    EXPECT_TRUE(model().notice().endsWith(QStringLiteral("The web port is 8080 again.")))
        << model().notice().toStdString();
}

} // namespace corvane::test
