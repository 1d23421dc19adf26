#include "app/app_model.h"
#include "runtime/docker_cli.h"
#include "ui/decisions/controls.h"

#include <gtest/gtest.h>

namespace corvane {

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

TEST(Controls, A_start_failed_on_a_port_by_its_message_or_by_how_its_operation_ended)
{
    const QString inUse = DockerCLI::friendlyError(QStringLiteral("bind: address already in use"));
    EXPECT_TRUE(startFailedOnPort(AppModel::kPortTaken, std::nullopt));
    EXPECT_TRUE(startFailedOnPort({}, inUse));
    EXPECT_FALSE(startFailedOnPort({}, std::nullopt));
    EXPECT_FALSE(
        startFailedOnPort(QStringLiteral("Docker is not running. Finish step 3 first."), QStringLiteral("Cancelled.")));
}

} // namespace

} // namespace corvane
