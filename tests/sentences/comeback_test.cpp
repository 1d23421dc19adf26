#include "app/flow.h"
#include "tests/sentences/on_screen.h"

namespace corvane::test {

namespace {

/// What is said when Pi-hole comes back by itself.
class ComingBack : public OnScreen {
protected:
    void beginOnDashboard(const char *order)
    {
        begin("protected");
        openDashboard();
        model().comeback()->setStartsAgain(true);
        mac(order);
        launch(model().bootstrap());
    }
};

} // namespace

TEST_F(ComingBack, Is_announced_and_told_afterwards)
{
    beginOnDashboard("container stop");
    EXPECT_TRUE(appears("Pi-hole does not run. Corvane starts it again within 10 seconds (try 1 of 3)."));
    waitFor([this] { return !model().comeback()->history().isEmpty(); }, "it is back");
    EXPECT_TRUE(appears(qPrintable(model().comeback()->history().first())));
    openSettings();
    EXPECT_TRUE(appears("Start Pi-hole again when it stops unasked"));
    EXPECT_TRUE(
        appears("After a login, waking or a crash, while this Mac uses Pi-hole: up to three tries, after 10, 30 "
                "and 120 seconds. Never after you stopped it."));
    click(QStringLiteral("comebackHistoryBoxHeader"));
    EXPECT_TRUE(appears(qPrintable(model().comeback()->history().first())));
}

TEST_F(ComingBack, Is_given_up_with_a_word)
{
    beginOnDashboard("engine stop");
    mac("colima fail error starting vm: not enough memory");
    waitFor([this] { return !model().comeback()->history().isEmpty(); }, "the last try");
    EXPECT_TRUE(appears(qPrintable(model().comeback()->history().first())));
    EXPECT_TRUE(appears("Colima did not start. See the log."));
}

} // namespace corvane::test
