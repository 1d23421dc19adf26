#include "platform/login_item.h"
#include "tests/mac/played/diary.h"
#include "tests/mac/played/mac.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

using played::Diary;
using played::Mac;
using Status = LoginItem::Status;

// As Apple numbers them.
constexpr long kNotRegistered = 0;
constexpr long kEnabled = 1;
constexpr long kRequiresApproval = 2;
constexpr long kNotFound = 3;

/// The Mac's login item for the application itself.
class MacLoginItem : public testing::Test {
protected:
    MacLoginItem()
    {
        Mac::loginItemStatus = kNotRegistered;
        Mac::loginItemRefusal.clear();
        [[maybe_unused]] const QStringList earlier = Diary::take();
    }

    /// Switches it; the reason when it did not take effect.
    [[nodiscard]] QString change(bool enabled, long after, const QString &refusal = {})
    {
        Mac::statusAfter = after;
        Mac::loginItemRefusal = refusal;
        const auto changed = m_item->setEnabled(enabled);
        return changed ? QString() : changed.error();
    }

    std::unique_ptr<LoginItem> m_item = systemLoginItem();
};

TEST_F(MacLoginItem, Each_state_of_the_system_is_told_as_it_is)
{
    const QList<std::pair<long, Status>> states{{kNotRegistered, Status::NotRegistered},
                                                {kEnabled, Status::Enabled},
                                                {kRequiresApproval, Status::RequiresApproval},
                                                {kNotFound, Status::NotFound},
                                                {7, Status::NotFound}};
    for (const auto &[system, told] : states) {
        Mac::loginItemStatus = system;
        EXPECT_EQ(m_item->status(), told) << system;
    }
    EXPECT_TRUE(Diary::take().isEmpty()) << "asking changes nothing";
}

TEST_F(MacLoginItem, Switching_on_registers_and_switching_off_unregisters)
{
    EXPECT_EQ(change(true, kEnabled), QString());
    EXPECT_EQ(Diary::take(), QStringList{QStringLiteral("register")});
    EXPECT_EQ(change(false, kNotRegistered), QString());
    EXPECT_EQ(Diary::take(), QStringList{QStringLiteral("unregister")});
}

TEST_F(MacLoginItem, The_state_after_the_change_decides_what_is_said)
{
    EXPECT_TRUE(change(true, kRequiresApproval).contains(QStringLiteral("waits for your approval")));
    EXPECT_TRUE(change(true, kNotFound, QStringLiteral("no")).contains(QStringLiteral("Applications folder")));
    EXPECT_EQ(change(true, kNotRegistered, QStringLiteral("Operation not permitted")),
              QStringLiteral("Operation not permitted"));
    EXPECT_EQ(change(true, kEnabled, QStringLiteral("already registered")), QString());
}

} // namespace

} // namespace corvane::test
