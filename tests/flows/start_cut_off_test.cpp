#include "app/password_work.h"
#include "tests/flows/exchange.h"

namespace corvane::test {

namespace {

constexpr const char *kRefused = "Pi-hole refused the admin password.";
constexpr const char *kNotMadeAnew =
    "Corvane has a newer admin password than Pi-hole: the start that was to bring it did not come to its end. Press "
    "'Start Pi-hole' in step 4 of the wizard.";

/// Pi-hole runs, and a start that gives it another password does not come to its end.
class StartCutOff : public ExchangeTest {
protected:
    void startUpTo(const QString &command)
    {
        Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("hang"), QStringLiteral("--when"),
                  command + QStringLiteral(" *")});
        model().setPasswordInput(QStringLiteral("another-word-7"));
        launch(model().startPihole());
        waitForCall(command);
        Mac::ctl(QStringLiteral("fault clear"));
    }

    void expectCounters(const char *message, const char *note)
    {
        run(model().refreshStatus(Stats::Include));
        EXPECT_TEXT(model().apiMessage(), message);
        EXPECT_TEXT(model().notes().value(QStringLiteral("api")).toString(), note);
    }
};

} // namespace

TEST_F(StartCutOff, Is_told_at_the_next_start_and_mended_by_the_way_that_is_told)
{
    startUpTo(QStringLiteral("pull"));
    relaunch();
    EXPECT_TEXT(model().adminPassword(), "another-word-7");
    expectCounters(kRefused, kNotMadeAnew);
    model().setPasswordInput(model().adminPassword());
    run(model().startPihole());
    relaunch();
    expectCounters("", "");
    EXPECT_TRUE(model().summary());
}

TEST_F(StartCutOff, Is_told_as_long_as_it_holds)
{
    startUpTo(QStringLiteral("pull"));
    relaunch();
    expectCounters(kRefused, kNotMadeAnew);
    relaunch();
    expectCounters(kRefused, kNotMadeAnew);
    run(model().changeWebPort(8083));
    expectCounters("", "");
}

TEST_F(StartCutOff, By_cancelling_is_told_at_once)
{
    startUpTo(QStringLiteral("pull"));
    model().startOp()->cancel();
    waitFor([this] { return quiet(); }, "it was cancelled");
    expectCounters(kRefused, kNotMadeAnew);
}

TEST_F(StartCutOff, Is_forgotten_with_a_pihole_that_was_removed)
{
    startUpTo(QStringLiteral("pull"));
    relaunch();
    run(model().removePihole());
    EXPECT_FALSE(settings.value(QStringLiteral("newPassword")).toBool());
}

TEST_F(StartCutOff, Is_not_to_blame_for_a_password_that_was_changed_elsewhere)
{
    model().setPasswordInput(QStringLiteral("another-word-7"));
    run(model().startPihole());
    expectCounters("", "");
    takePassword(model(), QStringLiteral("one-of-nobody"));
    expectCounters(kRefused, "");
}

} // namespace corvane::test
