#include "runtime/docker_cli.h"
#include "tests/support/fake_tool.h"

#include <QCoro/QCoroTask>
#include <gtest/gtest.h>

namespace corvane::test {
namespace {

using namespace std::chrono_literals;

const QString kHomebrew = QStringLiteral("/opt/homebrew/bin/docker");
const QString kLocal = QStringLiteral("/usr/local/bin/docker");
const QString kApplication = QStringLiteral("/Applications/Docker.app/Contents/Resources/bin/docker");

TEST(DockerCLI, Is_found_in_its_three_folders_in_order)
{
    EXPECT_EQ(DockerCLI::find(), std::nullopt);
    const FakeTool application(kApplication, "");
    EXPECT_EQ(DockerCLI::find(), kApplication);
    const FakeTool local(kLocal, "");
    EXPECT_EQ(DockerCLI::find(), kLocal);
    const FakeTool homebrew(kHomebrew, "");
    EXPECT_EQ(DockerCLI::find(), kHomebrew);
}

TEST(DockerCLI, Is_not_looked_for_anywhere_else)
{
    const FakeTool elsewhere(QStringLiteral("/usr/sbin/docker"), "");
    EXPECT_EQ(DockerCLI::find(), std::nullopt);
}

TEST(DockerCLI, Without_docker_says_so_and_starts_nothing)
{
    const CommandResult result = QCoro::waitFor(DockerCLI::run({QStringLiteral("info")}, 10s));
    EXPECT_EQ(result.status, -1);
    EXPECT_EQ(result.standardOutput, QString());
    EXPECT_EQ(result.standardError, QString());
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.launchError, QStringLiteral("docker was not found"));
}

TEST(DockerCLI, Hands_on_the_arguments_and_the_result)
{
    const FakeTool docker(kHomebrew, "echo out; echo err >&2; exit 7");
    const QStringList args{QStringLiteral("ps"), QStringLiteral("--filter"), QStringLiteral("name=a b'\"ü"), QString()};
    const CommandResult result = QCoro::waitFor(DockerCLI::run(args, 10s));
    EXPECT_EQ(docker.calls(), QList<QStringList>{args});
    EXPECT_EQ(result.status, 7);
    EXPECT_EQ(result.standardOutput, QStringLiteral("out\n"));
    EXPECT_EQ(result.standardError, QStringLiteral("err\n"));
    EXPECT_EQ(result.launchError, std::nullopt);
}

TEST(DockerCLI, An_engine_answers_when_a_version_is_printed)
{
    const FakeTool docker(kHomebrew, "echo 28.4.0");
    EXPECT_TRUE(QCoro::waitFor(DockerCLI::engine()).answers);
    const QList<QStringList> calls = docker.calls();
    ASSERT_EQ(calls.size(), 1);
    EXPECT_EQ(calls.first().join(u' '), QStringLiteral("info --format {{.ServerVersion}}"));
}

TEST(DockerCLI, A_client_that_ends_well_without_a_version_has_no_engine)
{
    // So did the clients of 2023 and 2024 when no engine answered.
    const FakeTool docker(kHomebrew, "echo; echo 'Cannot connect to the Docker daemon' >&2");
    const EngineAnswer engine = QCoro::waitFor(DockerCLI::engine());
    EXPECT_FALSE(engine.answers);
    EXPECT_EQ(engine.problem, QString());
}

TEST(DockerCLI, A_client_of_another_age_than_the_engine_is_told)
{
    const FakeTool docker(kHomebrew, "echo; echo 'Error response from daemon: client version 1.43 is too old. Minimum "
                                     "supported API version is 1.44' >&2");
    const EngineAnswer engine = QCoro::waitFor(DockerCLI::engine());
    EXPECT_FALSE(engine.answers);
    EXPECT_EQ(engine.problem, QStringLiteral("Docker's client is too old for the engine in Colima. Run 'brew upgrade "
                                             "docker' in Terminal, then try again."));
    EXPECT_EQ(DockerCLI::friendlyError(QStringLiteral("client version 1.52 is too new. Maximum supported API version "
                                                      "is 1.51")),
              QStringLiteral("Docker's client is too new for the engine in Colima. Run 'brew upgrade colima' in "
                             "Terminal, then restart Colima."));
}

TEST(DockerCLI, Is_stopped_at_the_time_limit)
{
    const FakeTool docker(kHomebrew, "echo begun; exec sleep 30");
    const CommandResult result = QCoro::waitFor(DockerCLI::run({QStringLiteral("info")}, 300ms));
    EXPECT_TRUE(result.timedOut);
    EXPECT_EQ(result.standardOutput, QStringLiteral("begun\n"));
}

} // namespace
} // namespace corvane::test
