#include "tests/flows/in_state.h"

namespace corvane::test {

namespace {

/// What a look at Pi-hole costs it.
class PollingCost : public Protected {
protected:
    PollingCost()
    {
        // A session, and what is read once.
        run(model().refreshStatus(Stats::Include));
        run(model().refreshStatus(Stats::Leave));
    }

    static int requests() { return Mac::ctl(QStringLiteral("pihole state"))[QLatin1String("requests")].toInt(); }

    int requestsOf(Stats stats)
    {
        const int before = requests();
        run(model().refreshStatus(stats));
        return requests() - before;
    }
};

} // namespace

TEST_F(PollingCost, A_closed_dashboard_asks_for_nothing_but_the_counters_in_every_second_look)
{
    for (int pass = 0; pass < 3; ++pass) {
        EXPECT_EQ(requestsOf(Stats::Include), 2) << "the counters and the state of blocking";
        EXPECT_EQ(requestsOf(Stats::Leave), 0);
    }
}

TEST_F(PollingCost, An_open_dashboard_asks_once_more_in_each_look)
{
    model().showHistory(true);
    run(model().refreshStatus(Stats::Include)); // everything at first
    for (int pass = 0; pass < 3; ++pass) {
        EXPECT_EQ(requestsOf(Stats::Include), 3);
        EXPECT_EQ(requestsOf(Stats::Leave), 1);
    }
}

TEST_F(PollingCost, A_busy_day_costs_no_more_requests)
{
    Mac::ctl(QStringLiteral("pihole-day 100000 3000"));
    model().showHistory(true);
    run(model().refreshStatus(Stats::Include));
    ASSERT_TRUE(model().history());
    EXPECT_EQ(model().historyProblem(), QString());
    EXPECT_EQ(requestsOf(Stats::Include), 3);
    EXPECT_EQ(requestsOf(Stats::Leave), 1);
}

} // namespace corvane::test
