#include "ui/history/day_picture.h"

#include <QDateTime>
#include <gtest/gtest.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kNoon = 1'795'262'400; // 2026-11-21 12:00 UTC
const LocalTime kLondon{QTimeZone("Europe/London"), false};

QStringList labelsOf(const QList<HourTick> &ticks)
{
    QStringList labels;
    for (const HourTick &tick : ticks)
        labels << tick.label;
    return labels;
}

qint64 at(int year, int month, int day, int hour, const char *zone)
{
    return QDateTime(QDate(year, month, day), QTime(hour, 0), QTimeZone(zone)).toSecsSinceEpoch();
}

} // namespace

TEST(DayWindow, Ends_with_the_running_slot)
{
    const DayWindow window = DayWindow::at(kNoon + 61);
    EXPECT_EQ(window.until, kNoon + 600);
    EXPECT_EQ(window.from, kNoon + 600 - 86'400);
    EXPECT_EQ(DayWindow::at(kNoon).until, kNoon + 600) << "a slot begins with its first second";
}

TEST(DayBars, Stand_in_their_slots_without_what_lies_outside)
{
    const DayWindow window = DayWindow::at(kNoon);
    const PiholeHistory history{{window.from - 600, 9, 1}, {window.from, 5, 2}, {kNoon, 7, 3}, {kNoon + 600, 4, 4}};
    const QList<DayBar> bars = dayBars(window, history, {});
    ASSERT_EQ(bars.size(), 144);
    EXPECT_EQ(bars.first(), (DayBar{3, 2}));
    EXPECT_EQ(bars.last(), (DayBar{4, 3}));
    EXPECT_EQ(bars.at(70), DayBar());
}

TEST(DayBars, Leave_out_the_questions_of_corvane)
{
    DayRecord record;
    for (int i = 0; i < 40; ++i)
        record.countOwn(kNoon + i, i < 1);
    const DayWindow window = DayWindow::at(kNoon);
    EXPECT_EQ(dayBars(window, {{kNoon, 300, 60}}, record).last(), (DayBar{201, 59}));
    EXPECT_EQ(dayBars(window, {{kNoon, 10, 0}}, record).last(), DayBar()) << "Pi-hole has forgotten some of them";
    EXPECT_EQ(ownQuestions(window, record), 40);
}

TEST(DayAxis, Ends_at_a_round_number_that_holds_every_bar)
{
    const auto topOf = [](qint64 most) { return axisTop({DayBar{most, 0}, DayBar{1, 0}}); };
    EXPECT_EQ(axisTop({}), 10);
    EXPECT_EQ(topOf(10), 10);
    EXPECT_EQ(topOf(11), 20);
    EXPECT_EQ(topOf(61), 80);
    EXPECT_EQ(topOf(81), 100);
    EXPECT_EQ(topOf(401), 600);
    for (qint64 most : {qint64{1'000'001}, qint64{1} << 41}) {
        EXPECT_GE(topOf(most), most);
        EXPECT_LT(topOf(most), 3 * most);
    }
}

TEST(DayAxis, Marks_round_hours_with_room_between_them)
{
    const DayWindow window = DayWindow::at(kNoon);
    EXPECT_EQ(labelsOf(hourTicks(window, 5 * 3600, kLondon)), (QStringList{u"18:00"_s, u"00:00"_s, u"06:00"_s}));
    EXPECT_EQ(labelsOf(hourTicks(window, 4 * 3600, kLondon)),
              (QStringList{u"16:00"_s, u"20:00"_s, u"00:00"_s, u"04:00"_s, u"08:00"_s}));
    EXPECT_EQ(hourTicks(window, 2 * 3600, {QTimeZone("Europe/London"), true}).first().label, u"2 PM"_s);
    EXPECT_TRUE(hourTicks(window, 100 * 3600, kLondon).isEmpty());
}

TEST(DayAxis, Marks_local_hours_in_zones_between_the_hours)
{
    const auto ticks = hourTicks(DayWindow::at(kNoon), 6 * 3600, {QTimeZone("Asia/Kathmandu"), false});
    EXPECT_EQ(labelsOf(ticks), (QStringList{u"18:00"_s, u"00:00"_s, u"06:00"_s}));
    EXPECT_EQ(ticks.first().time % 3600, 900);
}

TEST(DayAxis, A_change_of_the_clocks_marks_no_hour_twice)
{
    // On 25 October 2026 the hour from 1 to 2 comes twice in London, on 29 March it does not come.
    for (const auto &[month, day] : {std::pair(10, 25), std::pair(3, 29)}) {
        const DayWindow window = DayWindow::at(at(2026, month, day, 12, "Europe/London"));
        const auto ticks = hourTicks(window, 3600, kLondon);
        for (qsizetype i = 1; i < ticks.size(); ++i)
            EXPECT_GE(ticks.at(i).time - ticks.at(i - 1).time, 3600);
        EXPECT_GE(ticks.size(), 22);
    }
}

TEST(DayBand, Two_minutes_are_seen)
{
    const DayWindow window = DayWindow::at(kNoon);
    const QList<DaySpan> spans{{window.from, kNoon - 7200, Protection::Protected},
                               {kNoon - 7200, kNoon - 7080, Protection::Backup},
                               {kNoon - 7080, kNoon, Protection::Protected}};
    const auto pieces = bandPieces(window, spans, 288);
    ASSERT_EQ(pieces.size(), 3);
    EXPECT_EQ(pieces.at(1).state, Protection::Backup);
    EXPECT_EQ(pieces.at(1).columns, 1);
    EXPECT_EQ(pieces.first().column, 0);
    EXPECT_EQ(pieces.at(2).column + pieces.at(2).columns, 286) << "nothing stands behind now";
}

TEST(DayBand, What_is_not_known_stays_empty)
{
    const DayWindow window = DayWindow::at(kNoon);
    EXPECT_TRUE(bandPieces(window, {}, 288).isEmpty());
    EXPECT_TRUE(bandPieces(window, {{window.from, kNoon, Protection::Unknown}}, 288).isEmpty());
    EXPECT_TRUE(bandPieces(window, {{0, window.from - 1, Protection::Protected}}, 288).isEmpty());
    EXPECT_TRUE(bandPieces(window, {{window.from, kNoon, Protection::Protected}}, 0).isEmpty());
}

TEST(DayBand, Its_times_are_those_within_the_window)
{
    const QList<DaySpan> spans{{kNoon - 900, kNoon - 300, Protection::Protected},
                               {kNoon - 300, kNoon, Protection::Backup}};
    EXPECT_EQ(timesBetween(spans, kNoon - 600, kNoon),
              (ProtectionTimes{{Protection::Protected, 300}, {Protection::Backup, 300}}));
}
