// The log of an operation without any operation: cap, counters and change signals.

#include "exec/operation_runner.h"

#include <gtest/gtest.h>

namespace corvane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A runner whose change signals are written down.
struct Log {
    OperationRunner runner{[](const QString &) { return QString(); }};
    QList<std::pair<int, int>> changes;
    int resets = 0;
    int lineCounts = 0;

    Log()
    {
        QObject::connect(&runner, &OperationRunner::linesChanged,
                         [this](int removed, int appended) { changes.emplaceBack(removed, appended); });
        QObject::connect(&runner, &OperationRunner::linesReset, [this] { ++resets; });
        QObject::connect(&runner, &OperationRunner::lineCountChanged, [this] { ++lineCounts; });
    }

    void fill(int count)
    {
        for (int i = 0; i < count; ++i)
            runner.append(QString::number(i));
    }
};

} // namespace

TEST(OperationLog, Holds_plain_text)
{
    Log log;
    log.runner.append(u"\u001B[K  [✓] Preparing"_s);
    EXPECT_EQ(log.runner.lines(), QStringList{u"  [✓] Preparing"_s});
}

TEST(OperationLog, A_new_runner_shows_nothing)
{
    const Log log;
    EXPECT_TRUE(log.runner.lines().isEmpty());
    EXPECT_FALSE(log.runner.running());
    EXPECT_FALSE(log.runner.succeeded());
    EXPECT_FALSE(log.runner.ended());
    EXPECT_EQ(log.runner.title(), QString());
    EXPECT_EQ(log.runner.failureSummary(), std::nullopt);
    EXPECT_EQ(log.runner.lineCount(), 0);
}

TEST(OperationLog, The_3000th_line_drops_nothing_and_the_3001st_drops_the_first)
{
    Log log;
    log.fill(3000);
    EXPECT_EQ(log.runner.lines().size(), 3000);
    EXPECT_EQ(log.runner.lines().first(), u"0"_s);
    EXPECT_EQ(log.changes.last(), std::pair(0, 1));
    log.runner.append(u"one more"_s);
    EXPECT_EQ(log.runner.lines().size(), 3000);
    EXPECT_EQ(log.runner.lines().first(), u"1"_s);
    EXPECT_EQ(log.runner.lines().last(), u"one more"_s);
    EXPECT_EQ(log.changes.last(), std::pair(1, 1));
}

TEST(OperationLog, The_line_count_goes_on_at_the_cap)
{
    Log log;
    log.fill(3005);
    EXPECT_EQ(log.runner.lineCount(), 3005);
    EXPECT_EQ(log.lineCounts, 3005);
}

TEST(OperationLog, Reset_empties_the_log_and_the_count)
{
    Log log;
    log.fill(10);
    log.runner.reset();
    EXPECT_TRUE(log.runner.lines().isEmpty());
    EXPECT_EQ(log.runner.lineCount(), 0);
    EXPECT_EQ(log.resets, 1);
}

TEST(OperationLog, Resetting_an_empty_log_tells_nobody)
{
    Log log;
    log.runner.reset();
    EXPECT_EQ(log.resets, 0);
    EXPECT_EQ(log.lineCounts, 0);
}

TEST(OperationLog, Cancelling_with_nothing_running_does_nothing)
{
    Log log;
    log.runner.cancel();
    EXPECT_FALSE(log.runner.running());
    EXPECT_EQ(log.runner.failureSummary(), std::nullopt);
}

} // namespace corvane::test
