// Awaited commands: the main thread goes on, however much is printed and however many run.

#include "exec/background.h"
#include "exec/command_runner.h"
#include "tests/io/test_child.h"

#include <QCoreApplication>
#include <QCoro/QCoroTask>
#include <QElapsedTimer>
#include <QThread>
#include <QTimer>
#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace corvane::test {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Measures the longest time for which the main thread's event loop did not come round.
class Heartbeat {
public:
    Heartbeat()
    {
        m_elapsed.start();
        QObject::connect(&m_timer, &QTimer::timeout, [this] { m_longest = std::max(m_longest, m_elapsed.restart()); });
        m_timer.start(1);
    }
    [[nodiscard]] qint64 longestGap() const { return m_longest; }

private:
    QTimer m_timer;
    QElapsedTimer m_elapsed;
    qint64 m_longest = 0;
};

QCoro::Task<> runInto(QList<CommandResult> *results, QStringList args, std::chrono::milliseconds limit)
{
    const Command command(childPath(), args);
    const CommandResult result = co_await CommandRunner::run(command.within(limit));
    EXPECT_EQ(QThread::currentThread(), qApp->thread());
    results->append(result);
}

} // namespace

TEST(CommandLoad, An_awaited_command_resumes_on_the_main_thread_with_its_result)
{
    QList<CommandResult> results;
    const auto task = runInto(&results, {u"print"_s, hex("hello"), hex("")}, 10s);
    EXPECT_TRUE(results.isEmpty()) << "the caller is suspended first";
    ASSERT_TRUE(spinUntil([&] { return task.isReady(); }));
    ASSERT_EQ(results.size(), 1);
    EXPECT_EQ(results.first().standardOutput, u"hello"_s);
}

TEST(CommandLoad, A_flood_of_256_MiB_on_both_streams_is_captured_while_the_main_thread_goes_on)
{
    constexpr qsizetype kSize = 256 * 1024 * 1024;
    Heartbeat heartbeat;
    QElapsedTimer elapsed;
    elapsed.start();
    QList<CommandResult> results;
    const auto task = runInto(&results, {u"flood"_s, u"256"_s}, 200s);
    ASSERT_TRUE(spinUntil([&] { return task.isReady(); }, 200));
    EXPECT_EQ(results.first().status, 0);
    EXPECT_FALSE(results.first().timedOut);
    EXPECT_EQ(results.first().standardOutput.size(), kSize);
    EXPECT_EQ(results.first().standardError.size(), kSize);
    EXPECT_EQ(results.first().standardError.count(u'\n'), kSize / 64);
    EXPECT_LT(heartbeat.longestGap(), elapsed.elapsed() / 2);
}

TEST(CommandLoad, Sixty_four_commands_run_at_once)
{
    QElapsedTimer elapsed;
    elapsed.start();
    QList<CommandResult> results;
    std::vector<QCoro::Task<>> tasks;
    for (int i = 0; i < 64; ++i)
        tasks.push_back(runInto(&results, {u"sleep"_s, u"3"_s, QString::number(i)}, 60s));
    ASSERT_TRUE(spinUntil([&] { return results.size() == 64; }));
    EXPECT_LT(elapsed.elapsed(), 30'000) << "one after another they take 192 seconds";
    QList<int> numbers;
    for (const CommandResult &result : results) {
        EXPECT_EQ(result.status, 0);
        numbers << result.standardOutput.toInt();
    }
    std::ranges::sort(numbers);
    for (int i = 0; i < 64; ++i)
        EXPECT_EQ(numbers.at(i), i);
}

TEST(CommandLoad, A_slow_command_holds_no_other_up)
{
    QList<CommandResult> slow;
    QList<CommandResult> quick;
    const auto waiting = runInto(&slow, {u"sleep"_s, u"2"_s}, 10s);
    const auto other = runInto(&quick, {u"exit"_s, u"3"_s}, 10s);
    ASSERT_TRUE(spinUntil([&] { return quick.size() == 1; }));
    EXPECT_TRUE(slow.isEmpty());
    ASSERT_TRUE(spinUntil([&] { return slow.size() == 1; }));
}

TEST(CommandLoad, A_task_that_nobody_keeps_still_runs_to_its_end)
{
    QList<CommandResult> results;
    runInto(&results, {u"exit"_s, u"3"_s}, 10s);
    ASSERT_TRUE(spinUntil([&] { return results.size() == 1; }));
    EXPECT_EQ(results.first().status, 3);
}

TEST(CommandLoad, Work_posted_from_many_threads_runs_in_order_on_the_main_thread)
{
    constexpr int kThreads = 8;
    constexpr int kEach = 1000;
    std::array<std::vector<int>, kThreads> seen;
    std::vector<std::thread> threads;
    startOnWorker([] {});
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&seen, t] {
            for (int i = 0; i < kEach; ++i)
                postToMainThread([&seen, t, i] { seen[t].push_back(i); });
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    ASSERT_TRUE(spinUntil([&] { return std::ranges::all_of(seen, [](auto &list) { return list.size() == kEach; }); }));
    for (const auto &list : seen)
        EXPECT_TRUE(std::ranges::is_sorted(list));
}

TEST(CommandLoad, Waiting_for_the_workers_ends_when_they_are_idle_or_the_time_is_over)
{
    startOnWorker([] { std::this_thread::sleep_for(500ms); });
    EXPECT_FALSE(waitForWorkers(50ms));
    EXPECT_TRUE(waitForWorkers(10s));
}

} // namespace corvane::test
