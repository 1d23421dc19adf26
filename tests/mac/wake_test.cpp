#include "platform/wake_signals.h"
#include "tests/mac/played/diary.h"
#include "tests/mac/played/mac.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace corvane::test {

namespace {

using played::Diary;
using played::Mac;

constexpr int kWithinASecond = 1000;

/// The Mac's notifications of waking and of a changed network.
class MacWakeSignals : public testing::Test {
protected:
    MacWakeSignals()
    {
        [[maybe_unused]] const QStringList earlier = Diary::take();
        Mac::storeOpens = true;
    }
};

TEST_F(MacWakeSignals, Waking_routers_addresses_and_DNS_servers_are_watched_on_the_main_thread)
{
    const auto signals = systemWakeSignals();
    EXPECT_EQ(
        Diary::take(),
        (QStringList{QStringLiteral("observe did wake on the main queue"), QStringLiteral("store Corvane"),
                     QStringLiteral("key State:/Network/Global/IPv4"), QStringLiteral("key State:/Network/Global/IPv6"),
                     QStringLiteral("key State:/Network/Global/DNS")}));
    EXPECT_EQ(Mac::observers(), 2);
}

TEST_F(MacWakeSignals, Waking_and_a_changed_network_each_wake_the_poll)
{
    const auto signals = systemWakeSignals();
    QSignalSpy woke(signals.get(), &WakeSignals::woke);
    Mac::wakeUp();
    EXPECT_TRUE(woke.wait(kWithinASecond));
    Mac::changeNetwork();
    EXPECT_TRUE(woke.wait(kWithinASecond));
    EXPECT_EQ(woke.count(), 2);
}

TEST_F(MacWakeSignals, Nobody_is_told_once_they_are_gone)
{
    (void)systemWakeSignals();
    EXPECT_EQ(Mac::observers(), 0);
    Mac::wakeUp();
    Mac::changeNetwork();
}

TEST_F(MacWakeSignals, Without_the_systems_store_waking_is_still_told)
{
    Mac::storeOpens = false;
    const auto signals = systemWakeSignals();
    QSignalSpy woke(signals.get(), &WakeSignals::woke);
    Mac::wakeUp();
    EXPECT_TRUE(woke.wait(kWithinASecond));
}

} // namespace

} // namespace corvane::test
