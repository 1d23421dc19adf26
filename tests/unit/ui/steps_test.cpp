#include "ui/decisions/steps.h"

#include <gtest/gtest.h>

namespace corvane {

namespace {

TEST(Steps, A_done_step_has_a_green_check_even_when_it_is_the_current_one)
{
    EXPECT_EQ(stepBadge(true, true), stepBadge(true, false));
    EXPECT_EQ(stepBadge(true, true).symbol, QStringLiteral("checkmark.circle.fill"));
    EXPECT_EQ(stepBadge(true, true).tint, Tint::Green);
}

TEST(Steps, An_open_step_has_a_circle_that_is_filled_when_it_is_the_current_one)
{
    EXPECT_EQ(stepBadge(false, true).symbol, QStringLiteral("circle.inset.filled"));
    EXPECT_EQ(stepBadge(false, false).symbol, QStringLiteral("circle"));
    EXPECT_EQ(stepBadge(false, false).tint, Tint::Secondary);
}

TEST(Steps, A_row_counts_from_one_and_is_spoken_whole)
{
    const Row row = stepRow(2, QStringLiteral("Install Colima and Docker"), true, false);
    EXPECT_EQ(row.title, QStringLiteral("3. Install Colima and Docker"));
    EXPECT_EQ(row.detail, QStringLiteral("Install Colima and Docker, done, step 3 of 8"));
}

TEST(Steps, A_title_with_a_place_marker_is_spoken_as_it_stands)
{
    EXPECT_EQ(stepRow(0, QStringLiteral("%1 and %2"), false, false).title, QStringLiteral("1. %1 and %2"));
}

TEST(Steps, The_position_names_step_and_count) { EXPECT_EQ(stepPosition(7), QStringLiteral("Step 8 of 8")); }

} // namespace

} // namespace corvane
