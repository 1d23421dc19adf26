#include "app/day_record.h"

#include <gtest/gtest.h>

#include <random>

using namespace corvane;

namespace {

constexpr qint64 kNoon = 1'795'262'400;

/// A record of looks every 15 seconds.
void look(DayRecord &record, qint64 from, qint64 until, Protection state)
{
    for (qint64 time = from; time <= until; time += 15)
        record.note(time, state);
}

DayRecord afterRestart(const DayRecord &record) { return *DayRecord::fromBytes(record.toBytes()); }

} // namespace

TEST(DayRecord, A_time_without_change_is_one_span)
{
    DayRecord record;
    look(record, kNoon, kNoon + 3600, Protection::Protected);
    EXPECT_EQ(record.spans(), (QList<DaySpan>{{kNoon, kNoon + 3600, Protection::Protected}}));
}

TEST(DayRecord, Two_minutes_on_the_backup_are_two_minutes)
{
    DayRecord record;
    look(record, kNoon, kNoon + 600, Protection::Protected);
    look(record, kNoon + 600, kNoon + 720, Protection::Backup);
    look(record, kNoon + 720, kNoon + 1200, Protection::Protected);
    EXPECT_EQ(record.spans(), (QList<DaySpan>{{kNoon, kNoon + 600, Protection::Protected},
                                              {kNoon + 600, kNoon + 720, Protection::Backup},
                                              {kNoon + 720, kNoon + 1200, Protection::Protected}}));
}

TEST(DayRecord, A_long_silence_is_a_mac_that_slept)
{
    DayRecord record;
    look(record, kNoon, kNoon + 60, Protection::Protected);
    record.note(kNoon + 60 + 7200, Protection::Protected);
    record.note(kNoon + 60 + 7215, Protection::Protected);
    EXPECT_EQ(record.spans(), (QList<DaySpan>{{kNoon, kNoon + 60, Protection::Protected},
                                              {kNoon + 60, kNoon + 7260, Protection::Asleep},
                                              {kNoon + 7260, kNoon + 7275, Protection::Protected}}));
}

TEST(DayRecord, A_slow_look_is_no_sleep)
{
    DayRecord record;
    record.note(kNoon, Protection::Protected);
    record.note(kNoon + DayRecord::kLongestSilence, Protection::Protected);
    EXPECT_EQ(record.spans().size(), 1);
}

TEST(DayRecord, The_time_without_corvane_is_not_known)
{
    DayRecord record;
    look(record, kNoon, kNoon + 60, Protection::Protected);
    record = afterRestart(record);
    look(record, kNoon + 90, kNoon + 120, Protection::Protected);
    EXPECT_EQ(record.spans(), (QList<DaySpan>{{kNoon, kNoon + 60, Protection::Protected},
                                              {kNoon + 90, kNoon + 120, Protection::Protected}}));
}

TEST(DayRecord, Is_written_and_read_in_the_form_that_earlier_versions_wrote)
{
    const QByteArray written = "corvane day 1\nspan 1795262400 1795262460 0\nown 1795262400 3 1\nend\n";
    const std::optional<DayRecord> record = DayRecord::fromBytes(written);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->spans().size(), 1);
    EXPECT_EQ(record->toBytes(), written);
}

TEST(DayRecord, What_was_noted_before_the_file_was_read_comes_after_it)
{
    DayRecord before;
    look(before, kNoon, kNoon + 60, Protection::Protected);
    before.countOwn(kNoon, false);
    DayRecord now;
    look(now, kNoon + 90, kNoon + 120, Protection::NotUsed);
    now.countOwn(kNoon + 90, true);
    DayRecord whole = afterRestart(before).continuedBy(now);
    EXPECT_EQ(whole.spans().size(), 2);
    EXPECT_EQ(whole.ownIn(kNoon), (OwnQuestions{2, 1}));
    whole.note(kNoon + 135, Protection::NotUsed);
    EXPECT_EQ(whole.spans().last(), (DaySpan{kNoon + 90, kNoon + 135, Protection::NotUsed}));
    DayRecord silent = afterRestart(before).continuedBy({});
    silent.note(kNoon + 7200, Protection::Protected);
    EXPECT_EQ(silent.spans().size(), 2) << "no sleep: Corvane did not run";
}

TEST(DayRecord, A_clock_that_is_set_back_takes_back_what_was_to_come)
{
    DayRecord record;
    look(record, kNoon, kNoon + 600, Protection::Protected);
    look(record, kNoon + 600, kNoon + 900, Protection::Backup);
    record.note(kNoon + 300, Protection::Protected);
    EXPECT_EQ(record.spans(), (QList<DaySpan>{{kNoon, kNoon + 300, Protection::Protected}}));
}

TEST(DayRecord, Eight_days_are_kept)
{
    DayRecord record;
    for (qint64 hour = 0; hour < 24 * 20; ++hour) {
        record.note(kNoon + hour * 3600, hour % 2 ? Protection::Protected : Protection::Backup);
        record.countOwn(kNoon + hour * 3600, false);
    }
    const qint64 last = record.spans().last().end;
    EXPECT_GE(record.spans().first().end, last - DayRecord::kKept);
    EXPECT_LE(record.spans().first().start, last - DayRecord::kKept + 3600);
    EXPECT_EQ(record.ownIn(kNoon), OwnQuestions());
    EXPECT_EQ(record.ownIn(last / DayRecord::kSlot * DayRecord::kSlot), (OwnQuestions{1, 0}));
}

TEST(DayRecord, A_dot_that_changes_with_each_look_does_not_fill_the_disk)
{
    DayRecord record;
    for (int i = 0; i < 20'000; ++i)
        record.note(kNoon + i * 15, i % 2 ? Protection::Protected : Protection::Backup);
    EXPECT_LE(record.spans().size(), DayRecord::kMostSpans);
    EXPECT_LT(record.toBytes().size(), 200'000);
    EXPECT_TRUE(DayRecord::fromBytes(record.toBytes()));
}

TEST(DayRecord, Is_written_and_read_without_loss)
{
    DayRecord record;
    look(record, kNoon, kNoon + 60, Protection::NotUsed);
    record.note(kNoon + 9000, Protection::Protected);
    record.countOwn(kNoon + 5, false);
    record.countOwn(kNoon + 6, true);
    const DayRecord read = afterRestart(record);
    EXPECT_EQ(read.spans(), record.spans());
    EXPECT_EQ(read.ownIn(kNoon), (OwnQuestions{2, 1}));
    EXPECT_EQ(read.toBytes(), record.toBytes());
}

TEST(DayRecord, A_damaged_file_is_none)
{
    DayRecord record;
    look(record, kNoon, kNoon + 60, Protection::Protected);
    record.countOwn(kNoon, false);
    const QByteArray whole = record.toBytes();
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(DayRecord::fromBytes(whole.left(length))) << length;
    for (const char *line :
         {"span 5 4 1", "span 1 2", "span 1 2 3 4", "span -1 2 1", "span 1 2 7", "span x 2 1", "span  1 2",
          "span 1 9999999999999999 1", "own 600 1 2", "own 600 -1 0", "own 1", "evil", ""})
        EXPECT_FALSE(DayRecord::fromBytes("corvane day 1\n" + QByteArray(line) + "\nend\n")) << line;
    EXPECT_FALSE(DayRecord::fromBytes("corvane day 1\nspan 5 9 1\nspan 6 10 1\nend\n")) << "two at one time";
    EXPECT_FALSE(DayRecord::fromBytes(QByteArray(100'000, '\n')));
}

TEST(DayRecord, Any_byte_of_it_may_be_another)
{
    DayRecord record;
    look(record, kNoon, kNoon + 60, Protection::Protected);
    record.note(kNoon + 9000, Protection::Backup);
    record.countOwn(kNoon, true);
    const QByteArray whole = record.toBytes();
    std::mt19937 dice(7);
    for (int round = 0; round < 3000; ++round) {
        QByteArray bytes = whole;
        bytes[static_cast<qsizetype>(dice() % bytes.size())] = static_cast<char>(dice());
        auto read = DayRecord::fromBytes(bytes);
        if (!read) continue;
        read->note(kNoon + 9015, Protection::Protected);
        EXPECT_LE(read->spans().last().start, kNoon + 9015);
    }
}
