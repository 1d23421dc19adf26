#include "exec/keychain.h"
#include "tests/flows/flow_test.h"

#include <QSignalSpy>

namespace corvane::test {

namespace {

class State : public FlowTest {
protected:
    State()
        : FlowTest(QStringLiteral("bare"))
    {}
};

TestOutcome passedNow() { return {true, QStringLiteral("fine"), QDateTime::currentDateTime()}; }

} // namespace

TEST_F(State, Going_beyond_the_steps_stops_at_the_last_and_the_first)
{
    model().go(9);
    EXPECT_EQ(model().step(), 7);
    model().go(-1);
    EXPECT_EQ(model().step(), 0);
    EXPECT_EQ(model().visited(), (QSet<int>{0, 7}));
}

TEST_F(State, A_step_is_done_when_its_proof_exists)
{
    EXPECT_FALSE(model().isStepDone(0));
    model().go(1);
    EXPECT_TRUE(model().isStepDone(0));

    EXPECT_FALSE(model().isStepDone(1)) << "no rows prove nothing";
    CheckRow row;
    row.state = CheckState::Warning;
    model().setSystemChecks({row});
    EXPECT_TRUE(model().isStepDone(1)) << "warnings count as done";
    row.state = CheckState::Failed;
    model().setSystemChecks({row});
    EXPECT_FALSE(model().isStepDone(1));

    model().setDockerWorks(true);
    EXPECT_TRUE(model().isStepDone(2));
    const QStringList tests{QStringLiteral("pihole"), QStringLiteral("blocking"), QStringLiteral("system"),
                            QStringLiteral("browser")};
    for (int i = 0; i < tests.size(); ++i) {
        EXPECT_FALSE(model().isStepDone(3 + i));
        Outcomes outcomes = model().outcomes();
        outcomes.insert(tests[i], passedNow());
        model().setOutcomes(outcomes);
        EXPECT_TRUE(model().isStepDone(3 + i));
    }
    EXPECT_TRUE(model().isStepDone(7));
}

TEST_F(State, Success_needs_the_pihole_test_and_the_system_test)
{
    model().setOutcomes({{QStringLiteral("pihole"), passedNow()}});
    EXPECT_FALSE(model().setupSucceeded());
    model().setOutcomes({{QStringLiteral("pihole"), passedNow()}, {QStringLiteral("system"), passedNow()}});
    EXPECT_TRUE(model().setupSucceeded());
    model().setOutcomes({{QStringLiteral("pihole"), TestOutcome()}, {QStringLiteral("system"), passedNow()}});
    EXPECT_FALSE(model().setupSucceeded());
}

TEST_F(State, The_banner_waits_for_the_first_check_and_stays_away_once_hidden)
{
    model().setUsedByMac(true);
    EXPECT_FALSE(model().showDeadDNSBanner());
    model().setStatusChecked(true);
    EXPECT_TRUE(model().showDeadDNSBanner());
    model().setAnswering(true);
    EXPECT_FALSE(model().showDeadDNSBanner());
    model().setAnswering(false);
    model().setBannerDismissed(true);
    EXPECT_FALSE(model().showDeadDNSBanner());
}

TEST_F(State, Derived_fields_tell_of_their_changes_and_of_nothing_else)
{
    QSignalSpy icon(&model(), &AppModel::iconChanged);
    model().setStatusChecked(true);
    EXPECT_EQ(icon.count(), 1);
    EXPECT_EQ(model().icon(), MenuIcon::Stopped);
    model().setStatusChecked(true);
    model().setAnswering(false);
    EXPECT_EQ(icon.count(), 1);
}

TEST_F(State, A_setting_is_stored_even_when_it_does_not_change)
{
    QSignalSpy changes(&model(), &AppModel::webPortChanged);
    model().setWebPort(8080);
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(settings.value(QStringLiteral("webPort")).toInt(), 8080);
    model().setWebPort(8083);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(model().dashboardURL().toString().toStdString(), "http://127.0.0.1:8083/admin");
}

TEST_F(State, The_next_launch_reads_the_settings_and_the_password_back)
{
    EXPECT_TRUE(model().showWizard());
    EXPECT_TRUE(model().adminPassword().isEmpty());
    model().setWebPort(8090);
    model().setPinnedTag(QStringLiteral("2026.10.0"));
    model().setAutostartColima(false);
    model().setWizardFinished(true);
    model().setBrowserReadAllowed(true);
    ASSERT_TRUE(Keychain::save(QStringLiteral("secret-word-7")));
    relaunch();
    EXPECT_EQ(model().webPort(), 8090);
    EXPECT_TEXT(model().pinnedTag(), "2026.10.0");
    EXPECT_FALSE(model().autostartColima());
    EXPECT_TRUE(model().wizardFinished());
    EXPECT_TRUE(model().browserReadAllowed());
    EXPECT_FALSE(model().showWizard());
    EXPECT_TEXT(model().adminPassword(), "secret-word-7");
    EXPECT_TRUE(model().outcomes().isEmpty()) << "results do not outlive the program";
}

} // namespace corvane::test
