#include "app/app_model.h"
#include "app/wizard_steps.h"
#include "runtime/docker_cli.h"
#include "ui/decisions/controls.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

TEST(Controls, Start_is_off_while_Pi_hole_runs_and_Stop_while_it_does_not)
{
    const ContainerState running = ContainerState::running(QStringLiteral("healthy"));
    EXPECT_FALSE(canStart(running, false));
    EXPECT_TRUE(canStopOrRestart(running, false));
    for (const ContainerState &state :
         {ContainerState::stopped(QStringLiteral("exited")), ContainerState::missing(), ContainerState::dockerDown()}) {
        EXPECT_TRUE(canStart(state, false));
        EXPECT_FALSE(canStopOrRestart(state, false));
    }
}

TEST(Controls, Both_are_off_while_an_operation_runs)
{
    EXPECT_FALSE(canStart(ContainerState::missing(), true));
    EXPECT_FALSE(canStopOrRestart(ContainerState::running({}), true));
}

TEST(Controls, What_changes_Pi_hole_waits_for_operations_and_for_the_container)
{
    EXPECT_TRUE(canChangePihole(false, false));
    EXPECT_FALSE(canChangePihole(true, false));
    EXPECT_FALSE(canChangePihole(false, true));
    EXPECT_TRUE(canRefreshLists(true, true));
    EXPECT_FALSE(canRefreshLists(true, false));
    EXPECT_FALSE(canRefreshLists(false, true));
}

TEST(Controls, The_set_up_starts_Pi_hole_with_Docker_and_a_good_password_only)
{
    const QString good = QStringLiteral("correct-horse");
    EXPECT_TRUE(canSetUpPihole(false, true, good));
    EXPECT_FALSE(canSetUpPihole(true, true, good));
    EXPECT_FALSE(canSetUpPihole(false, false, good));
    EXPECT_FALSE(canSetUpPihole(false, true, QStringLiteral("short")));
    EXPECT_FALSE(canSetUpPihole(false, true, QStringLiteral("correct horse")));
}

TEST(Controls, Removal_waits_for_operations_and_for_a_change_of_the_servers)
{
    EXPECT_TRUE(canRemovePihole(false, false));
    EXPECT_FALSE(canRemovePihole(true, false));
    EXPECT_FALSE(canRemovePihole(false, true));
}

TEST(Controls, The_servers_are_changed_for_a_chosen_service_and_not_while_they_are_restored)
{
    const QSet<QString> wifi{QStringLiteral("Wi-Fi")};
    EXPECT_TRUE(canChangeDns(wifi, false));
    EXPECT_FALSE(canChangeDns(wifi, true));
    EXPECT_FALSE(canChangeDns({}, false));
}

TEST(Controls, A_service_is_asked_for_when_there_are_some_and_nothing_else_is_said)
{
    const QSet<QString> wifi{QStringLiteral("Wi-Fi")};
    EXPECT_TRUE(mustPickService({}, true, {}));
    EXPECT_FALSE(mustPickService({}, true, wifi));
    EXPECT_FALSE(mustPickService({}, false, {}));
    EXPECT_FALSE(mustPickService(QStringLiteral("Cancelled."), true, {}));
}

TEST(Controls, No_browser_is_found_only_after_a_look_that_was_allowed)
{
    EXPECT_TRUE(foundNoBrowser(true, false, false));
    EXPECT_FALSE(foundNoBrowser(false, false, false));
    EXPECT_FALSE(foundNoBrowser(true, true, false));
    EXPECT_FALSE(foundNoBrowser(true, false, true));
}

class ReturnWaitsFor : public testing::TestWithParam<const char *> {};

TEST_P(ReturnWaitsFor, What_a_button_of_the_set_up_began)
{
    EXPECT_FALSE(returnGoesOn(0, false, {QString::fromLatin1(GetParam())}));
}

INSTANTIATE_TEST_SUITE_P(Keys, ReturnWaitsFor,
                         testing::Values("container", "checks", "docker", "pihole", "blocking", "system", "services",
                                         "applydns", "restoredns", "browser"));

TEST(Controls, Return_goes_on_except_during_an_operation_and_on_the_last_step)
{
    EXPECT_TRUE(returnGoesOn(0, false, {}));
    EXPECT_TRUE(returnGoesOn(0, false, {QStringLiteral("logs")}));
    EXPECT_FALSE(returnGoesOn(0, true, {}));
    EXPECT_TRUE(returnGoesOn(kLastStep - 1, false, {}));
    EXPECT_FALSE(returnGoesOn(kLastStep, false, {}));
}

TEST(Controls, A_start_failed_on_a_port_by_its_message_or_by_how_its_operation_ended)
{
    const QString inUse = DockerCLI::friendlyError(QStringLiteral("bind: address already in use"));
    EXPECT_TRUE(startFailedOnPort(AppModel::kPortTaken, std::nullopt));
    EXPECT_TRUE(startFailedOnPort({}, inUse));
    EXPECT_FALSE(startFailedOnPort({}, std::nullopt));
    EXPECT_FALSE(
        startFailedOnPort(QStringLiteral("Docker is not running. Finish step 3 first."), QStringLiteral("Cancelled.")));
}

TEST(Controls, What_is_being_prepared_is_told_until_its_operation_shows_steps)
{
    const Activities start(Activity::StartPihole);
    EXPECT_EQ(startInPreparation(start, false), QStringLiteral("Getting ready..."));
    EXPECT_EQ(startInPreparation(start, true), QString());
    EXPECT_EQ(startInPreparation({}, false), QString());

    const Activities update(Activity::Update);
    EXPECT_EQ(updateInPreparation(update, false), QStringLiteral("Saving a backup first..."));
    EXPECT_EQ(updateInPreparation(update, true), QString());
    EXPECT_EQ(updateInPreparation(update | Activity::Exchange, false), QString());
    EXPECT_EQ(updateInPreparation(Activity::BringBack, false), QStringLiteral("Getting ready..."));
    EXPECT_EQ(updateInPreparation({}, false), QString());
}

} // namespace

} // namespace corvane::test
