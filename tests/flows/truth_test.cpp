#include "tests/flows/in_state.h"

namespace corvane::test {

namespace {

const char *const kNothingBehind =
    "Pi-hole itself answers, but the DNS server that it asks (1.1.1.1) does not. Check this Mac's connection (and any "
    "VPN).";
const char *const kRefuses =
    "Pi-hole answers, but refuses: it got more than 1000 questions within a minute, which is its limit. It answers "
    "again after at most a minute.";

std::string note(const AppModel &model, const char *about)
{
    return model.notes().value(QString::fromLatin1(about)).toString().toStdString();
}

/// A Pi-hole with an empty memory and no network behind it.
class Offline : public Running {
protected:
    Offline()
    {
        Mac::ctl(QStringLiteral("internet off"));
        Mac::ctl(QStringLiteral("container stop"));
        Mac::ctl(QStringLiteral("container start"));
    }
};

/// A Pi-hole that has got all the questions of this minute.
class Overrun : public Running {
protected:
    Overrun() { Mac::ctl(QStringLiteral("pihole question-limit 0")); }
};

} // namespace

TEST_F(Offline, The_status_tells_a_dead_network_from_a_dead_pihole)
{
    run(model().refreshStatus(Stats::Include));
    EXPECT_EQ(model().icon(), MenuIcon::Stopped);
    EXPECT_TEXT(model().statusNote(), kNothingBehind);
    Mac::ctl(QStringLiteral("internet on"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_TEXT(model().statusNote(), "");
}

TEST_F(Offline, The_tests_tell_it_beside_their_row_and_no_udp_help_is_needed)
{
    run(model().runPiholeTests(Wait::No));
    EXPECT_TRUE(model().udpProblem());
    EXPECT_TRUE(model().udpReplied()) << "so that no help for UDP is offered";
    EXPECT_EQ(note(model(), "pihole"), kNothingBehind);
    Mac::ctl(QStringLiteral("internet on"));
    run(model().runPiholeTests(Wait::No));
    EXPECT_EQ(note(model(), "pihole"), "");
}

TEST_F(Overrun, Too_many_questions_are_told_by_status_and_tests)
{
    run(model().refreshStatus(Stats::Include));
    EXPECT_TEXT(model().statusNote(), kRefuses);
    run(model().runPiholeTests(Wait::No));
    EXPECT_EQ(note(model(), "pihole"), kRefuses);
    EXPECT_TRUE(model().udpReplied());
    run(model().runBlockingTest());
    EXPECT_EQ(note(model(), "blocking"), kRefuses);
}

TEST_F(Running, Udp_that_does_not_arrive_is_no_reply)
{
    Mac::ctl(QStringLiteral("forwarder ssh"));
    run(model().runPiholeTests(Wait::No));
    EXPECT_TRUE(model().udpProblem());
    EXPECT_FALSE(model().udpReplied());
    EXPECT_EQ(note(model(), "pihole"), "");
}

TEST_F(Running, A_container_that_runs_without_answering_is_told)
{
    Mac::ctl(QStringLiteral("fault dig fail 9"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_TEXT(model().statusLine(), "Pi-hole is stopped");
    EXPECT_TEXT(model().statusNote(), "Its container runs, but Pi-hole does not answer.");
    Mac::ctl(QStringLiteral("container health starting"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_TEXT(model().statusNote(), "Its container runs and is still starting. Pi-hole does not answer yet.");
}

TEST_F(Running, A_pause_is_told_beside_a_blocking_test_that_fails_by_it)
{
    run(model().pauseBlocking());
    run(model().runBlockingTest());
    EXPECT_EQ(note(model(), "blocking"),
              "Blocking is paused, so nothing is blocked now. Press Test again after the pause.");
    EXPECT_TRUE(QCoro::waitFor(model().api().setBlocking(false, std::nullopt)));
    run(model().runBlockingTest());
    EXPECT_EQ(note(model(), "blocking"),
              "Blocking is switched off in Pi-hole, so nothing is blocked now. Press 'Resume "
              "blocking' on the dashboard.");
    run(model().resumeBlocking());
    run(model().runBlockingTest());
    EXPECT_EQ(note(model(), "blocking"), "");
}

TEST_F(Running, Another_blocking_mode_is_told_as_blocking)
{
    Mac::ctl(QStringLiteral("pihole log-delay 0"));
    for (const char *mode : {"nodata", "ip"}) {
        Mac::ctl(QStringLiteral("pihole block-mode %1").arg(QLatin1String(mode)));
        run(model().runBlockingTest());
        EXPECT_FALSE(model().blockingTest()->blockedDomain) << mode;
        const QString beside = model().notes().value(QStringLiteral("blocking")).toString();
        EXPECT_TRUE(beside.startsWith(QStringLiteral("Pi-hole did block "))) << mode << beside.toStdString();
        EXPECT_TRUE(beside.contains(QStringLiteral("in another way than usual (its blocking mode)"))) << mode;
    }
}

TEST_F(Running, A_pihole_without_lists_is_told_and_can_be_given_them)
{
    Mac::ctl(QStringLiteral("pihole gravity empty"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_TRUE(model().listsEmpty());
    EXPECT_TEXT(model().statusNote(), "Pi-hole has no block lists, so it blocks nothing.");
    run(model().runBlockingTest());
    EXPECT_EQ(note(model(), "blocking"), "Pi-hole has no block lists, so it blocks nothing.");

    auto loading = model().loadBlockLists();
    EXPECT_TRUE(model().busy().contains(QStringLiteral("lists")));
    run(std::move(loading));
    EXPECT_EQ(note(model(), "lists"), "The block lists are loaded.");
    EXPECT_FALSE(model().listsEmpty());
    run(model().runBlockingTest());
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("blocking")));
    EXPECT_EQ(note(model(), "blocking"), "");
}

TEST_F(Running, A_pihole_that_never_had_lists_gets_them_by_one_press)
{
    Mac::ctl(QStringLiteral("pihole gravity missing"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_TRUE(model().listsEmpty());
    run(model().loadBlockLists());
    EXPECT_EQ(note(model(), "lists"), "The block lists are loaded.");
    EXPECT_FALSE(model().listsEmpty());
}

TEST_F(Running, Lists_that_cannot_be_fetched_are_told)
{
    Mac::ctl(QStringLiteral("pihole gravity empty"));
    Mac::ctl(QStringLiteral("pihole patience-seconds 1"));
    Mac::ctl(QStringLiteral("internet off"));
    run(model().loadBlockLists());
    EXPECT_TRUE(QString::fromStdString(note(model(), "lists")).contains(QStringLiteral("Check this Mac's connection")))
        << note(model(), "lists");
}

TEST_F(Running, A_second_press_during_a_run_of_the_lists_starts_none)
{
    auto first = model().loadBlockLists();
    run(model().loadBlockLists());
    EXPECT_TRUE(model().busy().contains(QStringLiteral("lists"))) << "the second came back at once";
    run(std::move(first));
    EXPECT_TRUE(quiet());
}

TEST_F(Protected, Names_that_pihole_hides_are_told_beside_the_tests_that_look_for_them)
{
    Mac::ctl(QStringLiteral("pihole login-limit 100"));
    Mac::ctl(QStringLiteral("pihole log-delay 0"));
    const std::string hidden = "Pi-hole hides the names in its log (its privacy level), so this test cannot see them, "
                               "whoever asked.";
    for (int level : {1, 3}) {
        Mac::ctl(QStringLiteral("pihole privacy %1").arg(level));
        run(model().runSystemTest());
        EXPECT_FALSE(passed(model().outcomes(), QStringLiteral("system"))) << level;
        EXPECT_EQ(note(model(), "system"), hidden) << level;
    }
    run(model().runBrowserTest());
    EXPECT_EQ(note(model(), "browser"), hidden);
    Mac::ctl(QStringLiteral("pihole privacy 0"));
    run(model().runSystemTest());
    EXPECT_EQ(note(model(), "system"), "");
}

TEST_F(Protected, Answers_from_memory_alone_are_told_at_the_second_look)
{
    run(model().refreshStatus(Stats::Leave));
    Mac::ctl(QStringLiteral("internet off"));
    Mac::ctl(QStringLiteral("pihole advance 400"));
    run(model().refreshStatus(Stats::Leave));
    EXPECT_TEXT(model().statusNote(), "") << "one old answer is usual";
    run(model().refreshStatus(Stats::Leave));
    EXPECT_EQ(model().icon(), MenuIcon::Active);
    EXPECT_TEXT(model().statusNote(), "Pi-hole answers from its memory only: the DNS server that it asks (1.1.1.1) "
                                      "does not answer. Check this Mac's connection (and any VPN).");
    Mac::ctl(QStringLiteral("internet on"));
    run(model().refreshStatus(Stats::Leave));
    run(model().refreshStatus(Stats::Leave));
    EXPECT_TEXT(model().statusNote(), "");
}

TEST_F(Running, Full_seats_and_a_second_factor_are_told_as_what_they_are)
{
    Mac::ctl(QStringLiteral("pihole login-limit 100"));
    Mac::ctl(QStringLiteral("pihole totp 123456"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_TEXT(model().apiMessage(), "Pi-hole answered with HTTP 400");
    EXPECT_EQ(note(model(), "api"), "Pi-hole asks for a second factor at log-in, which Corvane cannot give. Switch "
                                    "two-factor log-in off on Pi-hole's web page.");
    Mac::ctl(QStringLiteral("pihole totp 0"));
    Mac::ctl(QStringLiteral("pihole seats 0"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_TEXT(model().apiMessage(), "Pi-hole answered with HTTP 429");
    EXPECT_EQ(note(model(), "api"), "All of Pi-hole's places for sessions are taken. One becomes free by itself within "
                                    "30 minutes, or when somebody logs out of Pi-hole's web page.");
    Mac::ctl(QStringLiteral("pihole seats 16"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_TEXT(model().apiMessage(), "");
    EXPECT_EQ(note(model(), "api"), "");
}

TEST_F(Stopped, An_engine_that_prints_no_version_is_none)
{
    Mac::ctl(QStringList{QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("0"),
                         QStringLiteral("Cannot connect to the Docker daemon")});
    run(model().refreshTools());
    EXPECT_FALSE(model().dockerWorks());
    run(model().refreshStatus(Stats::Leave));
    EXPECT_EQ(model().containerState(), ContainerState::dockerDown());
}

TEST_F(Running, A_client_of_another_age_than_the_engine_is_told)
{
    Mac::ctl(QStringList{QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("1"),
                         QStringLiteral("Error response from daemon: client version 1.43 is too old. Minimum supported "
                                        "API version is 1.44, please upgrade your client to a newer version")});
    run(model().refreshTools());
    EXPECT_FALSE(model().dockerWorks());
    const char *const sentence = "Docker's client is too old for the engine in Colima. Run 'brew upgrade docker' in "
                                 "Terminal, then try again.";
    EXPECT_TEXT(model().engineProblem(), sentence);
    run(model().restartPihole());
    EXPECT_TEXT(model().startMessage(), "The docker command on this Mac is too old for Colima's Docker. Run \"brew "
                                        "upgrade docker\" in Terminal, then try again.");
}

TEST_F(Running, What_docker_said_stands_beside_a_sentence_that_only_points_to_details)
{
    Mac::ctl(QStringLiteral("container rm"));
    run(model().restartPihole());
    EXPECT_TEXT(model().startMessage(), "Docker reported an error. Open 'Show details' to read it.");
    EXPECT_EQ(note(model(), "start").substr(0, 12), "docker says:");
    EXPECT_NE(note(model(), "start").find("No such container: pihole"), std::string::npos) << note(model(), "start");
}

} // namespace corvane::test
