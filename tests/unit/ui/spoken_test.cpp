#include "ui/decisions/spoken.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

CheckRow check(const char *title, CheckState state, const char *detail)
{
    return {QString::fromLatin1(title), QString::fromLatin1(title), state, QString::fromLatin1(detail)};
}

TEST(Spoken, An_operation_ends_well_or_says_why_not)
{
    EXPECT_EQ(spokenEnd(QStringLiteral("Starting Colima"), true, {}), QStringLiteral("Starting Colima: Finished."));
    EXPECT_EQ(spokenEnd(QStringLiteral("Starting Colima"), false, QStringLiteral("Cancelled.")),
              QStringLiteral("Starting Colima: Cancelled."));
}

TEST(Spoken, A_test_says_its_name_its_verdict_and_why)
{
    Outcomes outcomes;
    outcomes.insert(QStringLiteral("blocking"), {false, QStringLiteral("No tracker was blocked"), {}});
    EXPECT_EQ(spokenOutcome(outcomeRows(outcomes).at(2)),
              QStringLiteral("Blocking (step 5): failed. No tracker was blocked"));
}

TEST(Spoken, Of_the_checks_only_what_needs_attention_is_said)
{
    const CheckRow good = check("macOS version", CheckState::Ok, "macOS 14.5 is supported.");
    EXPECT_EQ(spokenChecks({}), QString());
    EXPECT_EQ(spokenChecks({good, good}), QStringLiteral("All checks passed."));
    EXPECT_EQ(spokenChecks({good, check("Homebrew", CheckState::Warning, "Not found."),
                            check("Ports", CheckState::Failed, "In use.")}),
              QStringLiteral("Homebrew: warning. Not found. Ports: failed. In use."));
}

} // namespace

} // namespace corvane::test
