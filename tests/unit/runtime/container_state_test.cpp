#include "runtime/container_state.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

TEST(ContainerState, A_running_container_tells_its_health)
{
    EXPECT_EQ(ContainerState::parse(u"running|healthy\n"), ContainerState::running(QStringLiteral("healthy")));
    EXPECT_EQ(ContainerState::parse(u"running|starting"), ContainerState::running(QStringLiteral("starting")));
}

TEST(ContainerState, A_running_container_without_a_second_part_has_no_health_check)
{
    EXPECT_EQ(ContainerState::parse(u"running"), ContainerState::running(QStringLiteral("none")));
    EXPECT_EQ(ContainerState::parse(u"running|"), ContainerState::running(QString()));
}

TEST(ContainerState, Any_other_state_is_stopped_with_that_state)
{
    EXPECT_EQ(ContainerState::parse(u"exited|none\n"), ContainerState::stopped(QStringLiteral("exited")));
    EXPECT_EQ(ContainerState::parse(u"created|none"), ContainerState::stopped(QStringLiteral("created")));
    EXPECT_EQ(ContainerState::parse(u"Running|healthy"), ContainerState::stopped(QStringLiteral("Running")));
}

TEST(ContainerState, No_output_is_stopped_with_an_empty_state)
{
    EXPECT_EQ(ContainerState::parse(u""), ContainerState::stopped(QString()));
    EXPECT_EQ(ContainerState::parse(u" \r\n\n"), ContainerState::stopped(QString()));
    EXPECT_EQ(ContainerState::parse(u"|healthy"), ContainerState::stopped(QString()));
}

TEST(ContainerState, Further_parts_are_ignored)
{
    EXPECT_EQ(ContainerState::parse(u"running|healthy|more"), ContainerState::running(QStringLiteral("healthy")));
}

TEST(ContainerState, The_kinds_are_told_apart)
{
    EXPECT_FALSE(ContainerState::missing() == ContainerState::dockerDown());
    EXPECT_TRUE(ContainerState::missing().isMissing());
    EXPECT_FALSE(ContainerState::dockerDown().isMissing());
    EXPECT_TRUE(ContainerState::running(QStringLiteral("none")).isRunning());
    EXPECT_FALSE(ContainerState::stopped(QStringLiteral("running")).isRunning());
}

} // namespace
} // namespace corvane::test
