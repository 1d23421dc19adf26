#include "app/wizard_steps.h"
#include "ui/decisions/steps.h"

#include <gtest/gtest.h>

namespace corvane::test {

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

TEST(Steps, Every_step_has_a_view_of_its_own_and_a_number_out_of_range_shows_the_nearest)
{
    QSet<QString> views;
    for (int step = 0; step <= kLastStep; ++step)
        views << stepView(step);
    EXPECT_EQ(views.size(), kLastStep + 1);
    EXPECT_EQ(stepView(WizardStep::DNS), QStringLiteral("DNSStepView.qml"));
    EXPECT_EQ(stepView(-1), stepView(0));
    EXPECT_EQ(stepView(kLastStep + 1), QStringLiteral("DoneStepView.qml"));
}

TEST(Steps, The_first_has_none_before_it_and_the_last_none_after)
{
    EXPECT_FALSE(hasStepBefore(WizardStep::Welcome));
    EXPECT_TRUE(hasStepAfter(WizardStep::Welcome));
    EXPECT_TRUE(hasStepBefore(WizardStep::Done));
    EXPECT_FALSE(hasStepAfter(WizardStep::Done));
    EXPECT_TRUE(hasStepAfter(WizardStep::Browser));
}

TEST(Steps, The_position_names_step_and_count) { EXPECT_EQ(stepPosition(7), QStringLiteral("Step 8 of 8")); }

} // namespace

} // namespace corvane::test
