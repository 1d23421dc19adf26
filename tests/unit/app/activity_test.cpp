#include "app/current_activities.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include <memory>

namespace corvane::test {

namespace {

using enum Activity;
using Begin = ActivityMark::Begin;

constexpr Activities kTests = Checks | DockerTest | PiholeTests | BlockingTest | SystemTest | BrowserTest;
constexpr Activities kOnEngine = Install | StartColima | Autostart | UdpFix;
constexpr Activities kOnContainer = StartPihole | StartContainer | StopContainer | RestartContainer | Update |
                                    BringBack | PutRight | PortChange | Removal | ImportBackup;

/// Whether each of these excludes each other, and itself.
constexpr bool excludeEachOther(Activities some)
{
    for (const ActivityRule &rule : kActivityRules) {
        if (some.contains(rule.activity) && (excludedBy(rule.activity) & some) != some) return false;
    }
    return true;
}

} // namespace

TEST(ActivityTable, Holds_every_activity_once)
{
    Activities seen;
    for (const ActivityRule &rule : kActivityRules) {
        EXPECT_FALSE(seen.contains(rule.activity)) << rule.words;
        EXPECT_EQ(&ruleOf(rule.activity), &rule) << rule.words;
        seen |= rule.activity;
    }
}

TEST(ActivityTable, Excludes_both_ways)
{
    for (const ActivityRule &one : kActivityRules) {
        for (const ActivityRule &other : kActivityRules)
            EXPECT_EQ(exclude(one, other), exclude(other, one)) << one.words << " and " << other.words;
    }
}

TEST(ActivityTable, Lets_one_at_a_time_change_the_engine_the_container_or_the_dns)
{
    EXPECT_TRUE(excludeEachOther(kOnEngine));
    EXPECT_TRUE(excludeEachOther(kOnContainer));
    EXPECT_TRUE(excludeEachOther(ApplyDns | RestoreDns | Removal));
}

TEST(ActivityTable, Leaves_the_engine_alone_while_the_container_changes)
{
    for (const ActivityRule &rule : kActivityRules) {
        if (!kOnContainer.contains(rule.activity)) continue;
        EXPECT_EQ(excludedBy(rule.activity) & kOnEngine, kOnEngine) << rule.words;
    }
}

TEST(ActivityTable, Keeps_apart_what_runs_in_the_same_operation)
{
    EXPECT_TRUE(excludeEachOther(Install | Autostart | StartColima));
    EXPECT_TRUE(excludeEachOther(StartPihole | UdpFix));
    EXPECT_TRUE(excludeEachOther(StartContainer | Update | BringBack | PortChange));
}

TEST(ActivityTable, Saves_a_backup_only_of_a_container_that_stays)
{
    EXPECT_EQ(excludedBy(ExportBackup), kOnContainer | ExportBackup);
}

TEST(ActivityTable, Disturbs_no_run_of_the_block_lists)
{
    EXPECT_EQ(excludedBy(LoadLists), kOnEngine | kOnContainer | LoadLists | ChangeRules);
    EXPECT_EQ(excludedBy(ChangeRules), kOnContainer | LoadLists | ChangeRules);
}

TEST(ActivityTable, Lets_a_test_hold_up_nothing_but_itself)
{
    for (const ActivityRule &rule : kActivityRules) {
        if (!kTests.contains(rule.activity)) continue;
        EXPECT_EQ(excludedBy(rule.activity), rule.overlapsItself ? Activities() : Activities(rule.activity))
            << rule.words;
        EXPECT_FALSE(notToBeCutOff().contains(rule.activity)) << rule.words;
    }
    EXPECT_FALSE(excludedBy(PiholeTests));
}

TEST(ActivityTable, Lets_the_dns_be_changed_back_whatever_becomes_of_the_container)
{
    EXPECT_EQ(excludedBy(RestoreDns), ApplyDns | RestoreDns | Removal);
}

TEST(ActivityTable, Points_the_mac_at_no_pihole_that_is_about_to_change)
{
    EXPECT_EQ(excludedBy(ApplyDns) & (kOnContainer | kOnEngine), kOnContainer | kOnEngine);
}

TEST(ActivityTable, Calls_everything_that_changes_something_a_loss_when_it_is_cut_off)
{
    EXPECT_EQ(notToBeCutOff(),
              kOnEngine | kOnContainer | ApplyDns | RestoreDns | ExportBackup | LoadLists | ChangeRules);
}

TEST(CurrentActivities, Publishes_the_known_keys)
{
    CurrentActivities now;
    std::vector<std::unique_ptr<ActivityMark>> marks;
    for (const ActivityRule &rule : kActivityRules)
        marks.push_back(std::make_unique<ActivityMark>(now, rule.activity));
    const QSet<QString> known{QStringLiteral("checks"),    QStringLiteral("docker"),     QStringLiteral("pihole"),
                              QStringLiteral("blocking"),  QStringLiteral("services"),   QStringLiteral("applydns"),
                              QStringLiteral("system"),    QStringLiteral("restoredns"), QStringLiteral("browser"),
                              QStringLiteral("container"), QStringLiteral("browsers"),   QStringLiteral("logs"),
                              QStringLiteral("updates"),   QStringLiteral("lists"),      QStringLiteral("browserproof"),
                              QStringLiteral("rules"),     QStringLiteral("report")};
    EXPECT_EQ(now.busyKeys(), known);
    marks.clear();
    EXPECT_TRUE(now.busyKeys().isEmpty());
    EXPECT_FALSE(now.underWay());
}

TEST(CurrentActivities, Stay_until_the_last_of_a_kind_has_ended)
{
    CurrentActivities now;
    auto first = std::make_unique<ActivityMark>(now, PiholeTests);
    auto second = std::make_unique<ActivityMark>(now, PiholeTests);
    EXPECT_FALSE(first->stands()) << "the newest owns the rows";
    second.reset();
    EXPECT_TRUE(now.busyKeys().contains(QStringLiteral("pihole")));
    EXPECT_FALSE(first->stands()) << "the newest has shown what it found";
    first.reset();
    EXPECT_TRUE(now.busyKeys().isEmpty());
}

TEST(CurrentActivities, Tell_what_is_in_the_way)
{
    CurrentActivities now;
    EXPECT_TRUE(now.mayBegin(Removal));
    EXPECT_TRUE(now.obstacle(Removal).isEmpty());
    const ActivityMark mark(now, Update);
    EXPECT_FALSE(now.mayBegin(Removal));
    EXPECT_EQ(now.obstacle(Removal), QStringLiteral("Not now: Pi-hole is being updated. Try again when that is done."));
    EXPECT_TRUE(now.mayBegin(RestoreDns));
}

TEST(CurrentActivities, Say_nothing_about_a_second_press_of_the_same)
{
    CurrentActivities now;
    const ActivityMark mark(now, StopContainer);
    EXPECT_FALSE(now.mayBegin(StopContainer));
    EXPECT_TRUE(now.obstacle(StopContainer).isEmpty());
}

TEST(CurrentActivities, Are_under_way_only_when_the_user_has_agreed)
{
    CurrentActivities now;
    const QSignalSpy changes(&now, &CurrentActivities::changed);
    ActivityMark mark(now, Removal, Begin::WhenAgreed);
    EXPECT_FALSE(now.underWay());
    EXPECT_TRUE(changes.isEmpty());
    EXPECT_FALSE(now.mayBegin(ApplyDns));
    EXPECT_EQ(now.obstacle(ApplyDns), QStringLiteral("Not now: answer the open question first."));
    mark.agreed();
    EXPECT_EQ(now.underWay(), Activities(Removal));
    EXPECT_EQ(now.busyKeys(), QSet<QString>{QStringLiteral("restoredns")});
    EXPECT_EQ(changes.size(), 1);
}

TEST(CurrentActivities, That_a_question_was_refused_leave_no_trace)
{
    CurrentActivities now;
    const QSignalSpy changes(&now, &CurrentActivities::changed);
    std::make_unique<ActivityMark>(now, Removal, Begin::WhenAgreed).reset();
    EXPECT_TRUE(now.mayBegin(Removal));
    EXPECT_TRUE(changes.isEmpty());
}

TEST(CurrentActivities, That_are_outdated_do_not_stand_but_go_on)
{
    CurrentActivities now;
    const ActivityMark system(now, SystemTest);
    const ActivityMark blocking(now, BlockingTest);
    now.outdate(SystemTest);
    EXPECT_FALSE(system.stands());
    EXPECT_TRUE(blocking.stands());
    EXPECT_EQ(now.underWay(), SystemTest | BlockingTest);
}

TEST(CurrentActivities, That_are_closed_let_nothing_begin_and_nothing_stand)
{
    CurrentActivities now;
    const ActivityMark mark(now, Update);
    now.close();
    EXPECT_FALSE(mark.stands());
    EXPECT_EQ(now.underWay(), Activities(Update)) << "it has not ended yet";
    for (const ActivityRule &rule : kActivityRules)
        EXPECT_FALSE(now.mayBegin(rule.activity)) << rule.words;
}

TEST(CurrentActivities, Count_what_begins_to_change_something)
{
    CurrentActivities now;
    const ActivityMark test(now, SystemTest);
    const ActivityMark backup(now, ExportBackup);
    EXPECT_EQ(now.changesBegun(), 0);
    const ActivityMark change(now, ApplyDns);
    EXPECT_EQ(now.changesBegun(), 1);
}

TEST(CurrentActivities, May_go_before_their_marks)
{
    auto now = std::make_unique<CurrentActivities>();
    ActivityMark mark(*now, Update, Begin::WhenAgreed);
    now.reset();
    mark.agreed();
    EXPECT_FALSE(mark.stands());
}

} // namespace corvane::test
