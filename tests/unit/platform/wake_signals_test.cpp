#include "platform/wake_signals.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>

namespace corvane::test {

namespace {

constexpr int kWithinASecond = 1000;
/// Long enough for each change to be read by itself.
constexpr int kBetweenChanges = 20;

/// Switches the loopback link of this test's own network.
void switchLink(bool on)
{
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ASSERT_GE(descriptor, 0);
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = static_cast<short>(on ? IFF_UP : 0);
    EXPECT_EQ(ioctl(descriptor, SIOCSIFFLAGS, &request), 0) << std::strerror(errno);
    close(descriptor);
}

} // namespace

TEST(WakeSignals, A_changed_network_is_told_within_a_second)
{
    const auto signals = systemWakeSignals();
    QSignalSpy woke(signals.get(), &WakeSignals::woke);
    switchLink(true);
    EXPECT_TRUE(woke.wait(kWithinASecond));
    switchLink(false);
    EXPECT_TRUE(woke.wait(kWithinASecond));
}

TEST(WakeSignals, A_burst_of_changes_is_told_once)
{
    const auto signals = systemWakeSignals();
    QSignalSpy woke(signals.get(), &WakeSignals::woke);
    for (const bool on : {true, false, true, false}) {
        switchLink(on);
        QTest::qWait(kBetweenChanges);
    }
    QTest::qWait(kWithinASecond);
    EXPECT_GE(woke.count(), 1);
    EXPECT_LE(woke.count(), 2) << "a stall may part the burst, but it is not told change by change";
}

TEST(WakeSignals, A_quiet_network_wakes_nobody)
{
    const auto signals = systemWakeSignals();
    QSignalSpy woke(signals.get(), &WakeSignals::woke);
    EXPECT_FALSE(woke.wait(kWithinASecond));
}

} // namespace corvane::test
