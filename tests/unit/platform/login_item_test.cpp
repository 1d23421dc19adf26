#include "platform/login_item.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

using Status = LoginItem::Status;

const std::optional<QString> kAccepted;
const std::optional<QString> kRefused = QStringLiteral("Operation not permitted");

QString reason(bool enabled, const std::optional<QString> &refusal, Status after)
{
    const auto outcome = LoginItem::outcome(enabled, refusal, after);
    return outcome ? QString() : outcome.error();
}

} // namespace

TEST(LoginItem, Switching_on_that_took_effect_says_nothing)
{
    EXPECT_TRUE(LoginItem::outcome(true, kAccepted, Status::Enabled).has_value());
}

TEST(LoginItem, Switching_on_again_is_no_error_although_the_system_refuses)
{
    EXPECT_TRUE(LoginItem::outcome(true, kRefused, Status::Enabled).has_value());
}

TEST(LoginItem, An_item_that_waits_for_approval_says_where_to_allow_it)
{
    for (const auto &refusal : {kAccepted, kRefused}) {
        EXPECT_EQ(
            reason(true, refusal, Status::RequiresApproval),
            QStringLiteral("macOS waits for your approval. Allow Corvane in System Settings, General, Login Items."));
    }
}

TEST(LoginItem, A_copy_that_the_system_does_not_know_is_told_to_move)
{
    EXPECT_TRUE(reason(true, kRefused, Status::NotFound).contains(QStringLiteral("Applications folder")));
}

TEST(LoginItem, Any_other_refusal_is_shown_in_the_systems_words)
{
    EXPECT_EQ(reason(true, kRefused, Status::NotRegistered), *kRefused);
    EXPECT_EQ(reason(false, kRefused, Status::Enabled), *kRefused);
}

TEST(LoginItem, Switching_off_what_is_not_registered_is_no_error)
{
    EXPECT_TRUE(LoginItem::outcome(false, kAccepted, Status::NotRegistered).has_value());
    EXPECT_TRUE(LoginItem::outcome(false, kRefused, Status::NotRegistered).has_value());
    EXPECT_TRUE(LoginItem::outcome(false, kRefused, Status::NotFound).has_value());
}

TEST(LoginItem, Switching_off_while_approval_is_missing_follows_the_system)
{
    EXPECT_TRUE(LoginItem::outcome(false, kAccepted, Status::RequiresApproval).has_value());
    EXPECT_EQ(reason(false, kRefused, Status::RequiresApproval), *kRefused);
}

} // namespace corvane::test
