#include "app/flow.h"
#include "runtime/pihole_controller.h"
#include "tests/sentences/on_screen.h"

namespace corvane::test {

namespace {

/// What is said about sites that do not load, pauses and lists.
class DailyLife : public OnScreen {
protected:
    void beginOnDashboard()
    {
        begin("running");
        mac("pihole login-limit 100");
        mac("pihole log-delay 0");
        openDashboard();
    }

    static void lookUp(const char *name)
    {
        const auto reply = QCoro::waitFor(PiholeController::ask(QLatin1String(name)));
        EXPECT_TRUE(reply.ok) << name;
    }
};

} // namespace

TEST_F(DailyLife, A_site_that_does_not_load_is_repaired)
{
    beginOnDashboard();
    EXPECT_TRUE(appear({"Something does not load?",
                        "See which names Pi-hole blocks while the page loads, and allow the one that it needs."}));
    pressButton("Show what is blocked");
    EXPECT_TRUE(appear({"Load the page again now. The names that Pi-hole blocks from here on stand below, the newest "
                        "first.",
                        "Nothing was blocked since. If the page still does not load, it is not Pi-hole."}));
    waitFor([this] { return model().repair()->trouble().isEmpty(); }, "a look");
    settle();
    lookUp("metrics.example.org");
    EXPECT_TRUE(appears("Blocked once: it leads to stats.g.doubleclick.net, which is blocked by the list "
                        "raw.githubusercontent.com/StevenBlack/hosts/master/hosts."));
    pressButton("Allow 1 hour");
    EXPECT_TRUE(appearsWithReason("metrics.example.org is allowed (until "));
    EXPECT_TRUE(appears("Allowed by you"));
    pressButton("Undo");
    EXPECT_TRUE(appears("metrics.example.org is no longer allowed. A browser may go on with what it knows for some "
                        "minutes."));
    pressButton("Done");
}

TEST_F(DailyLife, What_hides_the_blocked_names_is_told)
{
    beginOnDashboard();
    mac("pihole privacy 1");
    pressButton("Show what is blocked");
    EXPECT_TRUE(appears("Pi-hole hides the names in its log (its privacy level is 1), so nobody can see which were "
                        "blocked. The level is set on Pi-hole's web page, under Settings, Privacy."));
    pressButton("Done");
}

TEST_F(DailyLife, Every_pause_says_how_long_it_is)
{
    beginOnDashboard();
    for (const auto &[length, sentence] :
         {std::pair{PauseLength::HalfMinute, "Blocking is paused for 30 seconds."},
          {PauseLength::OneHour, "Blocking is paused for 1 hour."},
          {PauseLength::UntilMorning, "Blocking is paused until tomorrow morning, 07:00."}}) {
        run(model().pauseBlocking(length));
        EXPECT_TRUE(appears(sentence));
    }
}

TEST_F(DailyLife, Lists_that_fail_are_named)
{
    beginOnDashboard();
    mac("pihole list-server not-found");
    pressButton("Refresh lists");
    EXPECT_TRUE(appear({"The block lists are loaded.", "raw.githubusercontent.com/StevenBlack/hosts/master/hosts could "
                                                       "not be fetched. Its old copy stays in use."}));
    settle();
    mac("pihole advance 800000");
    run(model().refreshStatus(Stats::Include));
}

} // namespace corvane::test
