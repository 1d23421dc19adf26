#include "tests/flows/in_state.h"

namespace corvane::test {

namespace {

using std::chrono::seconds;

/// A Mac that uses Pi-hole, right after a login: Colima counts as started, and Docker does not answer yet.
class DockerLate : public Protected {
protected:
    DockerLate()
    {
        Mac::ctl(QStringLiteral("engine stop"));
        Mac::ctl(QStringLiteral("engine boot"));
        run(model().refreshTools());
        run(model().refreshStatus(Stats::Include));
    }

    static void letDockerCome() { Mac::ctl(QStringLiteral("engine start")); }

    /// Lets some rounds of waiting pass.
    void letPass(seconds time)
    {
        const auto end = clock.waited() + time;
        waitFor([this, end] { return clock.waited() >= end; }, "the time to pass");
    }

    const char *const kIsLate = "Colima was started, but Docker does not answer yet. It may need another minute.";
};

} // namespace

TEST_F(DockerLate, A_start_waits_for_it)
{
    ASSERT_EQ(model().icon(), MenuIcon::NotAnswering);
    launch(model().startPiholeNow(Place::Banner));
    letPass(seconds(6));
    EXPECT_TEXT(model().startMessage(), "Waiting for Docker...");
    letDockerCome();
    waitFor([this] { return quiet(); }, "the end of the start");
    EXPECT_EQ(model().icon(), MenuIcon::Active);
    EXPECT_TEXT(model().startMessage(), "");
    EXPECT_TEXT(model().notice(), "");
    EXPECT_TRUE(model().maintOp()->lines().join(u' ').contains(QStringLiteral("already running, ignoring")));
    EXPECT_EQ(Mac::calls(QStringLiteral("docker")).count(QStringLiteral("start pihole")), 1);
}

TEST_F(DockerLate, A_start_that_has_waited_a_minute_says_so_until_it_is_there)
{
    const auto before = clock.waited();
    run(model().startPiholeNow());
    EXPECT_EQ(clock.waited() - before, seconds(60));
    EXPECT_TEXT(model().notice(), kIsLate);
    letDockerCome();
    run(model().refreshStatus(Stats::Leave));
    EXPECT_TEXT(model().notice(), "");
}

TEST_F(DockerLate, A_start_of_colima_alone_waits_too)
{
    model().startColimaOnly();
    letPass(seconds(6));
    EXPECT_TRUE(model().underWay().contains(Activity::StartColima));
    letDockerCome();
    waitFor([this] { return quiet(); }, "the end of the start");
    EXPECT_TRUE(model().dockerWorks());
    EXPECT_TEXT(model().notice(), "");

    Mac::ctl(QStringLiteral("engine stop"));
    Mac::ctl(QStringLiteral("engine boot"));
    model().startColimaOnly();
    waitFor([this] { return quiet(); }, "it to give up");
    EXPECT_TEXT(model().notice(), kIsLate);
}

TEST_F(DockerLate, An_engine_that_this_docker_cannot_use_is_not_waited_for)
{
    Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("1"),
              QStringLiteral("Error response from daemon: client version 1.24 is too old. Minimum supported API "
                             "version is 1.44, please upgrade your client to a newer version"),
              QStringLiteral("--when"), QStringLiteral("info*")});
    const auto before = clock.waited();
    run(model().startPiholeNow());
    EXPECT_EQ(clock.waited() - before, seconds(0));
    EXPECT_FALSE(model().engineProblem().isEmpty());
    EXPECT_TEXT(model().notice(), "");
}

TEST_F(DockerLate, The_login_service_that_is_switched_on_says_so)
{
    run(model().changeAutostart(true));
    EXPECT_TRUE(model().installOp()->succeeded());
    EXPECT_TEXT(model().notice(), kIsLate);
    EXPECT_TRUE(model().autostartColima());
}

TEST_F(DockerLate, A_login_service_that_does_not_start_is_told_alone)
{
    Mac::ctl({QStringLiteral("fault"), QStringLiteral("brew"), QStringLiteral("fail"), QStringLiteral("1"),
              QStringLiteral("Error: something odd"), QStringLiteral("--when"), QStringLiteral("services *")});
    run(model().changeAutostart(true));
    EXPECT_TRUE(model().installOp()->lines().contains(QStringLiteral("Error: something odd")));
    EXPECT_TEXT(model().notice(), "");
}

} // namespace corvane::test
