#include "tests/endurance/household.h"
#include "tests/endurance/polling.h"

#include <algorithm>
#include <cstdio>

namespace corvane::test {

namespace {

constexpr int kSamples = 60;
constexpr double kMebibyte = 1024 * 1024;
constexpr double kAllowance = 4 * kMebibyte; // what the sanitizer and the allocator may keep for themselves

/// What is counted while the looks go by.
struct Counts {
    QList<double> memory;
    QList<Household> all;
    QList<qint64> seats;

    void take()
    {
        all += Household::now();
        memory += static_cast<double>(all.last().residentBytes);
        seats += Mac::ctl(QStringLiteral("pihole state"))[QLatin1String("seats")].toInteger();
    }

    /// The least and the most of the second half.
    template <typename What>
    [[nodiscard]] std::pair<qint64, qint64> range(What what) const
    {
        const QList<Household> half = all.sliced(all.size() / 2);
        const auto [least, most] = std::ranges::minmax(half, {}, what);
        return {std::invoke(what, least), std::invoke(what, most)};
    }
};

} // namespace

TEST_F(Polling, For_weeks_leaves_nothing_behind)
{
    const qint64 polls = amount("CORVANE_POLLS", 120);
    Counts counts;
    quickClock.betweenPolls([&] {
        if (quickClock.polls() % std::max<qint64>(1, polls / kSamples) == 0) counts.take();
    });
    launch(watcher->bootstrap());
    pass(polls);
    ASSERT_GE(counts.all.size(), kSamples);
    EXPECT_TRUE(watcher->answering());

    const Trend trend = Trend::ofLastHalf(counts.memory);
    const auto descriptors = counts.range(&Household::descriptors);
    const auto threads = counts.range(&Household::threads);
    std::printf(
        "%lld polls: memory %.2f MiB at the end, %+.2f MiB in the last half (by chance up to %.2f); descriptors "
        "%lld to %lld, threads %lld to %lld, children %lld, seats %lld\n",
        polls, counts.memory.last() / kMebibyte, trend.growth / kMebibyte, trend.noise / kMebibyte, descriptors.first,
        descriptors.second, threads.first, threads.second, counts.range(&Household::children).second,
        counts.seats.last());
    EXPECT_LE(trend.growth, std::max(trend.noise, kAllowance));
    const auto held = counts.range(&Household::heldByNoThread);
    EXPECT_EQ(held.first, held.second);
    EXPECT_LE(descriptors.second, counts.all.sliced(0, counts.all.size() / 2).last().descriptors + 2);
    EXPECT_LE(threads.second, counts.all.sliced(0, counts.all.size() / 2).last().threads + 2);
    EXPECT_EQ(counts.range(&Household::children).second, 0);
    EXPECT_EQ(counts.seats.last(), 1);
    EXPECT_EQ(*std::ranges::max_element(counts.seats), 1);
}

} // namespace corvane::test
