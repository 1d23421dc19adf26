#include "app/flow.h"
#include "runtime/pihole_controller.h"
#include "tests/flows/in_state.h"

#include <QDateTime>

#include <algorithm>

namespace corvane::test {

namespace {

const QString kTracker = QStringLiteral("doubleclick.net");
constexpr auto kAllowed = PiholeRule::Kind::AllowedName;

/// A Pi-hole that blocks, and a person for whom a site does not load.
class SiteThatDoesNotLoad : public Running {
protected:
    SiteThatDoesNotLoad()
    {
        Mac::ctl(QStringLiteral("pihole login-limit 100"));
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
        run(model().refreshStatus(Stats::Include));
    }
    ~SiteThatDoesNotLoad() override { repair().stopWatching(); }

    Repair &repair() { return *model().repair(); }

    /// What a browser gets for the name; empty for nothing.
    QString lookUp(const QString &name)
    {
        const DigResult reply = QCoro::waitFor(PiholeController::ask(name));
        return reply.answers.value(reply.answers.size() - 1);
    }
    bool blocks(const QString &name) { return lookUp(name) == QLatin1String("0.0.0.0"); }

    std::optional<PiholeRule> rule(const QString &name = kTracker)
    {
        const auto found = QCoro::waitFor(model().api().rule(kAllowed, name));
        EXPECT_TRUE(found);
        return found ? *found : std::nullopt;
    }

    void addRule(const QString &comment)
    {
        const PiholeRule given{kAllowed, kTracker, comment};
        EXPECT_TRUE(QCoro::waitFor(model().api().addRule(given)).value_or(false));
    }

    const BlockedName *shown(const QString &name)
    {
        m_names = repair().names();
        const auto found = std::ranges::find(m_names, name, &BlockedName::name);
        return found == m_names.end() ? nullptr : &*found;
    }

    std::string message() { return repair().message().toStdString(); }

private:
    QList<BlockedName> m_names;
};

} // namespace

TEST_F(SiteThatDoesNotLoad, What_was_blocked_before_the_look_is_kept_apart_from_what_is_blocked_now)
{
    EXPECT_TRUE(blocks(QStringLiteral("googleadservices.com")));
    EXPECT_EQ(lookUp(QStringLiteral("example.com")), QStringLiteral("93.184.215.14"));
    launch(repair().watch());
    waitFor([this] { return shown(QStringLiteral("googleadservices.com")); }, "the older name");
    EXPECT_TRUE(blocks(kTracker));
    waitFor([this] { return shown(kTracker); }, "the newer name");
    EXPECT_TRUE(shown(kTracker)->isNew);
    EXPECT_FALSE(shown(QStringLiteral("googleadservices.com"))->isNew);
    EXPECT_EQ(shown(kTracker)->what, QStringLiteral("raw.githubusercontent.com/StevenBlack/hosts/master/hosts"));
    EXPECT_FALSE(shown(QStringLiteral("example.com")));
}

TEST_F(SiteThatDoesNotLoad, Nothing_is_asked_once_nobody_looks)
{
    launch(repair().watch());
    EXPECT_TRUE(blocks(kTracker));
    waitFor([this] { return shown(kTracker); }, "the name");
    repair().stopWatching();
    EXPECT_TRUE(blocks(QStringLiteral("googleadservices.com")));
    const auto passed = clock.waited();
    run(model().runBlockingTest());
    EXPECT_TRUE(QCoro::waitFor(model().api().blocking()));
    EXPECT_FALSE(shown(QStringLiteral("googleadservices.com"))) << passed.count();
}

TEST_F(SiteThatDoesNotLoad, A_name_is_allowed_for_an_hour_and_answers_at_once)
{
    const QDateTime before = QDateTime::currentDateTime();
    run(repair().allow(kTracker, false));
    EXPECT_FALSE(blocks(kTracker));
    EXPECT_EQ(message().find("doubleclick.net is allowed (until "), 0) << message();
    EXPECT_NE(message().find("and answers now"), std::string::npos) << message();
    ASSERT_EQ(repair().permissions().size(), 1);
    const qint64 length = before.secsTo(*repair().permissions().first().end);
    EXPECT_GE(length, 3600 - 1);
    EXPECT_LE(length, 3600 + 30);
    EXPECT_TRUE(quiet());
}

TEST_F(SiteThatDoesNotLoad, A_permission_can_be_undone)
{
    run(repair().allow(kTracker, true));
    EXPECT_FALSE(blocks(kTracker));
    EXPECT_EQ(repair().undoName(), kTracker);
    EXPECT_FALSE(repair().permissions().first().end);
    run(repair().takeBack(repair().undoName()));
    EXPECT_FALSE(rule());
    EXPECT_TRUE(repair().permissions().isEmpty());
    EXPECT_EQ(repair().undoName(), QString());
    waitFor([this] { return blocks(kTracker); }, "Pi-hole to block again");
}

TEST_F(SiteThatDoesNotLoad, A_name_that_leads_to_a_blocked_one_is_allowed_itself)
{
    const QString name = QStringLiteral("metrics.example.org");
    launch(repair().watch());
    waitFor([this] { return repair().trouble().isEmpty() && !model().repair()->permissions().size(); }, "a look");
    EXPECT_TRUE(blocks(name));
    waitFor([&] { return shown(name); }, "the name");
    EXPECT_EQ(shown(name)->behind, QStringLiteral("stats.g.doubleclick.net"));
    run(repair().allow(name, false));
    EXPECT_FALSE(blocks(name));
    EXPECT_TRUE(blocks(QStringLiteral("stats.g.doubleclick.net"))) << "nothing else is allowed with it";
}

TEST_F(SiteThatDoesNotLoad, A_dot_at_the_end_is_cut)
{
    run(repair().allow(QStringLiteral("DoubleClick.net."), false));
    EXPECT_TRUE(rule());
    EXPECT_FALSE(blocks(kTracker));
}

TEST_F(SiteThatDoesNotLoad, A_rule_of_the_users_own_stays_as_it_is)
{
    addRule(QStringLiteral("mine"));
    run(repair().allow(kTracker, false));
    EXPECT_EQ(message(), "Pi-hole has a rule of yours for doubleclick.net already. See Domains on Pi-hole's web page.");
    EXPECT_EQ(rule()->comment, QStringLiteral("mine"));
    EXPECT_EQ(repair().undoName(), QString()) << "nothing was done that could be undone";
    EXPECT_TRUE(repair().permissions().isEmpty());
}

TEST_F(SiteThatDoesNotLoad, An_hour_can_become_always)
{
    run(repair().allow(kTracker, false));
    run(repair().allow(kTracker, true));
    EXPECT_EQ(rule()->comment, QStringLiteral("Allowed in Corvane"));
    EXPECT_FALSE(repair().permissions().first().end);
}

TEST_F(SiteThatDoesNotLoad, An_hour_ends_also_when_corvane_was_not_running)
{
    addRule(QStringLiteral("Allowed in Corvane until ") +
            QDateTime::currentDateTimeUtc().addSecs(-60).toString(Qt::ISODate));
    relaunch();
    launch(model().bootstrap());
    waitFor([this] { return !rule(); }, "the permission to end");
}

TEST_F(SiteThatDoesNotLoad, Only_what_is_over_and_ours_ends)
{
    addRule(QStringLiteral("Allowed in Corvane until ") +
            QDateTime::currentDateTimeUtc().addSecs(1800).toString(Qt::ISODate));
    const PiholeRule theirs{kAllowed, QStringLiteral("googleadservices.com"), QStringLiteral("until 2001-01-01")};
    EXPECT_TRUE(QCoro::waitFor(model().api().addRule(theirs)));
    run(repair().endPermissions());
    EXPECT_TRUE(rule());
    EXPECT_TRUE(rule(theirs.domain));
}

TEST_F(SiteThatDoesNotLoad, What_is_allowed_during_a_list_run_follows_it)
{
    Mac::ctl(QStringLiteral("pihole pace 3"));
    auto loading = model().loadBlockLists();
    run(repair().allow(kTracker, false));
    EXPECT_EQ(message(), "Pi-hole is refreshing its block lists. The permission for doubleclick.net follows as soon as "
                         "that is done.");
    EXPECT_FALSE(rule()) << "nothing changes Pi-hole's rules meanwhile";
    run(std::move(loading));
    waitFor([this] { return !repair().permissions().isEmpty(); }, "the permission");
    EXPECT_FALSE(blocks(kTracker));
}

TEST_F(SiteThatDoesNotLoad, What_somebody_elses_list_run_undoes_is_done_again)
{
    Mac::ctl(QStringLiteral("pihole pace 3"));
    // Pi-hole's own weekly run, or a press on its web page.
    auto elsewhere = model().api().updateLists();
    waitFor([this] { return QCoro::waitFor(model().api().blocking()).has_value(); }, "the run to begin");
    run(repair().allow(kTracker, true));
    EXPECT_TRUE(rule());
    EXPECT_EQ(QCoro::waitFor(std::move(elsewhere)), true);
    EXPECT_FALSE(rule()) << "the run has replaced all rules by those of its beginning";
    run(model().refreshStats());
    waitFor([this] { return rule().has_value(); }, "the permission to come back");
    EXPECT_FALSE(blocks(kTracker));
}

TEST_F(SiteThatDoesNotLoad, A_pihole_that_hides_names_is_told)
{
    Mac::ctl(QStringLiteral("pihole privacy 2"));
    EXPECT_TRUE(blocks(kTracker));
    launch(repair().watch());
    waitFor([this] { return repair().privacyLevel() == 2; }, "the level");
    EXPECT_TRUE(repair().names().isEmpty());
}

TEST_F(SiteThatDoesNotLoad, A_pihole_that_cannot_be_asked_is_told)
{
    model().setAdminPassword(QStringLiteral("not-the-password"));
    model().configureAPI();
    launch(repair().watch());
    waitFor([this] { return !repair().trouble().isEmpty(); }, "the reason");
    EXPECT_TEXT(repair().trouble(), "Pi-hole refused the admin password.");
    run(repair().allow(kTracker, false));
    EXPECT_EQ(message(), "Could not allow doubleclick.net: Pi-hole refused the admin password.");
    run(repair().takeBack(kTracker));
    EXPECT_EQ(message(), "Could not take the permission for doubleclick.net back: Pi-hole refused the admin password.");
}

TEST_F(SiteThatDoesNotLoad, A_permission_for_a_name_that_does_not_exist_is_told_as_such)
{
    run(repair().allow(QStringLiteral("nobody.invalid"), false));
    EXPECT_NE(message().find("but the internet has no address for it."), std::string::npos) << message();
}

TEST_F(SiteThatDoesNotLoad, Answers_without_an_address_prove_nothing_when_pihole_blocks_that_way)
{
    Mac::ctl(QStringLiteral("pihole block-mode nxdomain"));
    Mac::ctl(QStringLiteral("pihole effect 30"));
    run(repair().allow(kTracker, false));
    EXPECT_NE(message().find("but still blocks it."), std::string::npos) << message();
}

} // namespace corvane::test
