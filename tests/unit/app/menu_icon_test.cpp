#include "app/menu_icon.h"

#include <gtest/gtest.h>

namespace corvane::test {

TEST(MenuIconTest, Before_the_first_check_the_icon_is_unknown_whatever_runs)
{
    EXPECT_EQ(menuIcon(false, true, true), MenuIcon::Unknown);
    EXPECT_EQ(menuIcon(false, false, false), MenuIcon::Unknown);
}

TEST(MenuIconTest, It_follows_who_answers_and_who_is_used)
{
    EXPECT_EQ(menuIcon(true, true, true), MenuIcon::Active);
    EXPECT_EQ(menuIcon(true, true, false), MenuIcon::NotUsed);
    EXPECT_EQ(menuIcon(true, false, true), MenuIcon::NotAnswering);
    EXPECT_EQ(menuIcon(true, false, false), MenuIcon::Stopped);
}

TEST(MenuIconTest, The_states_keep_their_numbers)
{
    EXPECT_EQ(static_cast<int>(MenuIcon::Active), 0);
    EXPECT_EQ(static_cast<int>(MenuIcon::NotUsed), 1);
    EXPECT_EQ(static_cast<int>(MenuIcon::NotAnswering), 2);
    EXPECT_EQ(static_cast<int>(MenuIcon::Stopped), 3);
    EXPECT_EQ(static_cast<int>(MenuIcon::Unknown), 4);
}

TEST(MenuIconTest, Every_state_has_its_sentence)
{
    const auto line = [](MenuIcon icon, const ContainerState &container) {
        return statusLine(icon, container).toStdString();
    };
    const ContainerState up = ContainerState::running(QStringLiteral("healthy"));
    EXPECT_EQ(line(MenuIcon::Active, up), "Pi-hole is answering and this Mac uses it");
    EXPECT_EQ(line(MenuIcon::NotUsed, up), "Pi-hole is answering, but this Mac does not use it");
    EXPECT_EQ(line(MenuIcon::NotAnswering, up), "This Mac uses Pi-hole, but Pi-hole is not answering");
    EXPECT_EQ(line(MenuIcon::Unknown, up), "Checking Pi-hole...");
    EXPECT_EQ(line(MenuIcon::Stopped, ContainerState::dockerDown()), "Stopped (Docker/Colima is not running)");
    EXPECT_EQ(line(MenuIcon::Stopped, ContainerState::missing()), "Pi-hole is not installed yet");
    EXPECT_EQ(line(MenuIcon::Stopped, ContainerState::stopped(QStringLiteral("exited"))), "Pi-hole is stopped");
    EXPECT_EQ(line(MenuIcon::Stopped, up), "Pi-hole is stopped");
}

} // namespace corvane::test
