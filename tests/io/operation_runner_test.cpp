#include "exec/operation_runner.h"
#include "tests/io/test_child.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <signal.h>

#include <memory>

namespace corvane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

CommandStep step(const QString &label, const QStringList &args, bool allowFailure = false)
{
    return {label, childPath(), args, {}, allowFailure};
}

CommandStep printing(const QString &label, QByteArrayView text)
{
    return step(label, {u"print"_s, hex(text), hex("")});
}

/// An operation, and how often and how its end was reported.
struct Operation {
    OperationRunner runner{[this](const QString &log) {
        wordedLog = log;
        return u"In plain words."_s;
    }};
    QString wordedLog;
    QList<bool> finishes;

    void start(const CommandSteps &steps, const QString &title = u"Title"_s)
    {
        runner.start(title, steps, [this](bool succeeded) { finishes << succeeded; });
    }
    void runToEnd(const CommandSteps &steps)
    {
        start(steps);
        ASSERT_TRUE(spinUntil([this] { return !runner.running(); }));
    }
};

} // namespace

TEST(OperationRunner, Steps_run_one_after_another_into_the_log)
{
    Operation operation;
    operation.start({printing(u"First"_s, "one\ntwo\n"), printing(u"Second"_s, "three")}, u"Setting up"_s);
    EXPECT_TRUE(operation.runner.running());
    EXPECT_EQ(operation.runner.title(), u"Setting up"_s);
    EXPECT_FALSE(operation.runner.ended());
    ASSERT_TRUE(spinUntil([&] { return !operation.runner.running(); }));
    EXPECT_EQ(operation.runner.lines(), (QStringList{u"> First"_s, u"one"_s, u"two"_s, u"> Second"_s, u"three"_s}));
    EXPECT_TRUE(operation.runner.succeeded());
    EXPECT_TRUE(operation.runner.ended());
    EXPECT_EQ(operation.runner.failureSummary(), std::nullopt);
    EXPECT_EQ(operation.finishes, QList<bool>{true});
    EXPECT_EQ(operation.runner.lineCount(), 5);
}

TEST(OperationRunner, A_failing_step_stops_the_operation_and_is_put_into_words)
{
    Operation operation;
    operation.runToEnd({step(u"Fails"_s, {u"exit"_s, u"3"_s}), printing(u"Never"_s, "never")});
    const QStringList log{u"> Fails"_s, u"Command ended with status 3."_s};
    EXPECT_EQ(operation.runner.lines(), log);
    EXPECT_EQ(operation.wordedLog, log.join(u'\n'));
    EXPECT_EQ(operation.runner.failureSummary(), u"In plain words."_s);
    EXPECT_EQ(operation.runner.failureText(), u"In plain words."_s);
    EXPECT_FALSE(operation.runner.succeeded());
    EXPECT_EQ(operation.finishes, QList<bool>{false});
}

TEST(OperationRunner, A_failing_step_that_may_fail_lets_the_next_one_run)
{
    Operation operation;
    operation.runToEnd({step(u"May fail"_s, {u"exit"_s, u"3"_s}, true), printing(u"Next"_s, "ran")});
    EXPECT_EQ(operation.runner.lines(), (QStringList{u"> May fail"_s, u"> Next"_s, u"ran"_s}));
    EXPECT_TRUE(operation.runner.succeeded());
}

TEST(OperationRunner, A_program_that_cannot_be_started_is_a_failed_step)
{
    Operation operation;
    operation.runToEnd({{u"Install"_s, u"/no/such/brew"_s, {}}});
    EXPECT_EQ(operation.runner.lines(),
              (QStringList{u"> Install"_s, u"Could not start brew: No such file or directory"_s,
                           u"Command ended with status -1."_s}));
    EXPECT_FALSE(operation.runner.succeeded());
}

TEST(OperationRunner, A_program_that_cannot_be_started_may_be_allowed_to_fail)
{
    Operation operation;
    operation.runToEnd({{u"Optional"_s, u"/no/such/brew"_s, {}, {}, true}});
    EXPECT_TRUE(operation.runner.succeeded());
}

TEST(OperationRunner, A_steps_environment_reaches_its_program)
{
    Operation operation;
    operation.runToEnd({{u"Ask"_s, childPath(), {u"getenv"_s, u"HINTS"_s}, {{u"HINTS"_s, u"1"_s}}}});
    EXPECT_EQ(operation.runner.lines().last(), u"1"_s);
}

TEST(OperationRunner, Has_not_ended_for_a_moment_when_it_first_begins)
{
    Operation operation;
    QList<bool> ended;
    QObject::connect(&operation.runner, &OperationRunner::endedChanged, [&] { ended << operation.runner.ended(); });
    bool endedWhenNamed = false;
    QObject::connect(&operation.runner, &OperationRunner::titleChanged,
                     [&] { endedWhenNamed = operation.runner.ended(); });
    operation.runToEnd({printing(u"Step"_s, "text")});
    EXPECT_EQ(ended, QList<bool>{true});
    EXPECT_FALSE(endedWhenNamed);
    operation.runToEnd({printing(u"Step"_s, "text")});
    EXPECT_EQ(ended, (QList<bool>{true, false, true}));
}

TEST(OperationRunner, The_cause_is_looked_for_in_the_lines_of_the_step_that_failed_only)
{
    FailedStep read;
    OperationRunner runner([](const QString &) { return u"In general."_s; },
                           [&](const FailedStep &failed) {
                               read = failed;
                               return FailureReading{u"The cause."_s, failed.lines.first(), {}};
                           });
    const CommandStep failing = step(u"Fails"_s, {u"close-streams"_s, u"0"_s, u"5"_s});
    runner.start(u"Title"_s,
                 {printing(u"First"_s, "one\ntwo"), step(u"May fail"_s, {u"exit"_s, u"3"_s}, true), failing});
    ASSERT_TRUE(spinUntil([&] { return !runner.running(); }));
    EXPECT_EQ(read.step, failing);
    EXPECT_EQ(read.lines, QStringList{u"before"_s});
    EXPECT_EQ(runner.failureSummary(), u"In general."_s);
    EXPECT_EQ(runner.failureSentence(), u"The cause."_s);
    EXPECT_EQ(runner.failureLine(), u"before"_s);

    runner.start(u"Title"_s, {printing(u"First"_s, "one")});
    ASSERT_TRUE(spinUntil([&] { return !runner.running(); }));
    EXPECT_EQ(runner.failure(), FailureReading()) << "a new start forgets it";
}

TEST(OperationRunner, Without_a_known_cause_the_summary_is_what_the_user_is_told)
{
    Operation operation;
    operation.runToEnd({step(u"Fails"_s, {u"exit"_s, u"3"_s})});
    EXPECT_EQ(operation.runner.failureSentence(), u"In plain words."_s);
    EXPECT_EQ(operation.runner.failureLine(), QString());
}

TEST(OperationRunner, A_cancelled_step_is_not_searched_for_a_cause)
{
    bool asked = false;
    OperationRunner runner([](const QString &) { return QString(); },
                           [&](const FailedStep &) {
                               asked = true;
                               return FailureReading();
                           });
    runner.start(u"Title"_s, {step(u"Slow"_s, {u"sleep"_s, u"30"_s})});
    runner.cancel();
    ASSERT_TRUE(spinUntil([&] { return !runner.running(); }, 10));
    EXPECT_FALSE(asked);
    EXPECT_EQ(runner.failureSentence(), u"Cancelled."_s);
}

TEST(OperationRunner, A_long_step_that_fails_is_read_as_far_as_the_log_holds_it)
{
    FailedStep read;
    OperationRunner runner([](const QString &) { return QString(); },
                           [&](const FailedStep &failed) {
                               read = failed;
                               return FailureReading();
                           });
    CommandStep endless = step(u"Long"_s, {u"lines"_s, u"50000"_s});
    endless.exe = u"/bin/sh"_s;
    endless.args = {u"-c"_s, u"seq 50000; exit 1"_s};
    runner.start(u"Title"_s, {endless});
    ASSERT_TRUE(spinUntil([&] { return !runner.running(); }));
    EXPECT_EQ(read.lines.size(), OperationRunner::kMaxLines);
    EXPECT_EQ(read.lines.last(), u"50000"_s);
}

TEST(OperationRunner, A_step_may_have_both_streams_in_the_order_in_which_they_were_written)
{
    QStringList expected{u"> Both"_s};
    for (int i = 0; i < 500; ++i)
        expected << QString::number(i);
    CommandStep both = step(u"Both"_s, {u"both-streams"_s, u"500"_s});
    both.streams = Streams::Together;
    Operation operation;
    operation.runToEnd({both});
    EXPECT_EQ(operation.runner.lines(), expected);
}

TEST(OperationRunner, Starting_while_running_is_ignored)
{
    Operation operation;
    operation.start({step(u"Slow"_s, {u"sleep"_s, u"0.5"_s})}, u"The first"_s);
    operation.start({printing(u"Other"_s, "other")}, u"The second"_s);
    EXPECT_EQ(operation.runner.title(), u"The first"_s);
    ASSERT_TRUE(spinUntil([&] { return !operation.runner.running(); }));
    EXPECT_EQ(operation.runner.lines(), QStringList{u"> Slow"_s});
    EXPECT_EQ(operation.finishes, QList<bool>{true});
}

TEST(OperationRunner, Cancelling_ends_the_running_child)
{
    Operation operation;
    operation.start({step(u"Slow"_s, {u"sleep"_s, u"30"_s, u"ready\n"_s}), printing(u"Never"_s, "never")});
    ASSERT_TRUE(spinUntil([&] { return operation.runner.lines().contains(u"ready"_s); }));
    operation.runner.cancel();
    ASSERT_TRUE(spinUntil([&] { return !operation.runner.running(); }, 10));
    EXPECT_EQ(operation.runner.lines(), (QStringList{u"> Slow"_s, u"ready"_s}));
    EXPECT_EQ(operation.runner.failureSummary(), u"Cancelled."_s);
    EXPECT_FALSE(operation.runner.succeeded());
    EXPECT_EQ(operation.finishes, QList<bool>{false});
}

TEST(OperationRunner, Cancelling_between_two_steps_stops_before_the_next_one_runs)
{
    Operation operation;
    QTemporaryDir folder;
    const CommandStep touch{u"Touch"_s, u"/usr/bin/touch"_s, {folder.filePath(u"mark"_s)}};
    QObject::connect(&operation.runner, &OperationRunner::linesChanged, [&] {
        if (operation.runner.lines().last() == u"last words"_s) operation.runner.cancel();
    });
    operation.runToEnd({printing(u"First"_s, "last words"), touch});
    EXPECT_EQ(operation.runner.lines(), (QStringList{u"> First"_s, u"last words"_s}));
    EXPECT_EQ(operation.runner.failureSummary(), u"Cancelled."_s);
    EXPECT_FALSE(QFile::exists(folder.filePath(u"mark"_s)));
}

TEST(OperationRunner, Cancelling_a_step_that_then_ends_well_is_a_cancellation_all_the_same)
{
    Operation operation;
    operation.start({step(u"Tidy"_s, {u"tidy-term"_s, u"0"_s})});
    ASSERT_TRUE(spinUntil([&] { return operation.runner.lines().contains(u"ready"_s); }));
    operation.runner.cancel();
    ASSERT_TRUE(spinUntil([&] { return !operation.runner.running(); }, 10));
    EXPECT_EQ(operation.runner.failureSummary(), u"Cancelled."_s);
}

TEST(OperationRunner, A_new_start_forgets_the_last_failure_and_cancellation)
{
    Operation operation;
    operation.start({step(u"Slow"_s, {u"sleep"_s, u"30"_s})});
    operation.runner.cancel();
    ASSERT_TRUE(spinUntil([&] { return !operation.runner.running(); }, 10));
    operation.runToEnd({printing(u"Again"_s, "fine")});
    EXPECT_TRUE(operation.runner.succeeded());
    EXPECT_EQ(operation.runner.failureSummary(), std::nullopt);
    EXPECT_EQ(operation.runner.lines(), (QStringList{u"> Again"_s, u"fine"_s}));
    EXPECT_EQ(operation.runner.lineCount(), 2);
}

TEST(OperationRunner, Has_not_succeeded_before_its_end_however_the_last_one_ended)
{
    Operation operation;
    for (int i = 0; i < 2; ++i) {
        operation.start({printing(u"Good"_s, "good")});
        EXPECT_FALSE(operation.runner.succeeded());
        ASSERT_TRUE(spinUntil([&] { return !operation.runner.running(); }));
        EXPECT_TRUE(operation.runner.succeeded());
    }
}

TEST(OperationRunner, The_end_may_start_the_next_operation)
{
    Operation operation;
    const CommandSteps next{printing(u"Next"_s, "next")};
    operation.runner.start(u"One"_s, {printing(u"First"_s, "first")}, [&](bool) { operation.start(next, u"Two"_s); });
    ASSERT_TRUE(spinUntil([&] { return operation.finishes.size() == 1; }));
    EXPECT_EQ(operation.runner.title(), u"Two"_s);
    EXPECT_EQ(operation.runner.lines(), (QStringList{u"> Next"_s, u"next"_s}));
}

TEST(OperationRunner, A_long_operation_keeps_the_newest_3000_lines_and_counts_all)
{
    Operation operation;
    operation.runToEnd({step(u"Long"_s, {u"lines"_s, u"50000"_s})});
    EXPECT_EQ(operation.runner.lines().size(), OperationRunner::kMaxLines);
    EXPECT_EQ(operation.runner.lines().first(), u"47000"_s);
    EXPECT_EQ(operation.runner.lines().last(), u"49999"_s);
    EXPECT_EQ(operation.runner.lineCount(), 50'001);
}

TEST(OperationRunner, A_runner_that_dies_ends_its_child_and_calls_nobody)
{
    bool called = false;
    auto runner = std::make_unique<OperationRunner>([](const QString &) { return QString(); });
    pid_t child = 0;
    QObject::connect(runner.get(), &OperationRunner::linesChanged,
                     [&] { child = runner->lines().last().section(u' ', 1).toInt(); });
    runner->start(u"Title"_s, {step(u"Slow"_s, {u"sleep-told"_s, u"60"_s}), printing(u"Next"_s, "next")},
                  [&](bool) { called = true; });
    ASSERT_TRUE(spinUntil([&] { return child > 0; }));
    runner.reset();
    EXPECT_TRUE(spinUntil([&] { return kill(child, 0) != 0; }, 20));
    EXPECT_FALSE(spinUntil([&] { return called; }, 0.5));
}

} // namespace corvane::test
