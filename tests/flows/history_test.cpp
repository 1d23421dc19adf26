#include "tests/flows/in_state.h"

#include <algorithm>

namespace corvane::test {

namespace {

/// What the model learned from a simulated Pi-hole of this day.
qint64 askedIn(const AppModel &model)
{
    qint64 total = 0;
    for (const PiholeSlot &slot : model.history().value_or(PiholeHistory()))
        total += slot.total;
    return total;
}

qint64 ownIn(AppModel &model)
{
    qint64 own = 0;
    for (const PiholeSlot &slot : model.history().value_or(PiholeHistory()))
        own += model.day().record().ownIn(slot.start).asked;
    return own;
}

} // namespace

TEST_F(Protected, Nothing_is_read_of_the_day_while_nobody_looks)
{
    run(model().refreshStatus(Stats::Include));
    EXPECT_FALSE(model().history());
    EXPECT_FALSE(model().topBlocked());
}

TEST_F(Protected, The_day_is_read_while_it_is_shown_and_no_longer)
{
    model().showHistory(true);
    run(model().refreshStatus(Stats::Include));
    ASSERT_TRUE(model().history());
    EXPECT_EQ(model().history()->size(), 145);
    EXPECT_TRUE(model().topBlocked());
    const qint64 before = askedIn(model());
    model().showHistory(false);
    run(model().refreshStatus(Stats::Include));
    EXPECT_EQ(askedIn(model()), before);
}

TEST_F(Protected, Every_question_of_corvanes_own_is_counted)
{
    model().showHistory(true);
    run(model().refreshStatus(Stats::Include));
    const qint64 others = askedIn(model()) - ownIn(model());
    for (int look = 0; look < 3; ++look)
        run(model().refreshStatus(Stats::Include));
    run(model().runBlockingTest());
    run(model().refreshStatus(Stats::Include));
    EXPECT_EQ(askedIn(model()) - ownIn(model()), others) << "nobody else has asked";
}

TEST_F(Protected, What_the_dot_said_is_recorded)
{
    run(model().refreshStatus(Stats::Include));
    EXPECT_EQ(model().day().record().spans().last().state, Protection::Protected);
    run(model().pauseBlocking());
    EXPECT_EQ(model().day().record().spans().last().state, Protection::NotBlocking);
    run(model().resumeBlocking());
    Mac::ctl(QStringLiteral("container stop"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_EQ(model().day().record().spans().last().state, Protection::Backup);
}

TEST_F(Protected, A_pihole_that_is_gone_leaves_the_day_that_was_read)
{
    model().showHistory(true);
    run(model().refreshStatus(Stats::Include));
    Mac::ctl(QStringLiteral("container stop"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_TRUE(model().history());
    EXPECT_FALSE(model().summary());
}

TEST_F(Protected, A_pihole_that_refuses_is_told_beside_the_picture)
{
    model().showHistory(true);
    run(model().refreshStatus(Stats::Include));
    model().setAdminPassword(QStringLiteral("not-the-password"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_TEXT(model().historyProblem(), "Pi-hole refused the admin password.");
    EXPECT_TRUE(model().history());
}

TEST_F(Protected, Hidden_names_are_told_from_no_names)
{
    Mac::ctl(QStringLiteral("pihole privacy 1"));
    model().showHistory(true);
    run(model().refreshStatus(Stats::Include));
    ASSERT_TRUE(model().topBlocked());
    EXPECT_TRUE(model().topBlocked()->hidden);
}

} // namespace corvane::test
