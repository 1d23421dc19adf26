#include "tests/flows/in_state.h"

#include <QRegularExpression>

namespace corvane::test {

namespace {

const QString kLeftBehind = QStringLiteral("failed to run attach disk \"colima\", in use by instance \"colima\"");

/// A Mac that uses Pi-hole, and a user who wants it to come back by itself.
class ComesBack : public Protected {
protected:
    ComesBack() { model().comeback()->setStartsAgain(true); }

    void begin() { launch(model().bootstrap()); }
    void beginAndSeeItRun()
    {
        begin();
        waitFor([this] { return model().icon() == MenuIcon::Active; }, "a green dot");
    }
    void waitUntilBack()
    {
        waitFor([this] { return !news().isEmpty() && !model().comeback()->watched(); }, "the end of the tries");
    }
    QString news() { return model().comeback()->news(); }
    QString newest() { return model().comeback()->history().value(0); }
    void letPass(std::chrono::seconds time)
    {
        const auto end = clock.waited() + time;
        waitFor([this, end] { return clock.waited() >= end; }, "the time to pass");
    }

    static qsizetype starts()
    {
        return Mac::calls(QStringLiteral("docker")).count(QStringLiteral("start pihole")) +
               Mac::calls(QStringLiteral("colima")).filter(QRegularExpression(QStringLiteral("^start"))).size();
    }
    /// Whether the newest entry says this, after its time.
    bool tells(const char *why)
    {
        const QRegularExpression sentence(QStringLiteral("^\\d\\d:\\d\\d Started again %1, (at least )?\\d+ s without "
                                                         "Pi-hole\\.$")
                                              .arg(QLatin1String(why)));
        return sentence.match(newest()).hasMatch();
    }
};

} // namespace

TEST_F(ComesBack, A_container_that_has_ended_is_started_after_ten_seconds)
{
    beginAndSeeItRun();
    Mac::ctl(QStringLiteral("container stop"));
    waitFor([this] { return model().comeback()->watched(); }, "a look that misses it");
    EXPECT_TEXT(news(), "Pi-hole does not run. Corvane starts it again within 10 seconds (try 1 of 3).");
    EXPECT_EQ(starts(), 0) << "Docker itself may be about to";
    waitUntilBack();
    EXPECT_EQ(model().icon(), MenuIcon::Active);
    EXPECT_TRUE(tells("after its container had ended")) << newest().toStdString();
    EXPECT_EQ(starts(), 1);
}

TEST_F(ComesBack, A_colima_that_has_stopped_is_started_with_all_that_is_in_it)
{
    beginAndSeeItRun();
    Mac::ctl(QStringLiteral("engine stop"));
    waitUntilBack();
    EXPECT_EQ(model().icon(), MenuIcon::Active);
    EXPECT_TRUE(tells("after Colima had stopped")) << newest().toStdString();
    EXPECT_FALSE(Mac::calls(QStringLiteral("colima")).contains(QStringLiteral("stop --force")));
}

TEST_F(ComesBack, A_mac_that_slept_is_told_to_have_woken)
{
    beginAndSeeItRun();
    Mac::ctl(QStringLiteral("engine stop"));
    clock.sleep(std::chrono::hours(8));
    waitUntilBack();
    EXPECT_TRUE(tells("after waking")) << newest().toStdString();
}

TEST_F(ComesBack, After_a_login_pihole_is_started_as_well)
{
    Mac::ctl(QStringLiteral("engine stop"));
    begin();
    waitUntilBack();
    EXPECT_EQ(model().icon(), MenuIcon::Active);
    EXPECT_TRUE(tells("after Corvane was opened")) << newest().toStdString();
}

TEST_F(ComesBack, After_a_login_that_is_starting_colima_the_first_try_waits_for_docker)
{
    Mac::ctl(QStringLiteral("engine stop"));
    Mac::ctl(QStringLiteral("engine boot"));
    begin();
    waitFor([] { return starts() > 0; }, "the first try");
    letPass(std::chrono::seconds(6));
    EXPECT_EQ(starts(), 1) << "Colima's alone";
    Mac::ctl(QStringLiteral("engine start"));
    waitUntilBack();
    EXPECT_EQ(model().icon(), MenuIcon::Active);
    EXPECT_TRUE(tells("after Corvane was opened")) << newest().toStdString();
    EXPECT_EQ(starts(), 2) << "and Pi-hole's";
}

TEST_F(ComesBack, Nothing_is_started_unless_the_user_has_chosen_so)
{
    model().comeback()->setStartsAgain(false);
    beginAndSeeItRun();
    Mac::ctl(QStringLiteral("container stop"));
    waitFor([this] { return model().icon() == MenuIcon::NotAnswering; }, "a red dot");
    letPass(std::chrono::seconds(300));
    EXPECT_EQ(starts(), 0);
    EXPECT_TEXT(news(), "");
    model().comeback()->setStartsAgain(true);
    waitUntilBack();
    EXPECT_EQ(model().icon(), MenuIcon::Active) << "now it is";
}

TEST_F(ComesBack, What_docker_restarts_by_itself_is_left_to_docker)
{
    beginAndSeeItRun();
    Mac::ctl(QStringLiteral("container stop"));
    waitFor([this] { return model().comeback()->watched(); }, "a look that misses it");
    Mac::ctl(QStringLiteral("container start"));
    waitFor([this] { return !model().comeback()->watched(); }, "the end of the wait");
    EXPECT_EQ(starts(), 0);
    EXPECT_TEXT(news(), "");
    EXPECT_TEXT(newest(), "") << "nobody has started it again";
}

TEST_F(ComesBack, After_a_stop_by_the_user_it_stays_stopped)
{
    beginAndSeeItRun();
    run(model().stopPihole());
    letPass(std::chrono::seconds(300));
    EXPECT_EQ(starts(), 0);
    relaunch();
    begin();
    waitFor([this] { return model().icon() == MenuIcon::NotAnswering; }, "a red dot");
    letPass(std::chrono::seconds(300));
    EXPECT_EQ(starts(), 0) << "nor when Corvane is opened the next day";
    run(model().startPiholeNow());
    waitFor([this] { return model().icon() == MenuIcon::Active; }, "a green dot");
    Mac::ctl(QStringLiteral("container stop"));
    waitUntilBack();
    EXPECT_EQ(starts(), 2) << "the user's and Corvane's";
}

TEST_F(ComesBack, A_stop_during_the_wait_ends_it)
{
    beginAndSeeItRun();
    Mac::ctl(QStringLiteral("container stop"));
    waitFor([this] { return model().comeback()->watched(); }, "a look that misses it");
    run(model().stopPihole());
    EXPECT_TEXT(news(), "");
    letPass(std::chrono::seconds(300));
    EXPECT_EQ(starts(), 0);
}

TEST_F(ComesBack, After_a_removal_nothing_is_started)
{
    beginAndSeeItRun();
    run(model().removePihole());
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
    Mac::ctl(QStringLiteral("engine stop"));
    Mac::ctl(QStringLiteral("servers Wi-Fi 127.0.0.1"));
    waitFor([this] { return model().icon() == MenuIcon::NotAnswering; }, "a red dot");
    letPass(std::chrono::seconds(300));
    EXPECT_EQ(starts(), 0);
}

TEST_F(ComesBack, An_open_question_is_waited_for)
{
    beginAndSeeItRun();
    bool waited = false;
    user.cancels();
    user.beforeAnswering([this, &waited] {
        Mac::ctl(QStringLiteral("container stop"));
        letPass(std::chrono::seconds(60));
        waited = starts() == 0;
    });
    run(model().removePihole());
    EXPECT_TRUE(waited);
    waitUntilBack();
    EXPECT_EQ(starts(), 1);
}

TEST_F(ComesBack, A_start_by_the_user_during_the_wait_is_the_only_one)
{
    beginAndSeeItRun();
    Mac::ctl(QStringLiteral("engine stop"));
    waitFor([this] { return model().comeback()->watched(); }, "a look that misses it");
    run(model().startPiholeNow(Place::Banner));
    waitFor([this] { return !model().comeback()->watched(); }, "the end of the wait");
    EXPECT_EQ(Mac::calls(QStringLiteral("colima")).filter(QRegularExpression(QStringLiteral("^start"))).size(), 1);
    EXPECT_TEXT(newest(), "") << "the user has started it";
}

TEST_F(ComesBack, Leftovers_of_an_unclean_end_are_cleared_before_the_second_try)
{
    beginAndSeeItRun();
    Mac::ctl(QStringLiteral("engine stop"));
    Mac::ctl(QStringList{QStringLiteral("fault"), QStringLiteral("colima"), QStringLiteral("fail"), QStringLiteral("1"),
                         kLeftBehind, QStringLiteral("--when"), QStringLiteral("start*"), QStringLiteral("--at"),
                         QStringLiteral("1")});
    waitUntilBack();
    EXPECT_EQ(model().icon(), MenuIcon::Active);
    const QStringList calls = Mac::calls(QStringLiteral("colima"));
    EXPECT_EQ(calls.count(QStringLiteral("stop --force")), 1);
    EXPECT_TRUE(calls.filter(QStringLiteral("delete")).isEmpty());
    EXPECT_TRUE(tells("after Colima had stopped")) << newest().toStdString();
    EXPECT_TEXT(model().notice(), "") << "what the first try met is over";
}

TEST_F(ComesBack, After_three_tries_that_fail_it_says_so_and_rests)
{
    beginAndSeeItRun();
    Mac::ctl(QStringLiteral("engine stop"));
    Mac::ctl(QStringLiteral("colima fail error starting vm: not enough memory"));
    waitFor([this] { return newest().contains(QStringLiteral("Not started")); }, "the last word");
    EXPECT_TEXT(newest().mid(6), "Not started again after Colima had stopped: three tries failed.");
    EXPECT_EQ(starts(), 3);
    letPass(std::chrono::seconds(300));
    EXPECT_EQ(starts(), 3);
    EXPECT_TRUE(Mac::calls(QStringLiteral("colima")).filter(QStringLiteral("delete")).isEmpty());
    Mac::ctl(QStringLiteral("colima fail off"));
    clock.sleep(std::chrono::hours(1));
    waitFor([this] { return model().icon() == MenuIcon::Active; }, "waking gives it new tries");
    waitFor([this] { return tells("after waking"); }, "that it says so");
}

TEST_F(ComesBack, A_start_that_the_user_cancels_is_not_tried_again)
{
    beginAndSeeItRun();
    Mac::ctl(QStringLiteral("engine stop"));
    Mac::ctl(QStringList{QStringLiteral("fault"), QStringLiteral("colima"), QStringLiteral("hang"),
                         QStringLiteral("--when"), QStringLiteral("start*")});
    waitFor([] { return starts() == 1; }, "Colima being started");
    model().maintOp()->cancel();
    waitFor([this] { return !newest().isEmpty(); }, "the last word");
    EXPECT_TEXT(newest().mid(6), "Not started again after Colima had stopped: you cancelled it.");
    letPass(std::chrono::seconds(300));
    EXPECT_EQ(starts(), 1);
}

TEST_F(ComesBack, A_model_that_goes_away_during_the_wait_ends_it_quietly)
{
    beginAndSeeItRun();
    Mac::ctl(QStringLiteral("container stop"));
    waitFor([this] { return model().comeback()->watched(); }, "a look that misses it");
    relaunch();
    EXPECT_TRUE(quiet());
}

} // namespace corvane::test
