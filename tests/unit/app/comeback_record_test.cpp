#include "app/comeback_record.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

const QDateTime kMorning(QDate(2026, 11, 22), QTime(9, 12, 40));

ComebackEntry entry(Outage outage, ComebackEnd end, qint64 seconds = 41)
{
    return {kMorning.toSecsSinceEpoch(), outage, end, seconds};
}

std::string said(const ComebackEntry &entry, const QDateTime &now = kMorning.addSecs(600))
{
    return comebackSentence(entry, now).toStdString();
}

std::string length(qint64 seconds) { return said(entry(Outage::Woke, ComebackEnd::Back, seconds)); }

} // namespace

TEST(ComebackRecord, Says_when_why_and_for_how_long)
{
    EXPECT_EQ(said(entry(Outage::Woke, ComebackEnd::Back)), "09:12 Started again after waking, 41 s without Pi-hole.");
    EXPECT_EQ(said(entry(Outage::Colima, ComebackEnd::Back)),
              "09:12 Started again after Colima had stopped, 41 s without Pi-hole.");
    EXPECT_EQ(said(entry(Outage::Container, ComebackEnd::Back)),
              "09:12 Started again after its container had ended, 41 s without Pi-hole.");
    EXPECT_EQ(said(entry(Outage::Opened, ComebackEnd::Back)),
              "09:12 Started again after Corvane was opened, at least 41 s without Pi-hole.");
    EXPECT_EQ(said(entry(Outage::Woke, ComebackEnd::Failed)),
              "09:12 Not started again after waking: three tries failed.");
    EXPECT_EQ(said(entry(Outage::Colima, ComebackEnd::Cancelled)),
              "09:12 Not started again after Colima had stopped: you cancelled it.");
}

TEST(ComebackRecord, Long_times_are_told_in_larger_units)
{
    EXPECT_EQ(length(119), "09:12 Started again after waking, 119 s without Pi-hole.");
    EXPECT_EQ(length(120), "09:12 Started again after waking, 2 min without Pi-hole.");
    EXPECT_EQ(length(7199), "09:12 Started again after waking, 119 min without Pi-hole.");
    EXPECT_EQ(length(7200), "09:12 Started again after waking, 2 h without Pi-hole.");
}

TEST(ComebackRecord, Another_day_is_named)
{
    EXPECT_EQ(said(entry(Outage::Woke, ComebackEnd::Back), kMorning.addDays(1)),
              "22 Nov 09:12 Started again after waking, 41 s without Pi-hole.");
}

TEST(ComebackRecord, Is_read_as_it_was_written_newest_first)
{
    ComebackRecord record;
    record.add({100, Outage::Opened, ComebackEnd::Back, 7});
    record.add({200, Outage::Container, ComebackEnd::Cancelled, 0});
    const ComebackRecord read = ComebackRecord::fromText(record.toText());
    EXPECT_EQ(read.entries(), record.entries());
    EXPECT_EQ(read.entries().first().at, 200);
}

TEST(ComebackRecord, Keeps_the_newest_twenty)
{
    ComebackRecord record;
    for (qint64 at = 1; at <= 30; ++at)
        record.add({at, Outage::Woke, ComebackEnd::Back, 1});
    EXPECT_EQ(record.entries().size(), 20);
    EXPECT_EQ(record.entries().first().at, 30);
    EXPECT_EQ(record.entries().last().at, 11);
    const QString tooLong = QStringLiteral("1 1 0 1,").repeated(5000);
    EXPECT_EQ(ComebackRecord::fromText(tooLong).entries().size(), 20);
}

TEST(ComebackRecord, What_is_no_entry_is_left_out)
{
    for (const char *text : {"", ",", "1 1 0", "1 1 0 1 1", "1 4 0 1", "1 1 3 1", "-1 1 0 1", "1 -1 0 1", "x 1 0 1",
                             "99999999999999999999 1 0 1", "1  0 1", "\xff\xfe"})
        EXPECT_TRUE(ComebackRecord::fromText(QString::fromUtf8(text)).entries().isEmpty()) << text;
    EXPECT_EQ(ComebackRecord::fromText(QStringLiteral("rubbish,5 1 0 9,more")).entries(),
              (QList<ComebackEntry>{{5, Outage::Woke, ComebackEnd::Back, 9}}));
}

} // namespace corvane::test
