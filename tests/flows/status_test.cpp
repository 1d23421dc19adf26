#include "tests/flows/in_state.h"

namespace corvane::test {

TEST_F(Bare, Without_tools_nothing_is_found_and_nothing_answers)
{
    run(model().refreshStatus(Stats::Include));
    EXPECT_FALSE(model().hasBrew());
    EXPECT_FALSE(model().hasDocker());
    EXPECT_FALSE(model().dockerWorks());
    EXPECT_EQ(model().containerState(), ContainerState::dockerDown());
    EXPECT_TEXT(model().statusLine(), "Stopped (Docker/Colima is not running)");
    EXPECT_EQ(model().icon(), MenuIcon::Stopped);
}

TEST_F(Running, The_tools_and_the_engine_are_found)
{
    EXPECT_TRUE(model().hasBrew());
    EXPECT_TRUE(model().hasColima());
    EXPECT_TRUE(model().hasDocker());
    EXPECT_TRUE(model().dockerWorks());
    EXPECT_FALSE(model().composeAvailable()) << "Homebrew's docker brings no compose plug-in";
    Mac::ctl(QStringLiteral("compose on"));
    run(model().refreshTools());
    EXPECT_TRUE(model().composeAvailable());
    Mac::ctl(QStringLiteral("engine stop"));
    run(model().refreshTools());
    EXPECT_FALSE(model().dockerWorks());
    EXPECT_FALSE(model().composeAvailable());
}

TEST_F(Running, A_pihole_that_this_mac_does_not_use_is_orange)
{
    run(model().refreshStatus(Stats::Include));
    EXPECT_EQ(model().icon(), MenuIcon::NotUsed);
    EXPECT_TEXT(model().statusLine(), "Pi-hole is answering, but this Mac does not use it");
    EXPECT_EQ(model().containerState(), ContainerState::running(QStringLiteral("healthy")));
    ASSERT_TRUE(model().summary());
    ASSERT_TRUE(model().blocking());
    EXPECT_TRUE(model().blocking()->enabled);
}

TEST_F(Protected, A_pihole_that_this_mac_uses_is_green_with_its_counters)
{
    run(model().refreshStatus(Stats::Include));
    EXPECT_EQ(model().icon(), MenuIcon::Active);
    EXPECT_TEXT(model().statusLine(), "Pi-hole is answering and this Mac uses it");
    ASSERT_TRUE(model().resolverReport());
    EXPECT_TRUE(model().resolverReport()->firstIsPihole);
    ASSERT_TRUE(model().summary());
    const qint64 before = model().summary()->total;
    run(model().refreshStatus(Stats::Include));
    EXPECT_GT(model().summary()->total, before) << "the check's own question is counted";
    EXPECT_FALSE(model().showDeadDNSBanner());
}

TEST_F(Protected, A_dead_pihole_that_this_mac_uses_is_red_and_shows_no_old_counters)
{
    run(model().refreshStatus(Stats::Include));
    ASSERT_TRUE(model().summary());
    Mac::ctl(QStringLiteral("container stop"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_EQ(model().icon(), MenuIcon::NotAnswering);
    EXPECT_TEXT(model().statusLine(), "This Mac uses Pi-hole, but Pi-hole is not answering");
    EXPECT_EQ(model().containerState(), ContainerState::stopped(QStringLiteral("exited")));
    EXPECT_FALSE(model().summary());
    EXPECT_FALSE(model().blocking());
    EXPECT_TRUE(model().showDeadDNSBanner());
}

TEST_F(Protected, A_stopped_engine_is_told_apart_from_a_stopped_container)
{
    Mac::ctl(QStringLiteral("engine stop"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_EQ(model().containerState(), ContainerState::dockerDown());
    EXPECT_EQ(model().icon(), MenuIcon::NotAnswering);
}

TEST_F(Protected, A_vpn_in_front_means_that_this_mac_does_not_use_pihole)
{
    Mac::ctl(QStringLiteral("vpn on 10.8.0.1"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_EQ(model().icon(), MenuIcon::NotUsed);
    EXPECT_TEXT(
        model().resolverReport()->warnings.join(u' '),
        "The first DNS server macOS uses is 10.8.0.1, not Pi-hole (127.0.0.1). A VPN, a configuration profile or the "
        "router (IPv6 DNS) may be overriding it.");
}

TEST_F(Running, Without_a_password_the_status_is_kept_but_nothing_is_counted)
{
    model().setAdminPassword({});
    run(model().refreshStatus(Stats::Include));
    EXPECT_TRUE(model().answering());
    EXPECT_FALSE(model().summary());
    EXPECT_TEXT(model().apiMessage(), "");
}

TEST_F(Running, A_refresh_without_counters_asks_the_api_nothing)
{
    run(model().refreshStatus(Stats::Leave));
    EXPECT_TRUE(model().answering());
    EXPECT_FALSE(model().summary());
}

TEST_F(Running, A_wrong_password_is_told_and_the_old_counters_stay)
{
    run(model().refreshStatus(Stats::Include));
    ASSERT_TRUE(model().summary());
    model().setAdminPassword(QStringLiteral("not-the-password"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_TEXT(model().apiMessage(), "Pi-hole refused the admin password.");
    EXPECT_TRUE(model().summary());
}

TEST_F(Running, Rubbish_from_every_tool_gives_a_status_and_no_crash)
{
    for (const char *tool : {"docker", "scutil"})
        Mac::ctl(QStringLiteral("fault %1 rubbish").arg(QLatin1String(tool)));
    run(model().refreshStatus(Stats::Include));
    EXPECT_TRUE(model().statusChecked());
    EXPECT_FALSE(model().usedByMac());
}

TEST_F(Running, The_poll_refreshes_every_15_seconds)
{
    launch(model().bootstrap());
    waitFor([this] { return clock.waited() >= std::chrono::seconds(60); }, "four passes");
    const auto refreshes = Mac::calls(QStringLiteral("scutil")).size();
    EXPECT_GE(refreshes, 4);
    EXPECT_LE(refreshes, 6);
}

TEST_F(Running, A_model_that_goes_away_during_a_refresh_ends_it_quietly)
{
    Mac::ctl(QStringLiteral("fault docker late 0.2"));
    launch(model().refreshStatus(Stats::Include));
    launch(model().bootstrap());
    relaunch();
    run(model().refreshStatus(Stats::Include));
    EXPECT_TRUE(model().statusChecked());
}

} // namespace corvane::test
