#include "exec/streaming_command.h"
#include "tests/io/test_child.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <gtest/gtest.h>

#include <signal.h>

#include <thread>

namespace corvane::test {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// What one streaming command handed over and how it ended.
struct Stream {
    StreamingCommand command;
    QStringList lines;
    qint64 dropped = 0;
    qsizetype largestBatch = 0;
    QList<qint64> handOverTimes;
    bool ended = false;
    std::optional<int> status;
    QElapsedTimer elapsed;

    void take(const LineBatch &batch)
    {
        handOverTimes << elapsed.elapsed();
        EXPECT_EQ(QThread::currentThread(), qApp->thread());
        EXPECT_FALSE(ended) << "nothing comes after the end";
        EXPECT_FALSE(batch.lines.isEmpty());
        lines += batch.lines;
        dropped += batch.dropped;
        largestBatch = std::max(largestBatch, batch.lines.size());
    }
};

QCoro::Task<> streamInto(Stream *stream, QString exe, QStringList args)
{
    stream->elapsed.start();
    const auto onLines = [stream](const LineBatch &batch) { stream->take(batch); };
    const Command command(exe, args);
    stream->status = co_await stream->command.run(command, onLines);
    stream->ended = true;
}

void streamToEnd(Stream &stream, const QStringList &args)
{
    streamInto(&stream, childPath(), args);
    ASSERT_TRUE(spinUntil([&] { return stream.ended; }));
}

} // namespace

TEST(StreamingCommand, Lines_of_both_streams_arrive_interleaved)
{
    Stream stream;
    streamToEnd(stream, {u"streams"_s, u"3"_s});
    const QStringList expected{u"out 0"_s, u"err 0"_s, u"out 1"_s, u"err 1"_s, u"out 2"_s, u"err 2"_s};
    EXPECT_EQ(stream.lines, expected);
    EXPECT_EQ(stream.status, 0);
}

TEST(StreamingCommand, Lines_arrive_while_the_child_still_runs)
{
    Stream stream;
    streamInto(&stream, childPath(), {u"chunks"_s, u"1"_s, hex("first\n"), hex("second\n")});
    ASSERT_TRUE(spinUntil([&] { return !stream.lines.isEmpty(); }));
    EXPECT_FALSE(stream.ended);
    EXPECT_EQ(stream.lines, QStringList{u"first"_s});
    ASSERT_TRUE(spinUntil([&] { return stream.ended; }));
    EXPECT_EQ(stream.lines.last(), u"second"_s);
}

TEST(StreamingCommand, A_last_line_without_an_end_arrives_when_the_child_has_ended)
{
    Stream stream;
    streamToEnd(stream, {u"print"_s, hex("one\ntwo"), hex("three")});
    stream.lines.sort();
    EXPECT_EQ(stream.lines, (QStringList{u"one"_s, u"three"_s, u"two"_s}));
}

TEST(StreamingCommand, A_character_split_between_two_writes_survives)
{
    Stream stream;
    streamToEnd(stream, {u"chunks"_s, u"0.05"_s, hex("gr\xc3"), hex("\xbcn\r"), hex("\nb\xf0\x9f"), hex("\x90\xa7\n")});
    EXPECT_EQ(stream.lines, (QStringList{u"grün"_s, u"b🐧"_s}));
}

TEST(StreamingCommand, The_status_is_the_childs_or_its_signals)
{
    Stream exited;
    streamToEnd(exited, {u"exit"_s, u"9"_s});
    EXPECT_EQ(exited.status, 9);
    EXPECT_TRUE(exited.lines.isEmpty());
    Stream killed;
    streamToEnd(killed, {u"die"_s, QString::number(SIGUSR2)});
    EXPECT_EQ(killed.status, SIGUSR2);
}

TEST(StreamingCommand, A_program_that_cannot_be_started_gives_one_line_and_no_status)
{
    Stream stream;
    streamInto(&stream, u"/no/such/brew"_s, {});
    ASSERT_TRUE(spinUntil([&] { return stream.ended; }));
    EXPECT_EQ(stream.lines, QStringList{u"Could not start brew: No such file or directory"_s});
    EXPECT_EQ(stream.status, std::nullopt);
}

TEST(StreamingCommand, The_child_gets_no_input)
{
    Stream stream;
    streamToEnd(stream, {u"read-input"_s});
    EXPECT_EQ(stream.lines, QStringList{u"end of file"_s});
}

TEST(StreamingCommand, Cancel_tells_the_running_child_to_end)
{
    Stream stream;
    streamInto(&stream, childPath(), {u"sleep"_s, u"30"_s, u"ready\n"_s});
    ASSERT_TRUE(spinUntil([&] { return !stream.lines.isEmpty(); }));
    stream.command.cancel();
    ASSERT_TRUE(spinUntil([&] { return stream.ended; }, 10));
    EXPECT_EQ(stream.status, SIGTERM);
}

TEST(StreamingCommand, Cancel_before_the_start_ends_the_child_as_soon_as_it_runs)
{
    Stream stream;
    stream.command.cancel();
    streamInto(&stream, childPath(), {u"sleep"_s, u"30"_s});
    ASSERT_TRUE(spinUntil([&] { return stream.ended; }, 10));
    EXPECT_EQ(stream.status, SIGTERM);
}

TEST(StreamingCommand, Cancel_at_the_moment_of_the_start_is_never_lost)
{
    for (int i = 0; i < 50; ++i) {
        Stream stream;
        streamInto(&stream, childPath(), {u"sleep"_s, u"30"_s});
        std::this_thread::sleep_for(std::chrono::microseconds(100 * i));
        stream.command.cancel();
        ASSERT_TRUE(spinUntil([&] { return stream.ended; }, 10));
        ASSERT_EQ(stream.status, SIGTERM);
    }
}

TEST(StreamingCommand, Cancel_after_the_end_does_nothing)
{
    Stream stream;
    streamToEnd(stream, {u"exit"_s, u"0"_s});
    stream.command.cancel();
    EXPECT_EQ(stream.status, 0);
}

TEST(StreamingCommand, A_child_that_ignores_the_request_is_waited_for)
{
    Stream stream;
    streamInto(&stream, childPath(), {u"ignore-term"_s, u"1.5"_s});
    ASSERT_TRUE(spinUntil([&] { return !stream.lines.isEmpty(); }));
    stream.command.cancel();
    ASSERT_TRUE(spinUntil([&] { return stream.ended; }, 10));
    EXPECT_EQ(stream.status, 0);
}

TEST(StreamingCommand, A_grandchild_that_keeps_the_pipe_does_not_hold_the_end_up)
{
    Stream stream;
    streamToEnd(stream, {u"grandchild"_s, u"30"_s});
    EXPECT_LT(stream.elapsed.elapsed(), 20'000);
    EXPECT_EQ(stream.lines, QStringList{u"parent"_s});
}

TEST(StreamingCommand, Few_lines_all_arrive_in_order)
{
    Stream stream;
    streamToEnd(stream, {u"lines"_s, u"3000"_s});
    ASSERT_EQ(stream.lines.size(), 3000);
    EXPECT_EQ(stream.dropped, 0);
    for (int i = 0; i < 3000; ++i)
        ASSERT_EQ(stream.lines.at(i), QString::number(i));
}

TEST(StreamingCommand, What_a_busy_main_thread_misses_is_counted_and_the_newest_lines_are_kept)
{
    Stream stream;
    streamInto(&stream, childPath(), {u"lines"_s, u"200000"_s});
    std::this_thread::sleep_for(3s); // The main thread is busy while all of it arrives.
    ASSERT_TRUE(spinUntil([&] { return stream.ended; }));
    EXPECT_EQ(stream.dropped + stream.lines.size(), 200'000);
    EXPECT_GT(stream.dropped, 0);
    EXPECT_EQ(stream.largestBatch, LineBatch::kMostLines);
    for (int i = 0; i < LineBatch::kMostLines; ++i) {
        ASSERT_EQ(stream.lines.at(stream.lines.size() - 1 - i), QString::number(199'999 - i));
    }
}

TEST(StreamingCommand, Hand_overs_keep_their_distance_while_the_child_runs)
{
    Stream stream;
    streamToEnd(stream, {u"lines"_s, u"300000"_s});
    EXPECT_EQ(StreamingCommand::kHandOverInterval, 16ms);
    ASSERT_GE(stream.handOverTimes.size(), 2);
    for (qsizetype i = 1; i + 1 < stream.handOverTimes.size(); ++i) {
        EXPECT_GE(stream.handOverTimes.at(i) - stream.handOverTimes.at(i - 1), 15);
    }
}

TEST(StreamingCommand, A_line_of_50_MiB_arrives_whole)
{
    Stream stream;
    streamToEnd(stream, {u"line"_s, u"50"_s});
    ASSERT_EQ(stream.lines.size(), 1);
    EXPECT_EQ(stream.lines.first().size(), 50 * 1024 * 1024);
    EXPECT_EQ(stream.lines.first().count(u'l'), 50 * 1024 * 1024);
}

TEST(StreamingCommand, An_object_that_dies_while_its_child_runs_still_answers)
{
    auto command = std::make_unique<StreamingCommand>();
    QStringList lines;
    const auto onLines = [&lines](const LineBatch &batch) { lines += batch.lines; };
    const auto task = command->run(Command(childPath(), {u"chunks"_s, u"0.2"_s, hex("a\n"), hex("b\n")}), onLines);
    command.reset();
    ASSERT_TRUE(spinUntil([&] { return task.isReady(); }));
    EXPECT_EQ(lines, (QStringList{u"a"_s, u"b"_s}));
}

} // namespace corvane::test
