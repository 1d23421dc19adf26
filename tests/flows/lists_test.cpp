#include "tests/flows/in_state.h"

namespace corvane::test {

namespace {

/// A Pi-hole whose lists are a while old.
class Lists : public Running {
protected:
    Lists()
    {
        Mac::ctl(QStringLiteral("pihole login-limit 100"));
        run(model().refreshStatus(Stats::Include));
    }

    std::string verdict() { return model().notes().value(QStringLiteral("lists")).toString().toStdString(); }
};

const std::string kList = "raw.githubusercontent.com/StevenBlack/hosts/master/hosts";

} // namespace

TEST_F(Lists, A_run_is_shown_line_by_line_and_says_how_far_it_is)
{
    QStringList steps;
    QObject::connect(model().listRun(), &ListRun::progressChanged, model().listRun(),
                     [this, &steps] { steps << model().listRun()->progress(); });
    run(model().loadBlockLists());
    EXPECT_EQ(verdict(), "The block lists are loaded.");
    EXPECT_TRUE(steps.contains(QStringLiteral("List 1 of 1: ") + QString::fromStdString(kList)))
        << steps.join(u'\n').toStdString();
    EXPECT_EQ(steps.last(), QString());
    EXPECT_TRUE(model().listRun()->log()->lines().last().contains(QStringLiteral("Done.")));
}

TEST_F(Lists, Are_younger_after_a_run)
{
    const qint64 before = model().summary()->listsRun.value_or(0);
    Mac::ctl(QStringLiteral("pihole advance 1000"));
    run(model().loadBlockLists());
    EXPECT_GE(model().summary()->listsRun.value_or(0), before + 1000);
}

TEST_F(Lists, A_list_that_cannot_be_fetched_is_named)
{
    Mac::ctl(QStringLiteral("pihole list-server refused"));
    run(model().loadBlockLists());
    EXPECT_EQ(verdict(), "The block lists are loaded.\n" + kList + " could not be fetched. Its old copy stays in use.");
    EXPECT_FALSE(model().listsEmpty());
}

TEST_F(Lists, A_list_that_a_log_in_page_has_emptied_is_named)
{
    Mac::ctl(QStringLiteral("pihole list-server page"));
    run(model().loadBlockLists());
    EXPECT_NE(verdict().find(kList + " holds no name any more. A log-in page"), std::string::npos) << verdict();
    EXPECT_TRUE(model().listsEmpty());
    Mac::ctl(QStringLiteral("pihole list-server good"));
    run(model().loadBlockLists());
    EXPECT_EQ(verdict(), "The block lists are loaded.");
    EXPECT_FALSE(model().listsEmpty());
}

TEST_F(Lists, A_damaged_database_is_told_and_repaired_by_a_run)
{
    run(model().loadBlockLists()); // which keeps a backup
    Mac::ctl(QStringLiteral("pihole gravity damaged"));
    relaunch();
    run(model().refreshStatus(Stats::Include));
    EXPECT_FALSE(model().listsEmpty()) << "Pi-hole still counts names";
    run(model().repair()->endPermissions());
    EXPECT_TRUE(model().listsEmpty());
    EXPECT_TEXT(model().statusNote(), "Pi-hole's block lists are damaged, so it blocks nothing.");
    run(model().loadBlockLists());
    EXPECT_EQ(verdict(), "The block lists are loaded.");
    EXPECT_FALSE(model().listsEmpty());
    EXPECT_TEXT(model().statusNote(), "");
}

TEST_F(Lists, Nothing_stops_or_restarts_pihole_during_a_run)
{
    Mac::ctl(QStringLiteral("pihole pace 3"));
    auto loading = model().loadBlockLists();
    run(model().stopPihole());
    EXPECT_TEXT(model().startMessage(), "Not now: the block lists are being loaded. Try again when that is done.");
    run(model().restartPihole());
    run(model().removePihole());
    run(model().performUpdate());
    run(model().changeWebPort(8085));
    for (const QString &call : Mac::calls(QStringLiteral("docker")))
        EXPECT_FALSE(call.startsWith(QLatin1String("stop")) || call.startsWith(QLatin1String("restart")) ||
                     call.startsWith(QLatin1String("rm")) || call.contains(QLatin1String("up -d")))
            << call.toStdString();
    run(std::move(loading));
    EXPECT_EQ(verdict(), "The block lists are loaded.");
    run(model().stopPihole());
    EXPECT_FALSE(model().containerState().isRunning());
}

TEST_F(Lists, A_pihole_that_goes_during_a_run_ends_it)
{
    Mac::ctl(QStringLiteral("pihole pace 20"));
    auto loading = model().loadBlockLists();
    waitFor([this] { return !model().listRun()->log()->lines().isEmpty(); }, "the run to begin");
    Mac::ctl(QStringLiteral("container kill"));
    run(std::move(loading));
    EXPECT_EQ(verdict(), "The block lists could not be loaded. Check this Mac's connection (and any VPN), then try "
                         "again.");
    EXPECT_TRUE(quiet());
}

} // namespace corvane::test
