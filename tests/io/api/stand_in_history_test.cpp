#include "tests/io/api/api_fixture.h"
#include "tests/io/api/stand_in.h"

#include <QDateTime>

#include <numeric>

using namespace corvane;
using namespace corvane::test;
using namespace Qt::StringLiterals;

namespace {

class StandInHistory : public testing::Test {
protected:
    StandInHistory() { api.configure(pihole.webPort(), u"secret"_s); }

    const StandIn pihole{u"secret"_s, {{u"log_delay"_s, 0}}};
    PiholeAPI api;
};

} // namespace

TEST_F(StandInHistory, A_pihole_that_has_just_started_has_a_whole_day_of_slots_up_to_now)
{
    const auto day = QCoro::waitFor(api.history());
    ASSERT_TRUE(day);
    EXPECT_EQ(day->size(), 145);
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    EXPECT_GE(day->last().start + PiholeSlot::kSeconds, now);
    EXPECT_LE(day->last().start, now + 60) << "the next slot comes a minute before it begins";
}

TEST_F(StandInHistory, The_slots_add_up_to_the_counters)
{
    for (const auto &name : {u"doubleclick.net"_s, u"example.com"_s, u"doubleclick.net"_s})
        EXPECT_NE(pihole.lookUp(name), QString());
    const auto day = QCoro::waitFor(api.history());
    const auto counters = QCoro::waitFor(api.summary());
    ASSERT_TRUE(day && counters);
    qint64 total = 0;
    qint64 blocked = 0;
    for (const PiholeSlot &slot : *day) {
        total += slot.total;
        blocked += slot.blocked;
    }
    EXPECT_GE(total, 3);
    EXPECT_EQ(blocked, 2);
    EXPECT_EQ(blocked, counters->blocked);
}

TEST_F(StandInHistory, Names_that_nobody_asked_for_are_told_from_those_asked)
{
    for (int i = 0; i < 3; ++i)
        EXPECT_NE(pihole.lookUp(u"metrics.example.org"_s), QString());
    EXPECT_NE(pihole.lookUp(u"ads.flurry.com"_s), QString());
    const auto counted = QCoro::waitFor(api.topBlocked(10));
    const auto newest = QCoro::waitFor(api.blockedSince(0, 200));
    ASSERT_TRUE(counted && newest);
    EXPECT_EQ(counted->names.size(), 3) << "the name behind the first is counted too";
    EXPECT_EQ(askedFor(*counted, *newest).names,
              (QList<NameCount>{{u"metrics.example.org"_s, 3}, {u"ads.flurry.com"_s, 1}}));
}
