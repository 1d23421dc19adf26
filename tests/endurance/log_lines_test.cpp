#include "exec/operation_runner.h"
#include "tests/endurance/household.h"
#include "tests/io/test_child.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

namespace corvane::test {

namespace {

constexpr qint64 kSamples = 60;
constexpr double kMebibyte = 1024 * 1024;
constexpr double kAllowance = 4 * kMebibyte; // what the sanitizer and the allocator may keep for themselves
constexpr double kPatience = 1800;           // seconds

} // namespace

TEST(LogLines, By_the_million_leave_no_more_than_the_newest)
{
    const qint64 lines = amount("CORVANE_LINES", 300'000);
    OperationRunner runner([](const QString &) { return QString(); });
    QList<double> memory;
    qint64 descriptors = 0;
    QObject::connect(&runner, &OperationRunner::lineCountChanged, &runner, [&] {
        if (runner.lineCount() < memory.size() * lines / kSamples) return;
        const Household now = Household::now();
        memory += static_cast<double>(now.residentBytes);
        descriptors = std::max(descriptors, now.descriptors);
    });
    const Household before = Household::now();
    runner.start(QStringLiteral("Counting"),
                 {{QStringLiteral("seq"), QStringLiteral("/usr/bin/seq"), {QString::number(lines)}, {}, false}});
    ASSERT_TRUE(spinUntil([&] { return runner.ended(); }, kPatience));

    EXPECT_TRUE(runner.succeeded());
    EXPECT_EQ(runner.lineCount(), lines + 1);
    EXPECT_EQ(runner.lines().size(), OperationRunner::kMaxLines);
    EXPECT_EQ(runner.lines().last(), QString::number(lines));
    const Trend trend = Trend::ofLastHalf(memory);
    const Household after = Household::now();
    std::printf("%lld lines: memory %.2f MiB at the end, %+.2f MiB in the last half (by chance up to %.2f); "
                "descriptors %lld before, %lld after\n",
                lines, memory.last() / kMebibyte, trend.growth / kMebibyte, trend.noise / kMebibyte, before.descriptors,
                after.descriptors);
    EXPECT_LE(trend.growth, std::max(trend.noise, kAllowance));
    EXPECT_EQ(after.children, before.children);
    EXPECT_LE(after.descriptors, before.descriptors + 2); // the event loop's own
}

} // namespace corvane::test
