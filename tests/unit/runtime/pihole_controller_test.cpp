#include "runtime/pihole_controller.h"
#include "tests/support/fake_tool.h"
#include "tests/support/home_folder.h"
#include "tests/support/result_of.h"

#include <QCoro/QCoroTask>
#include <gtest/gtest.h>

namespace corvane::test {
namespace {

const QString kDocker = QStringLiteral("/opt/homebrew/bin/docker");
const QString kTag = QStringLiteral("2026.09.0");

QStringList words(const char *text) { return QString::fromLatin1(text).split(u' '); }

ContainerState stateNow() { return resultOf(PiholeController::containerState()); }

/// A docker whose engine answers and whose container is inspected by this command.
QByteArray inspecting(const QByteArray &command) { return "[ $1 = info ] && { echo 27.1; exit 0; }\n" + command; }

TEST(ContainerStateOfDocker, Asks_for_the_engine_and_then_for_the_container)
{
    const FakeTool docker(kDocker, inspecting("echo 'running|healthy'"));
    EXPECT_EQ(stateNow(), ContainerState::running(QStringLiteral("healthy")));
    const QList<QStringList> expected{
        words("info --format {{.ServerVersion}}"),
        {QStringLiteral("inspect"), QStringLiteral("--format"),
         QStringLiteral("{{.State.Status}}|{{if .State.Health}}{{.State.Health.Status}}{{else}}none{{end}}"),
         QStringLiteral("pihole")},
    };
    EXPECT_EQ(docker.calls(), expected);
}

TEST(ContainerStateOfDocker, Is_docker_down_without_asking_for_the_container)
{
    const FakeTool docker(kDocker, "echo 'Cannot connect to the Docker daemon' >&2; exit 1");
    EXPECT_EQ(stateNow(), ContainerState::dockerDown());
    EXPECT_EQ(docker.calls().size(), 1);
}

TEST(ContainerStateOfDocker, Without_docker_is_docker_down) { EXPECT_EQ(stateNow(), ContainerState::dockerDown()); }

TEST(ContainerStateOfDocker, Is_missing_when_the_container_cannot_be_inspected)
{
    const FakeTool docker(kDocker, inspecting("echo '[]'; echo 'Error: No such object: pihole' >&2; exit 1"));
    EXPECT_EQ(stateNow(), ContainerState::missing());
}

TEST(ContainerStateOfDocker, Is_stopped_with_an_empty_state_when_nothing_is_printed)
{
    const FakeTool docker(kDocker, inspecting("exit 0"));
    EXPECT_EQ(stateNow(), ContainerState::stopped(QString()));
}

TEST(AskingDig, Uses_the_fixed_arguments)
{
    const FakeTool dig(QStringLiteral("/usr/bin/dig"), printing(recorded("dig_noerror.txt").toUtf8()));
    const auto ask = [](Transport transport) {
        return QCoro::waitFor(PiholeController::dig(QStringLiteral("example.org"), QStringLiteral("AAAA"), transport,
                                                    QStringLiteral("127.0.0.1")));
    };
    EXPECT_TRUE(ask(Transport::Udp).answered());
    EXPECT_TRUE(ask(Transport::Tcp).answered());
    EXPECT_TRUE(QCoro::waitFor(PiholeController::ask(QStringLiteral("example.org"))).answered());
    const QList<QStringList> expected{
        words("@127.0.0.1 -p 53 +time=3 +tries=1 +noall +comments +answer example.org AAAA"),
        words("@127.0.0.1 -p 53 +time=3 +tries=1 +noall +comments +answer +tcp example.org AAAA"),
        words("@127.0.0.1 -p 53 +time=3 +tries=1 +noall +comments +answer example.org A"),
    };
    EXPECT_EQ(dig.calls(), expected);
}

TEST(ContainerLog, Is_what_docker_printed_on_both_streams)
{
    const FakeTool docker(kDocker, "echo ' started'; echo 'warning ' >&2");
    EXPECT_EQ(QCoro::waitFor(PiholeController::logs(300)), QStringLiteral("started\nwarning"));
    EXPECT_EQ(docker.calls(), QList<QStringList>{words("logs --tail 300 pihole")});
}

TEST(ContainerLog, Of_a_silent_container_says_so)
{
    const FakeTool docker(kDocker, "echo; echo ' ' >&2");
    EXPECT_EQ(QCoro::waitFor(PiholeController::logs(300)), QStringLiteral("(no log output)"));
}

TEST(ContainerLog, Without_docker_says_so)
{
    EXPECT_EQ(QCoro::waitFor(PiholeController::logs(300)), QStringLiteral("docker was not found."));
}

class PiholeSteps : public testing::Test {
protected:
    HomeFolder m_home;
    const FakeTool m_docker{kDocker, ""};
    const QString m_compose = PiholeController::composeFile();

    [[nodiscard]] CommandStep step(const char *label, const QStringList &args, bool allowFailure = false) const
    {
        return {.label = QString::fromLatin1(label), .exe = kDocker, .args = args, .allowFailure = allowFailure};
    }
    const CommandStep m_remove = step("docker rm -f pihole (volumes are kept)", words("rm -f pihole"), true);
};

TEST(PiholeStepsWithoutDocker, Are_empty)
{
    for (const bool compose : {false, true}) {
        EXPECT_TRUE(PiholeController::pullSteps(kTag, compose).isEmpty());
        EXPECT_TRUE(PiholeController::upSteps(kTag, 8080, compose).isEmpty());
    }
}

TEST_F(PiholeSteps, Pulling_with_compose_reads_the_project)
{
    const QStringList args{QStringLiteral("compose"), QStringLiteral("-f"), m_compose, QStringLiteral("pull")};
    EXPECT_EQ(PiholeController::pullSteps(kTag, true), CommandSteps{step("docker compose pull", args)});
}

TEST_F(PiholeSteps, Pulling_without_compose_names_the_image)
{
    EXPECT_EQ(PiholeController::pullSteps(kTag, false),
              CommandSteps{step("docker pull pihole/pihole:2026.09.0", words("pull pihole/pihole:2026.09.0"))});
}

TEST_F(PiholeSteps, Starting_with_compose_removes_the_old_container_first)
{
    const QStringList args{QStringLiteral("compose"), QStringLiteral("-f"), m_compose, QStringLiteral("up"),
                           QStringLiteral("-d")};
    EXPECT_EQ(PiholeController::upSteps(kTag, 8080, true),
              (CommandSteps{m_remove, step("docker compose up -d", args)}));
}

TEST_F(PiholeSteps, Starting_without_compose_gives_the_same_container_in_27_arguments)
{
    const QStringList args =
        words("run -d --name pihole --restart unless-stopped -p 127.0.0.1:53:53/tcp -p 127.0.0.1:53:53/udp "
              "-p 127.0.0.1:8085:80/tcp -e") +
        QStringList(QStringLiteral("TZ=") + PiholeController::safeTimeZone()) +
        words("-e FTLCONF_dns_upstreams=1.1.1.1 -e FTLCONF_dns_listeningMode=ALL -e FTLCONF_misc_etc_dnsmasq_d=true "
              "--env-file") +
        QStringList(PiholeController::environmentFile()) +
        words("-v pihole_etc:/etc/pihole -v pihole_dnsmasq:/etc/dnsmasq.d pihole/pihole:2026.09.0");
    ASSERT_EQ(args.size(), 27);
    EXPECT_EQ(PiholeController::upSteps(kTag, 8085, false),
              (CommandSteps{m_remove, step("docker run -d --name pihole ...", args)}));
}

TEST(TimeLimits, Of_docker_are_ten_seconds_and_twenty_for_the_log)
{
    EXPECT_EQ(PiholeController::kQuickTimeout, std::chrono::seconds(10));
    EXPECT_EQ(PiholeController::kLogTimeout, std::chrono::seconds(20));
}

TEST(ContainerLog, Is_plain_text_in_the_order_in_which_it_was_written)
{
    const FakeTool docker(kDocker, "printf '  [i] Preparing...\\r\\033[K'; printf '  [ok] Preparing\\n'\n"
                                   "printf 'a complaint\\n' >&2; printf 'the end\\n'");
    EXPECT_EQ(QCoro::waitFor(PiholeController::logs(300)),
              QStringLiteral("[i] Preparing...\n  [ok] Preparing\na complaint\nthe end"));
}

} // namespace
} // namespace corvane::test
