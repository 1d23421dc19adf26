#include "dns/dns_backup.h"
#include "tests/endurance/household.h"
#include "tests/endurance/polling.h"

#include <algorithm>
#include <cstdio>
#include <random>

namespace corvane::test {

namespace {

/// What happens to a Mac in a day, and what undoes it where Corvane does not.
struct Event {
    const char *order;
    const char *end;
    /// While it lasts.
    bool usedByMac = true;
};

const QList<Event> &events()
{
    static const QList<Event> all{
        {"wifi off", "wifi on", false},
        {"vpn on 10.8.0.1", "vpn off", false},
        {"vpn on 10.8.0.1 split", "vpn off", true},
        {"container stop", "", true},
        {"engine stop", "", true},
        {"dhcp 192.168.1.1", "", true},
        {"", "", true}, // the lid alone
    };
    return all;
}

constexpr int kLooksUntilSeen = 3;
constexpr int kMoments = 5;

/// A Corvane that starts Pi-hole again by itself.
class DayOutside : public Polling {
protected:
    DayOutside()
    {
        EXPECT_TRUE(DNSBackup::store({{QStringLiteral("Wi-Fi"), {QStringLiteral("9.9.9.9")}}}));
        watcher->comeback()->setStartsAgain(true);
        launch(watcher->bootstrap());
        pass(3);
    }

    [[nodiscard]] bool well() const { return watcher->answering() && watcher->usedByMac() && !watcher->underWay(); }

    /// What Corvane holds while it waits for its next look: the least of some such moments, as one of them may still
    /// see the last look's sockets close.
    Household atRest()
    {
        QList<Household> found;
        quickClock.betweenPolls([this, &found] {
            if (well()) found += Household::now();
        });
        waitFor([&found] { return found.size() >= kMoments; }, "all is at rest");
        quickClock.betweenPolls({});
        return *std::ranges::min_element(found, {}, &Household::heldByNoThread);
    }

    void live(const Event &event, std::chrono::minutes asleep)
    {
        SCOPED_TRACE(testing::Message() << event.order << ", asleep for " << asleep.count() << " minutes");
        if (*event.order) Mac::ctl(QString::fromLatin1(event.order));
        quickClock.sleep(asleep);
        pass(kLooksUntilSeen);
        if (!event.usedByMac) {
            EXPECT_FALSE(watcher->usedByMac());
        }
        if (*event.end) Mac::ctl(QString::fromLatin1(event.end));
        waitFor([this] { return well(); }, "Pi-hole is back, and nothing is under way");
    }
};

} // namespace

TEST_F(DayOutside, Of_sleep_and_other_networks_ends_as_it_began)
{
    const qint64 wanted = amount("CORVANE_EVENTS", 12);
    std::mt19937 dice(20261122);
    const Household before = atRest();
    for (qint64 i = 0; i < wanted && !HasFailure(); ++i) {
        const Event &event = events()[dice() % static_cast<quint32>(events().size())];
        live(event, std::chrono::minutes(dice() % 90));
    }
    const Household after = atRest();
    std::printf("%lld events in %lld looks; descriptors and threads %lld and %lld, then %lld and %lld\n", wanted,
                quickClock.polls(), before.descriptors, before.threads, after.descriptors, after.threads);
    EXPECT_LE(after.heldByNoThread(), before.heldByNoThread() + 1) << "a connection to Pi-hole may be kept";
    EXPECT_LT(after.threads, before.threads + wanted) << "no event keeps a thread";
    EXPECT_EQ(DNSBackup::load().size(), 1);
}

} // namespace corvane::test
