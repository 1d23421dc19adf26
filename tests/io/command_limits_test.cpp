// What happens when a child does not end, or does not let go.

#include "exec/background.h"
#include "exec/command_runner.h"
#include "tests/io/test_child.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <future>
#include <thread>

namespace corvane::test {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Whether the process is gone, zombies included.
bool isGone(pid_t pid) { return kill(pid, 0) != 0 && errno == ESRCH; }

int openDescriptors()
{
    int count = 0;
    for (int i = 0; i < 1024; ++i)
        count += fcntl(i, F_GETFD) >= 0 ? 1 : 0;
    return count;
}

} // namespace

TEST(CommandLimits, A_child_that_sleeps_past_the_limit_is_told_to_end)
{
    QElapsedTimer elapsed;
    elapsed.start();
    const CommandResult result = runChild({u"sleep"_s, u"30"_s, u"so far"_s}, 500ms);
    EXPECT_TRUE(result.timedOut);
    EXPECT_EQ(result.status, SIGTERM);
    EXPECT_EQ(result.standardOutput, u"so far"_s);
    EXPECT_FALSE(result.launchError);
    EXPECT_FALSE(result.succeeded());
    EXPECT_LT(elapsed.elapsed(), 20'000);
}

TEST(CommandLimits, A_child_that_ends_in_its_grace_keeps_its_own_status)
{
    const CommandResult result = runChild({u"tidy-term"_s, u"7"_s}, 500ms);
    EXPECT_TRUE(result.timedOut);
    EXPECT_EQ(result.status, 7);
}

TEST(CommandLimits, What_a_child_prints_in_its_grace_is_kept_however_much_it_is)
{
    const CommandResult result = runChild({u"last-words"_s, u"300000"_s, u"7"_s}, 500ms);
    EXPECT_TRUE(result.timedOut);
    EXPECT_EQ(result.status, 7) << "it never waits for a reader";
    EXPECT_EQ(result.standardOutput.size(), 300'000);
    EXPECT_EQ(result.standardError.size(), 300'000);
}

TEST(CommandLimits, The_grace_is_two_seconds) { EXPECT_EQ(CommandRunner::kGrace, 2s); }

TEST(CommandLimits, A_child_that_ignores_the_request_is_left_running_after_its_grace)
{
    QElapsedTimer elapsed;
    elapsed.start();
    const CommandResult result = runChild({u"ignore-term"_s, u"15"_s}, 500ms);
    EXPECT_TRUE(result.timedOut);
    EXPECT_EQ(result.status, -1) << "whoever waits for more than two seconds sees it end by itself";
    EXPECT_GE(elapsed.elapsed(), 2500);
    const pid_t survivor = result.standardOutput.section(u' ', 1).trimmed().toInt();
    ASSERT_GT(survivor, 0);
    EXPECT_FALSE(isGone(survivor)) << "it must never be killed";

    kill(survivor, SIGKILL);
    std::this_thread::sleep_for(1s);
    EXPECT_FALSE(isGone(survivor)) << "a zombie by now, until the next run";
    (void)runChild({u"exit"_s, u"0"_s});
    EXPECT_TRUE(isGone(survivor));
}

TEST(CommandLimits, A_limit_of_zero_or_less_ends_the_child_at_once)
{
    for (const std::chrono::milliseconds limit : {0ms, -5000ms, std::chrono::milliseconds::min()}) {
        const CommandResult result = runChild({u"sleep"_s, u"30"_s}, limit);
        EXPECT_TRUE(result.timedOut);
        EXPECT_EQ(result.status, SIGTERM);
    }
}

TEST(CommandLimits, An_endless_limit_waits_for_the_end)
{
    const CommandResult result = runChild({u"sleep"_s, u"0.2"_s, u"text"_s}, std::chrono::milliseconds::max());
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.standardOutput, u"text"_s);
}

TEST(CommandLimits, A_flood_does_not_hide_the_limit)
{
    const CommandResult result = runChild({u"flood"_s, u"100000"_s}, 500ms);
    EXPECT_TRUE(result.timedOut);
    EXPECT_EQ(result.status, SIGTERM);
    EXPECT_GT(result.standardOutput.size(), 64 * 1024) << "what a pipe holds";
}

TEST(CommandLimits, A_child_that_closes_its_streams_early_is_still_waited_for)
{
    const CommandResult result = runChild({u"close-streams"_s, u"0.5"_s, u"5"_s});
    EXPECT_EQ(result.status, 5);
    EXPECT_EQ(result.standardOutput, u"before"_s);
}

TEST(CommandLimits, A_child_that_closed_its_streams_costs_no_processor_time)
{
    const auto start = clock();
    (void)runChild({u"close-streams"_s, u"1"_s, u"0"_s});
    EXPECT_LT(clock() - start, CLOCKS_PER_SEC / 3);
}

TEST(CommandLimits, A_grandchild_that_keeps_the_pipe_does_not_hold_the_result_up)
{
    QElapsedTimer elapsed;
    elapsed.start();
    const CommandResult result = runChild({u"grandchild"_s, u"30"_s});
    EXPECT_LT(elapsed.elapsed(), 20'000);
    EXPECT_EQ(result.status, 0);
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.standardOutput, u"parent\n"_s);
}

TEST(CommandLimits, A_grandchild_that_keeps_writing_does_not_hold_the_result_up)
{
    QElapsedTimer elapsed;
    elapsed.start();
    const CommandResult result = runChild({u"noisy-grandchild"_s});
    EXPECT_LT(elapsed.elapsed(), 20'000);
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.standardOutput.startsWith(u"gggg"_s));
}

TEST(CommandLimits, No_run_leaves_a_descriptor_open)
{
    (void)runChild({u"exit"_s, u"0"_s});
    const int before = openDescriptors();
    (void)runChild({u"exit"_s, u"0"_s});
    (void)runChild({u"sleep"_s, u"5"_s}, 100ms);
    (void)runChild({u"grandchild"_s, u"1"_s});
    (void)runProgram(u"/no/such/program"_s, {});
    EXPECT_EQ(openDescriptors(), before);
}

TEST(CommandLimits, Without_free_descriptors_a_run_says_so)
{
    std::vector<int> taken;
    for (int next = dup(STDIN_FILENO); next >= 0; next = dup(STDIN_FILENO))
        taken.push_back(next);
    std::vector<std::optional<QString>> reasons;
    for (int spare = 0; spare < 4; ++spare) {
        reasons.push_back(runChild({u"sleep"_s, u"5"_s}).launchError);
        close(taken.back());
        taken.pop_back();
    }
    for (const int descriptor : taken)
        close(descriptor);
    for (const auto &reason : reasons)
        EXPECT_EQ(reason, u"Too many open files"_s);
}

TEST(CommandLimits, Terminate_all_ends_every_child_that_is_waited_for)
{
    std::vector<std::future<CommandResult>> running;
    for (int i = 0; i < 4; ++i) {
        running.push_back(std::async(std::launch::async, [] { return runChild({u"sleep"_s, u"30"_s}); }));
    }
    const auto allEnded = [&] {
        CommandRunner::terminateAll();
        return std::ranges::all_of(running,
                                   [](auto &result) { return result.wait_for(0s) == std::future_status::ready; });
    };
    EXPECT_TRUE(spinUntil(allEnded, 20));
    for (auto &result : running)
        EXPECT_EQ(result.get().status, SIGTERM);
}

TEST(CommandLimits, Terminate_all_keeps_a_command_from_starting_that_still_waits_for_a_worker)
{
    std::promise<void> release;
    const std::shared_future<void> released = release.get_future().share();
    for (int i = 0; i < 256; ++i)
        startOnWorker([released] { released.wait(); });

    QTemporaryDir folder;
    const QString mark = folder.filePath(u"mark"_s);
    auto waiting = CommandRunner::run(Command(u"/usr/bin/touch"_s, {mark}).within(1min));
    CommandRunner::terminateAll();
    release.set_value();
    EXPECT_EQ(QCoro::waitFor(waiting).launchError, u"Corvane is about to quit."_s);
    EXPECT_FALSE(QFile::exists(mark));
}

TEST(CommandLimits, Terminate_all_with_nothing_running_does_nothing)
{
    CommandRunner::terminateAll();
    EXPECT_EQ(runChild({u"exit"_s, u"0"_s}).status, 0);
}

} // namespace corvane::test
