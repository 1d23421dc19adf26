#include "ui/decisions/places.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

TEST(Places, Without_a_banner_nothing_is_told_there)
{
    for (const Place::Name place : {Place::Dashboard, Place::Banner, Place::Menu, Place::SetUp}) {
        EXPECT_FALSE(answersInBanner(place, false, false)) << place;
        EXPECT_FALSE(answersInBanner(place, false, true)) << place;
    }
}

TEST(Places, The_banner_tells_what_began_there_or_in_the_menu)
{
    for (const bool setUp : {false, true}) {
        EXPECT_TRUE(answersInBanner(Place::Banner, true, setUp));
        EXPECT_TRUE(answersInBanner(Place::Menu, true, setUp));
        EXPECT_FALSE(answersInBanner(Place::SetUp, true, setUp));
    }
}

TEST(Places, What_began_on_the_dashboard_is_told_there_as_long_as_it_is_shown)
{
    EXPECT_FALSE(answersInBanner(Place::Dashboard, true, false));
    EXPECT_TRUE(answersInBanner(Place::Dashboard, true, true));
}

TEST(Places, An_operation_belongs_to_the_screen_that_its_title_speaks_of)
{
    EXPECT_TRUE(movesPort(QStringLiteral("Recreating Pi-hole on port 8085")));
    EXPECT_FALSE(movesPort(QStringLiteral("Updating Pi-hole to 2026.10.0")));
    EXPECT_FALSE(movesPort({}));
    EXPECT_TRUE(changesAutostart(QStringLiteral("Turning on Colima at login")));
    EXPECT_TRUE(changesAutostart(QStringLiteral("Turning off Colima at login")));
    EXPECT_FALSE(changesAutostart(QStringLiteral("Installing Colima and Docker")));
    EXPECT_FALSE(changesAutostart({}));
}

} // namespace

} // namespace corvane::test
