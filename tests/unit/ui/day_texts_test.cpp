#include "ui/history/day_texts.h"

#include <gtest/gtest.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kNoon = 1'795'262'400; // 2026-11-21 12:00 UTC
const LocalTime kLondon{QTimeZone("Europe/London"), false};

} // namespace

TEST(DayTexts, A_time_is_told_in_hours_and_minutes)
{
    EXPECT_EQ(durationText(20), u"under 1 min"_s);
    EXPECT_EQ(durationText(720), u"12 min"_s);
    EXPECT_EQ(durationText(3590), u"1 h"_s);
    EXPECT_EQ(durationText(23 * 3600 + 48 * 60), u"23 h 48 min"_s);
}

TEST(DayTexts, The_protection_is_summed_up_in_a_sentence)
{
    EXPECT_EQ(protectionText({{Protection::Protected, 85'680}, {Protection::Backup, 720}}),
              u"Protected 23 h 48 min, 12 min on the backup."_s);
    EXPECT_EQ(protectionText({{Protection::NotUsed, 3600}, {Protection::Asleep, 7200}}),
              u"1 h without Pi-hole, 2 h asleep."_s);
    EXPECT_EQ(protectionText({{Protection::Down, 60}, {Protection::NotBlocking, 300}}),
              u"1 min without any answer, 5 min without blocking."_s);
    EXPECT_EQ(protectionText({{Protection::Unknown, 600}}), QString());
}

TEST(DayTexts, The_day_is_summed_up_in_a_sentence)
{
    const DayWindow window = DayWindow::at(kNoon);
    QList<DayBar> bars(144);
    EXPECT_EQ(dayText(window, bars, kLondon), u"Nothing has been asked in the last 24 hours."_s);
    bars.last() = {820, 180};
    EXPECT_EQ(dayText(window, bars, kLondon), u"1,000 questions since 12:00, 180 blocked (18.0 %)."_s);
    bars.last() = {1, 0};
    EXPECT_EQ(dayText(window, bars, kLondon), u"1 question since 12:00, 0 blocked (0.0 %)."_s);
    bars.first() = {2, 1};
    EXPECT_EQ(dayText(window, bars, kLondon), u"4 questions in the last 24 hours, 1 blocked (25.0 %)."_s);
}

TEST(DayTexts, A_slot_says_when_how_many_and_how_the_mac_was_protected)
{
    const DayWindow window = DayWindow::at(kNoon + 300);
    const QList<DaySpan> spans{{kNoon - 600, kNoon - 120, Protection::Protected},
                               {kNoon - 120, kNoon + 300, Protection::Backup}};
    EXPECT_EQ(slotText(window, 142, {312, 48}, spans, kLondon),
              u"11:50 to 12:00: 312 allowed, 48 blocked. Protected 8 min, 2 min on the backup."_s);
    EXPECT_EQ(slotText(window, 143, {0, 0}, spans, kLondon),
              u"12:00 to now: 0 allowed, 0 blocked. 5 min on the backup."_s);
    EXPECT_EQ(slotText(window, 0, {1, 0}, {}, {QTimeZone("UTC"), true}),
              u"12:10 PM to 12:20 PM: 1 allowed, 0 blocked."_s);
}

TEST(DayTexts, What_is_left_out_is_said)
{
    EXPECT_EQ(ownText(5712), u"Corvane's own questions are left out as far as it counted them: 5,712."_s);
    EXPECT_EQ(ownText(0), QString());
}

TEST(DayTexts, A_picture_without_bars_says_why)
{
    EXPECT_EQ(missingText({}), QString()) << "nothing is known yet";
    EXPECT_EQ(missingText({.checked = true, .answering = true}), u"Reading what was asked..."_s);
    EXPECT_EQ(missingText({.checked = true}), u"What was asked can be shown once Pi-hole answers."_s);
    EXPECT_EQ(missingText({.checked = true, .answering = true, .read = true}), QString());
}

TEST(DayTexts, Bars_that_are_not_new_say_so)
{
    EXPECT_EQ(staleText({.checked = true, .answering = true, .read = true}), QString());
    EXPECT_EQ(staleText({.checked = true, .answering = false, .read = true}),
              u"Pi-hole does not answer. What it had counted before is still shown."_s);
    EXPECT_EQ(staleText({.checked = true, .answering = true, .read = true, .problem = u"It said no."_s}),
              u"The picture is not up to date. It said no."_s);
}

TEST(DayTexts, A_list_without_names_says_why)
{
    EXPECT_EQ(missingNamesText(std::nullopt), QString());
    EXPECT_EQ(missingNamesText(PiholeTopBlocked{{}, true}), u"Pi-hole shows no names (its privacy level)."_s);
    EXPECT_EQ(missingNamesText(PiholeTopBlocked{}), u"Nothing has been blocked yet."_s);
    EXPECT_EQ(missingNamesText(PiholeTopBlocked{{{u"a.example"_s, 1}}, false}), QString());
}
