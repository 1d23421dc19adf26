#include "tests/flows/in_state.h"

namespace corvane::test {

namespace {

const char *const kChanged = "Pi-hole was changed during this test. Test again.";

/// A test of the user's while Colima is being started, which changes Pi-hole under it.
class Disturbed : public Protected {
protected:
    Disturbed() { Mac::ctl(QStringLiteral("pihole log-delay 0")); }

    void beginChange()
    {
        Mac::ctl({QStringLiteral("fault"), QStringLiteral("colima"), QStringLiteral("hang"), QStringLiteral("--when"),
                  QStringLiteral("start*")});
        model().startColimaOnly();
        waitFor([this] { return model().installOp()->running(); }, "the change to begin");
    }

    void endChange()
    {
        model().installOp()->cancel();
        waitFor([this] { return quiet(); }, "the change to end");
        Mac::ctl(QStringLiteral("fault clear"));
    }

    QString note(const char *key) { return model().notes().value(QString::fromLatin1(key)).toString(); }
    bool hasOutcome(const char *key) { return model().outcomes().contains(QString::fromLatin1(key)); }
};

} // namespace

TEST_F(Disturbed, The_blocking_test_gives_no_reason_that_may_be_false)
{
    beginChange();
    Mac::ctl(QStringLiteral("engine stop"));
    run(model().runBlockingTest());
    EXPECT_TEXT(note("blocking"), kChanged);
    EXPECT_FALSE(model().blockingTest()->note);
    EXPECT_FALSE(hasOutcome("blocking"));

    endChange();
    run(model().runBlockingTest());
    EXPECT_TEXT(note("blocking"), "");
    EXPECT_TRUE(model().blockingTest()->note);
    EXPECT_TRUE(hasOutcome("blocking"));
}

TEST_F(Disturbed, What_passes_passes)
{
    beginChange();
    run(model().runBlockingTest());
    run(model().runSystemTest());
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("blocking")));
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("system")));
    endChange();
}

TEST_F(Disturbed, A_change_that_is_over_by_the_end_counts_too)
{
    auto test = model().runSystemTest();
    beginChange();
    Mac::ctl(QStringLiteral("engine stop"));
    endChange();
    run(std::move(test));
    EXPECT_TEXT(model().systemTestDetail(), kChanged);
    EXPECT_FALSE(hasOutcome("system"));
}

TEST_F(Disturbed, This_macs_lookups_are_not_blamed_on_its_settings)
{
    model().setNotes({{QStringLiteral("system"), QStringLiteral("What an earlier test found.")}});
    beginChange();
    Mac::ctl(QStringLiteral("engine stop"));
    run(model().runSystemTest());
    EXPECT_TEXT(model().systemTestDetail(), kChanged);
    EXPECT_TEXT(note("system"), "");
    EXPECT_FALSE(hasOutcome("system"));

    endChange();
    run(model().runSystemTest());
    EXPECT_TRUE(model().systemTestDetail().startsWith(QStringLiteral("0 of 3 test lookups")));
    EXPECT_TRUE(hasOutcome("system"));
}

TEST_F(Disturbed, A_browser_is_not_blamed_either)
{
    Mac::ctl(QStringLiteral("app add com.google.Chrome"));
    model().setBrowserReadAllowed(true);
    run(model().scanBrowsers());
    beginChange();
    Mac::ctl(QStringLiteral("engine stop"));
    run(model().runBrowserTest());
    EXPECT_TEXT(model().browserTestDetail(), kChanged);
    EXPECT_FALSE(hasOutcome("browser"));
    run(model().proveBrowser(QStringLiteral("chrome")));
    EXPECT_EQ(model().browserProofs().value(QStringLiteral("chrome")), BrowserProof::Disturbed);
    endChange();
}

} // namespace corvane::test
