#include "exec/command_runner.h"
#include "exec/tools.h"
#include "tests/io/test_child.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace corvane::test {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

TEST(CommandRunner, Both_streams_and_the_status_are_captured)
{
    const CommandResult result = runChild({u"print"_s, hex("to out"), hex("to err")});
    EXPECT_EQ(result.standardOutput, u"to out"_s);
    EXPECT_EQ(result.standardError, u"to err"_s);
    EXPECT_EQ(result.status, 0);
    EXPECT_FALSE(result.timedOut);
    EXPECT_FALSE(result.launchError);
    EXPECT_TRUE(result.succeeded());
}

TEST(CommandRunner, A_silent_child_yields_empty_texts)
{
    const CommandResult result = runChild({u"exit"_s, u"0"_s});
    EXPECT_EQ(result.standardOutput, QString());
    EXPECT_EQ(result.standardError, QString());
    EXPECT_EQ(result.combined(), QString());
}

TEST(CommandRunner, The_exit_status_is_the_childs)
{
    const CommandResult result = runChild({u"exit"_s, u"42"_s});
    EXPECT_EQ(result.status, 42);
    EXPECT_FALSE(result.succeeded());
}

TEST(CommandRunner, A_child_ended_by_a_signal_has_the_signals_number_as_status)
{
    EXPECT_EQ(runChild({u"die"_s, QString::number(SIGUSR1)}).status, SIGUSR1);
    EXPECT_EQ(runChild({u"die"_s, QString::number(SIGKILL)}).status, SIGKILL);
}

TEST(CommandRunner, A_child_that_reads_its_input_gets_end_of_file_at_once)
{
    EXPECT_EQ(runChild({u"read-input"_s}, 10s).standardOutput, u"end of file"_s);
}

TEST(CommandRunner, A_missing_program_is_reported_in_the_systems_words)
{
    const CommandResult result = runProgram(u"/no/such/program"_s, {});
    EXPECT_EQ(result.status, -1);
    EXPECT_EQ(result.standardOutput, QString());
    EXPECT_EQ(result.standardError, QString());
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.launchError, u"No such file or directory"_s);
}

TEST(CommandRunner, A_file_that_is_no_program_is_reported_in_the_systems_words)
{
    EXPECT_EQ(runProgram(u"/etc/passwd"_s, {}).launchError, u"Permission denied"_s);
    EXPECT_EQ(runProgram(u"/usr"_s, {}).launchError, u"Permission denied"_s);
}

TEST(CommandRunner, A_program_is_not_searched_for)
{
    EXPECT_TRUE(runProgram(u"true"_s, {}).launchError);
    EXPECT_TRUE(runProgram(QString(), {}).launchError);
}

TEST(CommandRunner, Arguments_arrive_as_they_are)
{
    const QStringList given{u"a b"_s, u"\"quoted\""_s, u"it's"_s, u"two\nlines"_s,    QString(),   u"$HOME `id`"_s,
                            u"*"_s,   u"\\"_s,         u"-n"_s,   u"zwölf Grüße 🐧"_s, u"\t tab"_s, QString()};
    const CommandResult result = runChild(QStringList{u"args"_s} + given);
    QStringList expected;
    for (const QString &argument : given)
        expected << hex(argument.toUtf8());
    EXPECT_EQ(result.standardOutput.split(u'\n'), expected << QString());
}

TEST(CommandRunner, An_argument_that_no_program_can_be_given_is_refused)
{
    const QString cut = u"before"_s + QChar(QChar::Null) + u"after"_s;
    EXPECT_EQ(runChild({u"args"_s, cut}).launchError, u"Invalid argument"_s);
    EXPECT_EQ(runChild({u"args"_s}, 10s, {{u"NAME"_s, cut}}).launchError, u"Invalid argument"_s);
}

TEST(CommandRunner, More_arguments_than_the_system_takes_are_a_launch_error)
{
    const CommandResult result = runChild({u"args"_s, QString(3'000'000, u'x')});
    EXPECT_EQ(result.launchError, u"Argument list too long"_s);
}

TEST(CommandRunner, The_child_sees_the_tool_path)
{
    EXPECT_EQ(runChild({u"getenv"_s, u"PATH"_s}).standardOutput, Tools::searchDirs().join(u':'));
}

TEST(CommandRunner, An_extra_path_replaces_the_tool_path)
{
    const CommandResult result = runChild({u"getenv"_s, u"PATH"_s}, 10s, {{u"PATH"_s, u"/elsewhere"_s}});
    EXPECT_EQ(result.standardOutput, u"/elsewhere"_s);
}

TEST(CommandRunner, The_child_inherits_the_environment)
{
    qputenv("CORVANE_INHERITED", "grün = green");
    EXPECT_EQ(runChild({u"getenv"_s, u"CORVANE_INHERITED"_s}).standardOutput, u"grün = green"_s);
    qunsetenv("CORVANE_INHERITED");
}

TEST(CommandRunner, A_thousand_extra_variables_arrive)
{
    Environment extra;
    for (int i = 0; i < 1000; ++i)
        extra.insert(u"CORVANE_MANY_%1"_s.arg(i), QString(100, u'v'));
    EXPECT_EQ(runChild({u"env"_s, u"CORVANE_MANY_"_s}, 10s, extra).standardOutput, u"1000"_s);
}

TEST(CommandRunner, A_byte_order_mark_is_kept)
{
    const QByteArrayView marked("\xEF\xBB\xBFtext");
    EXPECT_EQ(runChild({u"print"_s, hex(marked), hex("")}).standardOutput, u"\uFEFFtext"_s);
}

TEST(CommandRunner, Both_streams_can_be_had_in_the_order_in_which_they_were_written)
{
    QString expected;
    for (int i = 0; i < 500; ++i)
        expected += QString::number(i) + u'\n';
    const QStringList args{u"both-streams"_s, u"500"_s};
    auto task = CommandRunner::run(Command(childPath(), args).with(Streams::Together).within(1min));
    const CommandResult result = QCoro::waitFor(task);
    EXPECT_EQ(result.standardOutput, expected);
    EXPECT_EQ(result.standardError, QString());
    EXPECT_EQ(result.status, 0);
}

TEST(CommandRunner, Invalid_utf8_is_repaired)
{
    EXPECT_EQ(runChild({u"print"_s,
                        hex("a\xff"
                            "b\xc3\xa4"),
                        hex("")})
                  .standardOutput,
              u"a\uFFFDbä"_s);
}

TEST(CommandRunner, The_child_has_only_the_three_standard_descriptors)
{
    const int ours = open("/dev/null", O_RDONLY);
    EXPECT_EQ(runChild({u"descriptors"_s}).standardOutput, u"0 1 2 "_s);
    close(ours);
}

TEST(CommandRunner, The_child_starts_with_fresh_signals)
{
    signal(SIGPIPE, SIG_IGN);
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGUSR1);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const CommandResult result = runChild({u"signals"_s});
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    signal(SIGPIPE, SIG_DFL);
    EXPECT_EQ(result.standardOutput, QString());
    EXPECT_EQ(result.status, 0);
}

TEST(CommandRunner, A_process_without_standard_streams_captures_all_the_same)
{
    const int input = dup(STDIN_FILENO);
    const int error = dup(STDERR_FILENO);
    close(STDIN_FILENO);
    close(STDERR_FILENO);
    const CommandResult result = runChild({u"print"_s, hex("out"), hex("err")});
    const CommandResult reader = runChild({u"read-input"_s}, 10s);
    dup2(input, STDIN_FILENO);
    dup2(error, STDERR_FILENO);
    close(input);
    close(error);
    EXPECT_EQ(result.standardOutput, u"out"_s);
    EXPECT_EQ(result.standardError, u"err"_s);
    EXPECT_EQ(reader.standardOutput, u"end of file"_s);
}

TEST(CommandRunner, A_blocking_run_on_the_main_thread_is_refused)
{
    const CommandResult result = CommandRunner::runSync(Command(childPath(), {u"exit"_s, u"0"_s}).within(10s));
    EXPECT_EQ(result.status, -1);
    EXPECT_TRUE(result.launchError);
}

} // namespace corvane::test
