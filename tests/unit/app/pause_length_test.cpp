#include "app/pause_length.h"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

qint64 untilMorning(int hour, int minute)
{
    const QDateTime now(QDate(2026, 11, 20), QTime(hour, minute));
    return PauseLength::of(PauseLength::UntilMorning, now).count();
}

} // namespace

TEST(PauseLength, Is_what_its_name_says)
{
    const QDateTime now = QDateTime::currentDateTime();
    EXPECT_EQ(PauseLength::of(PauseLength::HalfMinute, now).count(), 30);
    EXPECT_EQ(PauseLength::of(PauseLength::FiveMinutes, now).count(), 300);
    EXPECT_EQ(PauseLength::of(PauseLength::OneHour, now).count(), 3600);
}

TEST(PauseLength, Until_tomorrow_morning_ends_at_seven)
{
    EXPECT_EQ(untilMorning(22, 0), 9 * 3600);
    EXPECT_EQ(untilMorning(9, 30), 77'400);
    EXPECT_EQ(untilMorning(4, 0), 27 * 3600);
}

TEST(PauseLength, At_night_the_coming_morning_is_tomorrows)
{
    EXPECT_EQ(untilMorning(0, 30), 23'400);
    EXPECT_EQ(untilMorning(3, 59), 3 * 3600 + 60);
}
