#include "app/comeback_plan.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

using namespace std::chrono_literals;

constexpr qint64 kNoon = 1'795'262'400;

const ContainerState kExited = ContainerState::stopped(QStringLiteral("exited"));
const ContainerState kRunning = ContainerState::running(QStringLiteral("healthy"));

/// A plan that is shown one look after the other.
class Plan : public testing::Test {
protected:
    std::optional<ComebackEntry> answering(qint64 at) { return m_plan.see({at, true, true, kRunning, true}); }
    std::optional<ComebackEntry> down(qint64 at, const ContainerState &container = kExited)
    {
        return m_plan.see({at, false, true, container, true});
    }
    /// Looks every 15 seconds, all good.
    void runUntil(qint64 end)
    {
        for (qint64 at = end - 60; at <= end; at += 15)
            static_cast<void>(answering(at));
    }
    void fail()
    {
        m_plan.beginTry();
        m_plan.endTry(false);
    }

    ComebackPlan m_plan;
};

} // namespace

TEST_F(Plan, Nothing_is_to_be_done_while_pihole_answers)
{
    EXPECT_FALSE(m_plan.pause()) << "nor before the first look";
    runUntil(kNoon);
    EXPECT_FALSE(m_plan.pause());
}

TEST_F(Plan, Three_tries_come_after_10_30_and_120_seconds_and_no_fourth)
{
    runUntil(kNoon);
    EXPECT_FALSE(down(kNoon + 15));
    EXPECT_EQ(m_plan.pause(), 10s);
    EXPECT_EQ(m_plan.number(), 1);
    fail();
    EXPECT_EQ(m_plan.pause(), 30s);
    fail();
    EXPECT_EQ(m_plan.pause(), 120s);
    EXPECT_EQ(m_plan.number(), 3);
    fail();
    EXPECT_FALSE(m_plan.pause());
    EXPECT_EQ(down(kNoon + 60), (ComebackEntry{kNoon + 60, Outage::Container, ComebackEnd::Failed, 45}));
    EXPECT_FALSE(down(kNoon + 75)) << "it is said once";
    EXPECT_FALSE(m_plan.pause());
}

TEST_F(Plan, A_try_that_brings_it_back_is_recorded_with_the_time_that_it_was_missed)
{
    runUntil(kNoon);
    static_cast<void>(down(kNoon + 15, ContainerState::dockerDown()));
    m_plan.beginTry();
    EXPECT_EQ(answering(kNoon + 56), (ComebackEntry{kNoon + 56, Outage::Colima, ComebackEnd::Back, 41}));
    m_plan.endTry(true);
    EXPECT_FALSE(m_plan.pause());
    EXPECT_FALSE(answering(kNoon + 71));
}

TEST_F(Plan, A_container_that_answers_only_later_was_started_all_the_same)
{
    runUntil(kNoon);
    static_cast<void>(down(kNoon + 15));
    m_plan.beginTry();
    m_plan.endTry(true);
    EXPECT_FALSE(m_plan.pause()) << "it runs";
    EXPECT_FALSE(down(kNoon + 30, kRunning));
    EXPECT_FALSE(m_plan.pause());
    EXPECT_EQ(answering(kNoon + 45), (ComebackEntry{kNoon + 45, Outage::Container, ComebackEnd::Back, 30}));
}

TEST_F(Plan, Who_comes_back_by_itself_is_left_alone_and_nothing_is_claimed)
{
    runUntil(kNoon);
    static_cast<void>(down(kNoon + 15));
    EXPECT_FALSE(answering(kNoon + 30)) << "Docker's own restart policy was quicker";
    static_cast<void>(down(kNoon + 45));
    fail();
    EXPECT_FALSE(answering(kNoon + 60)) << "a try that failed has brought nothing back";
    EXPECT_FALSE(m_plan.pause());
}

TEST_F(Plan, A_container_that_docker_is_restarting_or_that_is_not_there_is_not_started)
{
    runUntil(kNoon);
    static_cast<void>(down(kNoon + 15, ContainerState::stopped(QStringLiteral("restarting"))));
    EXPECT_FALSE(m_plan.pause());
    static_cast<void>(down(kNoon + 30, ContainerState::missing()));
    EXPECT_FALSE(m_plan.pause());
    static_cast<void>(down(kNoon + 45, kRunning));
    EXPECT_FALSE(m_plan.pause()) << "one that runs and is silent is not helped by a start";
    static_cast<void>(down(kNoon + 60, ContainerState::stopped(QStringLiteral("created"))));
    EXPECT_TRUE(m_plan.pause());
}

TEST_F(Plan, A_look_in_the_middle_of_a_change_says_nothing)
{
    runUntil(kNoon);
    EXPECT_FALSE(m_plan.see({kNoon + 15, false, true, kExited, false}));
    EXPECT_FALSE(m_plan.pause());
}

TEST_F(Plan, A_mac_that_does_not_use_pihole_needs_none)
{
    runUntil(kNoon);
    EXPECT_FALSE(m_plan.see({kNoon + 15, false, false, kExited, true}));
    EXPECT_FALSE(m_plan.pause());
    static_cast<void>(down(kNoon + 30));
    EXPECT_TRUE(m_plan.pause()) << "now it does";
    static_cast<void>(m_plan.see({kNoon + 45, false, false, kExited, true}));
    EXPECT_FALSE(m_plan.pause()) << "and no longer";
}

TEST_F(Plan, Sleep_is_named_and_gives_three_new_tries)
{
    runUntil(kNoon);
    static_cast<void>(down(kNoon + 15));
    for (int i = 0; i < 3; ++i)
        fail();
    EXPECT_TRUE(down(kNoon + 30));
    EXPECT_FALSE(down(kNoon + 8000)) << "asleep, nobody missed it";
    EXPECT_EQ(m_plan.pause(), 10s);
    m_plan.beginTry();
    EXPECT_EQ(answering(kNoon + 8041), (ComebackEntry{kNoon + 8041, Outage::Woke, ComebackEnd::Back, 41}));
}

TEST_F(Plan, A_mac_that_finds_its_network_a_while_after_waking_has_still_just_woken)
{
    runUntil(kNoon);
    static_cast<void>(m_plan.see({kNoon + 8000, false, false, ContainerState::dockerDown(), true}));
    static_cast<void>(down(kNoon + 8015, ContainerState::dockerDown()));
    m_plan.beginTry();
    EXPECT_EQ(answering(kNoon + 8045), (ComebackEntry{kNoon + 8045, Outage::Woke, ComebackEnd::Back, 30}));
}

TEST_F(Plan, What_was_down_at_the_first_look_was_down_when_corvane_was_opened)
{
    static_cast<void>(down(kNoon, ContainerState::dockerDown()));
    EXPECT_EQ(m_plan.pause(), 10s);
    m_plan.beginTry();
    EXPECT_EQ(answering(kNoon + 30), (ComebackEntry{kNoon + 30, Outage::Opened, ComebackEnd::Back, 30}));
    static_cast<void>(down(kNoon + 45));
    m_plan.beginTry();
    EXPECT_EQ(answering(kNoon + 60)->outage, Outage::Container) << "the next time it is known what happened";
}

TEST_F(Plan, Whoever_calls_a_start_off_is_not_asked_again)
{
    EXPECT_FALSE(m_plan.giveUp()) << "there is nothing to call off";
    runUntil(kNoon);
    static_cast<void>(down(kNoon + 15));
    m_plan.beginTry();
    EXPECT_EQ(m_plan.giveUp(), (ComebackEntry{kNoon + 15, Outage::Container, ComebackEnd::Cancelled, 0}));
    m_plan.endTry(false);
    EXPECT_FALSE(m_plan.pause());
    EXPECT_FALSE(down(kNoon + 30));
    EXPECT_FALSE(m_plan.pause());
    EXPECT_FALSE(m_plan.giveUp());
}

TEST_F(Plan, A_clock_that_is_set_back_makes_no_time_negative)
{
    runUntil(kNoon);
    static_cast<void>(down(kNoon + 15));
    m_plan.beginTry();
    EXPECT_EQ(answering(kNoon - 4000)->seconds, 0);
}

} // namespace corvane::test
