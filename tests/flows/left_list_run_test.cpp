#include "tests/flows/in_state.h"

namespace corvane::test {

namespace {

constexpr const char *kCutOff =
    "Corvane was closed while Pi-hole loaded its block lists, and that run did not come to its "
    "end. The older lists are in use. Refresh them again.";

/// A Corvane that ended in the middle of a run of the block lists.
class LeftListRun : public Running {
protected:
    LeftListRun()
    {
        Mac::ctl(QStringLiteral("pihole login-limit 100"));
        run(model().refreshStatus(Stats::Include));
    }

    /// Begins a run that takes Pi-hole so many times longer than a real one, and ends Corvane in the middle of it.
    void leaveInTheMiddle(int pace)
    {
        Mac::ctl(QStringLiteral("pihole pace %1").arg(pace));
        launch(model().loadBlockLists());
        waitFor([this] { return !model().listRun()->log()->lines().isEmpty(); }, "the run to begin");
        model().stopEverything();
        relaunch();
        Mac::ctl(QStringLiteral("pihole pace 1"));
    }
    QString verdict() { return model().notes().value(QStringLiteral("lists")).toString(); }
    bool loading() { return model().underWay().contains(Activity::LoadLists); }
};

} // namespace

TEST_F(LeftListRun, Is_waited_for_while_it_may_still_be_under_way)
{
    leaveInTheMiddle(4);
    EXPECT_TEXT(verdict(), "");
    run(model().refreshStatus(Stats::Include));
    ASSERT_TRUE(loading());
    EXPECT_TEXT(model().listRun()->progress(),
                "Pi-hole may still be loading its block lists: Corvane was closed in the middle of it.");
    run(model().stopPihole());
    EXPECT_TEXT(model().startMessage(), "Not now: the block lists are being loaded. Try again when that is done.");
    waitFor([this] { return !loading(); }, "the end of the run");
    EXPECT_TEXT(verdict(), "The block lists are loaded.");
    relaunch();
    run(model().refreshStatus(Stats::Include));
    EXPECT_TEXT(verdict(), "") << "it is told once";
}

TEST_F(LeftListRun, That_came_to_its_end_meanwhile_is_told_with_the_lists_that_failed)
{
    Mac::ctl(QStringLiteral("pihole list-server refused"));
    const auto before = model().summary()->listsRun;
    leaveInTheMiddle(2);
    model().configureAPI();
    waitFor(
        [this, before] {
            const auto now = QCoro::waitFor(model().api().summary());
            return now && now->listsRun != before;
        },
        "Pi-hole to be done");
    run(model().refreshStatus(Stats::Include));
    waitFor([this] { return quiet(); }, "rest");
    EXPECT_TEXT(verdict(),
                "The block lists were loaded while Corvane was closed.\n"
                "raw.githubusercontent.com/StevenBlack/hosts/master/hosts could not be fetched. Its old copy "
                "stays in use.");
}

TEST_F(LeftListRun, That_was_cut_off_is_told_to_be_so)
{
    leaveInTheMiddle(20);
    Mac::ctl(QStringLiteral("container kill"));
    Mac::ctl(QStringLiteral("container start"));
    clock.sleep(std::chrono::minutes(11));
    run(model().refreshStatus(Stats::Include));
    EXPECT_FALSE(loading());
    EXPECT_TEXT(verdict(), kCutOff);
}

TEST_F(LeftListRun, That_ends_with_pihole_while_it_is_waited_for_is_told_to_be_cut_off)
{
    leaveInTheMiddle(20);
    run(model().refreshStatus(Stats::Include));
    ASSERT_TRUE(loading());
    Mac::ctl(QStringLiteral("container kill"));
    waitFor([this] { return !loading(); }, "that Pi-hole has gone");
    EXPECT_TEXT(verdict(), kCutOff);
}

TEST_F(LeftListRun, That_ended_before_corvane_did_leaves_nothing_to_tell)
{
    run(model().loadBlockLists());
    EXPECT_TEXT(verdict(), "The block lists are loaded.");
    relaunch();
    run(model().refreshStatus(Stats::Include));
    EXPECT_TEXT(verdict(), "");
    EXPECT_FALSE(loading());
}

} // namespace corvane::test
