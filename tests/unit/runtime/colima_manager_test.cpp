#include "runtime/colima_manager.h"
#include "tests/support/fake_tool.h"

#include <QCoro/QCoroTask>
#include <gtest/gtest.h>

namespace corvane::test {
namespace {

const QString kBrew = QStringLiteral("/opt/homebrew/bin/brew");
const QString kColima = QStringLiteral("/opt/homebrew/bin/colima");
const QString kLocalBrew = QStringLiteral("/usr/local/bin/brew");
const QString kLocalColima = QStringLiteral("/usr/local/bin/colima");

QStringList words(const char *text) { return QString::fromLatin1(text).split(u' '); }

const QStringList kStart = words("start --cpu 2 --memory 2 --disk 10");

CommandStep step(const char *label, const QString &exe, const QStringList &args, bool allowFailure = false)
{
    return {.label = QString::fromLatin1(label), .exe = exe, .args = args, .allowFailure = allowFailure};
}

TEST(ColimaManager, Without_any_tool_every_list_is_empty)
{
    EXPECT_EQ(ColimaManager::expectedColimaPath(), std::nullopt);
    EXPECT_TRUE(ColimaManager::installSteps().isEmpty());
    EXPECT_TRUE(ColimaManager::startSteps().isEmpty());
    EXPECT_TRUE(ColimaManager::autostartSteps(true, true).isEmpty());
    EXPECT_TRUE(ColimaManager::autostartSteps(false, true).isEmpty());
    EXPECT_TRUE(ColimaManager::restartWithGrpcSteps().isEmpty());
}

TEST(ColimaManager, Before_the_installation_colima_is_expected_beside_brew)
{
    const FakeTool brew(kLocalBrew, "");
    const CommandSteps steps = ColimaManager::installSteps();
    ASSERT_EQ(steps.size(), 2);
    EXPECT_EQ(steps[1].exe, kLocalColima);
    EXPECT_EQ(ColimaManager::expectedColimaPath(), kLocalColima);
}

TEST(ColimaManager, Installing_is_brew_and_then_the_first_start)
{
    const FakeTool brew(kBrew, "");
    CommandStep install = step("brew install colima docker", kBrew, words("install colima docker"));
    install.env.insert(QStringLiteral("HOMEBREW_NO_ENV_HINTS"), QStringLiteral("1"));
    install.env.insert(QStringLiteral("HOMEBREW_NO_ASK"), QStringLiteral("1"));
    const CommandSteps expected{install, step("colima start --cpu 2 --memory 2 --disk 10", kColima, kStart)};
    EXPECT_EQ(ColimaManager::installSteps(), expected);
}

TEST(ColimaManager, An_installed_colima_is_preferred_to_the_expected_one)
{
    const FakeTool brew(kBrew, "");
    const FakeTool colima(kLocalColima, "");
    EXPECT_EQ(ColimaManager::expectedColimaPath(), kLocalColima);
    EXPECT_EQ(ColimaManager::installSteps()[1].exe, kLocalColima);
}

TEST(ColimaManager, Installing_needs_brew_even_with_colima)
{
    const FakeTool colima(kColima, "");
    EXPECT_TRUE(ColimaManager::installSteps().isEmpty());
    EXPECT_EQ(ColimaManager::expectedColimaPath(), kColima);
}

TEST(ColimaManager, Homebrew_of_apple_silicon_comes_before_the_other_one)
{
    const FakeTool first(kBrew, "");
    const FakeTool second(kLocalBrew, "");
    EXPECT_EQ(ColimaManager::installSteps()[0].exe, kBrew);
}

TEST(ColimaManager, A_tool_that_was_just_installed_is_found_at_the_next_call)
{
    EXPECT_TRUE(ColimaManager::startSteps().isEmpty());
    const FakeTool colima(kColima, "");
    const CommandStep start = step("colima start", kColima, kStart);
    EXPECT_EQ(ColimaManager::startSteps(), CommandSteps{start});
    const CommandStep clearAway = step("colima stop --force", kColima, words("stop --force"), true);
    EXPECT_EQ(ColimaManager::startSteps(true), (CommandSteps{clearAway, start}));
}

TEST(ColimaManager, Switching_autostart_on_stops_a_running_colima_first)
{
    const FakeTool brew(kBrew, "");
    const FakeTool colima(kColima, "");
    const CommandStep service = step("brew services start colima", kBrew, words("services start colima"));
    const CommandStep stop = step("colima stop (the login service restarts it)", kColima, words("stop"), true);
    EXPECT_EQ(ColimaManager::autostartSteps(true, true), (CommandSteps{stop, service}));
    EXPECT_EQ(ColimaManager::autostartSteps(true, false), CommandSteps{service});
}

TEST(ColimaManager, Switching_autostart_off_leaves_colima_running)
{
    const FakeTool brew(kBrew, "");
    const FakeTool colima(kColima, "");
    const CommandSteps expected{
        step("brew services stop colima", kBrew, words("services stop colima"), true),
        step("colima start", kColima, kStart),
    };
    EXPECT_EQ(ColimaManager::autostartSteps(false, true), expected);
    EXPECT_EQ(ColimaManager::autostartSteps(false, false), expected);
}

TEST(ColimaManager, Autostart_needs_both_tools)
{
    {
        const FakeTool brew(kBrew, "");
        EXPECT_TRUE(ColimaManager::autostartSteps(true, true).isEmpty());
    }
    const FakeTool colima(kColima, "");
    EXPECT_TRUE(ColimaManager::autostartSteps(false, true).isEmpty());
}

TEST(ColimaManager, The_restart_with_the_other_forwarder_keeps_the_sizes)
{
    const FakeTool colima(kColima, "");
    const CommandSteps expected{
        step("colima stop", kColima, words("stop"), true),
        step("colima start --port-forwarder grpc", kColima, kStart + words("--port-forwarder grpc")),
    };
    EXPECT_EQ(ColimaManager::restartWithGrpcSteps(), expected);
}

bool supportsFlag() { return QCoro::waitFor(ColimaManager::supportsPortForwarderFlag()); }

TEST(ColimaManager, The_forwarder_option_is_looked_for_in_the_help)
{
    const FakeTool colima(kColima, printing("Flags:\n      --port-forwarder string   port forwarder (ssh, grpc)"));
    EXPECT_TRUE(supportsFlag());
    EXPECT_EQ(colima.calls(), QList<QStringList>{words("start --help")});
}

TEST(ColimaManager, The_forwarder_option_counts_wherever_it_is_printed)
{
    const FakeTool colima(kColima, "echo 'usage: --port-forwarder' >&2; exit 1");
    EXPECT_TRUE(supportsFlag());
}

TEST(ColimaManager, An_older_colima_does_not_know_the_forwarder_option)
{
    const FakeTool colima(kColima, printing("Flags:\n      --port-forward   something else"));
    EXPECT_FALSE(supportsFlag());
}

TEST(ColimaManager, Without_colima_there_is_no_forwarder_option) { EXPECT_FALSE(supportsFlag()); }

} // namespace
} // namespace corvane::test
