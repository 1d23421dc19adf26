#include "runtime/docker_cli.h"
#include "runtime/pihole_controller.h"
#include "tests/flows/in_state.h"
#include "tests/support/result_of.h"

#include <QDir>
#include <QFile>

namespace corvane::test {

namespace {

const QString kPassword = QStringLiteral("Fresh-Word_7.@+");
constexpr std::chrono::minutes kPatience{1};

const char *const kPortInUse = "A port that Pi-hole needs is already in use. Pick another web port (8081 to 8090) or "
                               "stop whatever uses port 53.";
const char *const kNotRunning = "Docker is not running. Start Colima first (step 3).";
const char *const kNoInternet = "Docker could not reach the internet to download Pi-hole. Check your connection (and "
                                "any VPN) and try again.";

/// Runs the real docker; `words` are separated by blanks.
CommandResult docker(const QString &words)
{
    return resultOf(DockerCLI::run(words.split(u' ', Qt::SkipEmptyParts), kPatience));
}

QString saidBy(const QString &words) { return DockerCLI::friendlyError(docker(words).combined()); }

QString inspected(const QString &format)
{
    const QStringList words{QStringLiteral("inspect"), QStringLiteral("--format"), format, QStringLiteral("pihole")};
    return resultOf(DockerCLI::run(words, kPatience)).standardOutput.trimmed();
}

/// Runs a line of Python in the container; whether that went well.
bool inPihole(const QString &line)
{
    return docker(QStringLiteral("exec pihole /usr/bin/python3 -S -c ") + line).succeeded();
}

ContainerState containerState() { return resultOf(PiholeController::containerState()); }

bool answers(Transport transport)
{
    const DigResult answer = resultOf(PiholeController::ask(QStringLiteral("example.com"), transport));
    return answer.ok && answer.status == QStringLiteral("NOERROR") && !answer.answers.isEmpty();
}

/// A real Docker engine in Colima's place, with no container at first.
class RealEngine : public Engine {
protected:
    void setUpPihole()
    {
        model().setPasswordInput(kPassword);
        run(model().startPihole());
        waitForOperation(model().startOp());
        ASSERT_TRUE(model().startOp()->succeeded()) << model().startOp()->lines().join(u'\n').toStdString();
    }

    void expectHealthy()
    {
        waitFor([] { return containerState() == ContainerState::running(QStringLiteral("healthy")); }, "it is healthy");
    }
};

} // namespace

TEST_F(RealEngine, A_first_start_gives_a_healthy_pihole_that_answers_and_lets_the_password_in)
{
    EXPECT_EQ(containerState(), ContainerState::missing());
    setUpPihole();
    EXPECT_EQ(containerState(), ContainerState::running(QStringLiteral("healthy")));
    EXPECT_TRUE(answers(Transport::Udp)) << "over UDP";
    EXPECT_TRUE(answers(Transport::Tcp)) << "over TCP";
    for (const CheckRow &row : model().piholeChecks())
        EXPECT_EQ(row.state, CheckState::Ok) << row.id.toStdString() << ": " << row.detail.toStdString();
    EXPECT_EQ(model().piholeChecks().size(), 3);
    EXPECT_TRUE(model().summary()) << "Pi-hole lets the new password in";
}

TEST_F(RealEngine, The_container_is_reached_from_this_mac_alone_and_comes_back_by_itself)
{
    setUpPihole();
    EXPECT_TEXT(inspected(QStringLiteral("{{.HostConfig.RestartPolicy.Name}}")), "unless-stopped");
    EXPECT_TEXT(inspected(QStringLiteral("{{range $port, $places := .HostConfig.PortBindings}}{{$port}}={{range "
                                         "$places}}{{.HostIp}}:{{.HostPort}} {{end}}{{end}}")),
                "53/tcp=127.0.0.1:53 53/udp=127.0.0.1:53 80/tcp=127.0.0.1:8080");
    EXPECT_TEXT(inspected(QStringLiteral("{{range .Mounts}}{{.Name}}={{.Destination}} {{end}}"))
                    .split(u' ')
                    .filter(QStringLiteral("pihole_etc"))
                    .join(u' '),
                "pihole_etc=/etc/pihole");
    EXPECT_FALSE(docker(QStringLiteral("ps --all --no-trunc")).combined().contains(kPassword));
}

TEST_F(RealEngine, Stop_start_and_restart_are_followed_by_the_status)
{
    setUpPihole();
    run(model().stopPihole());
    EXPECT_TEXT(model().startMessage(), "");
    EXPECT_EQ(model().containerState(), ContainerState::stopped(QStringLiteral("exited")));
    EXPECT_FALSE(model().answering());

    run(model().startPiholeNow());
    EXPECT_TEXT(model().startMessage(), "");
    EXPECT_TRUE(model().containerState().isRunning());
    expectHealthy();

    const QString before = inspected(QStringLiteral("{{.State.StartedAt}}"));
    run(model().restartPihole());
    EXPECT_TEXT(model().startMessage(), "");
    EXPECT_NE(inspected(QStringLiteral("{{.State.StartedAt}}")), before);
    expectHealthy();
    EXPECT_TRUE(answers(Transport::Udp));
}

TEST_F(RealEngine, The_log_is_read_and_followed)
{
    setUpPihole();
    run(model().loadLogs());
    EXPECT_TRUE(model().logText().contains(QStringLiteral("FTL is running"))) << model().logText().toStdString();

    model().setFollowing(true);
    waitFor([this] { return model().followOp()->lineCount() > 5; }, "lines are followed");
    EXPECT_TRUE(answers(Transport::Tcp));
    run(model().pauseBlocking());
    waitFor([this] { return model().logText().contains(QStringLiteral("Blocking status is disabled")); }, "the pause");
    EXPECT_FALSE(model().logText().contains(QStringLiteral("example.com"))) << "no question is in it";
    model().setFollowing(false);
    waitFor([this] { return !model().followOp()->running(); }, "the follower ended");

    model().setFollowing(true);
    waitFor([this] { return model().followOp()->lineCount() > 5; }, "lines are followed again");
    run(model().stopPihole());
    waitFor([this] { return !model().following(); }, "Follow went off with the container");
}

TEST_F(RealEngine, A_machine_that_stops_takes_docker_away_and_brings_pihole_back_when_it_starts)
{
    setUpPihole();
    Mac::ctl(QStringLiteral("engine stop"));
    run(model().refreshStatus(Stats::Include));
    EXPECT_EQ(model().containerState(), ContainerState::dockerDown());
    EXPECT_FALSE(model().answering());
    run(model().stopPihole());
    EXPECT_TEXT(model().startMessage(), kNotRunning);
    EXPECT_TEXT(saidBy(QStringLiteral("pull pihole/pihole:2026.10.0")), kNotRunning);

    run(model().startPiholeNow());
    waitForOperation(model().maintOp());
    EXPECT_TRUE(model().maintOp()->succeeded());
    EXPECT_TEXT(model().startMessage(), "");
    expectHealthy();
    EXPECT_TRUE(answers(Transport::Udp));
}

TEST_F(RealEngine, An_update_recreates_the_container_and_keeps_its_data)
{
    setUpPihole();
    const QString before = inspected(QStringLiteral("{{.Id}}"));
    ASSERT_TRUE(inPihole(QStringLiteral("open('/etc/pihole/kept','w')")));
    model().setLatestTag(QStringLiteral("2026.10.0"));
    run(model().performUpdate());
    waitFor([this] { return quiet(); }, "the update ended");
    EXPECT_TEXT(model().updateMessage(), "Updated to 2026.10.0.");
    EXPECT_TEXT(inspected(QStringLiteral("{{.Config.Image}}")), "pihole/pihole:2026.10.0");
    EXPECT_NE(inspected(QStringLiteral("{{.Id}}")), before);
    EXPECT_TRUE(inPihole(QStringLiteral("open('/etc/pihole/kept')")));
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("pihole")));
}

TEST_F(RealEngine, An_update_that_cannot_be_downloaded_leaves_the_old_container_running)
{
    setUpPihole();
    model().setLatestTag(QStringLiteral("2099.01.0"));
    run(model().performUpdate());
    waitFor([this] { return quiet(); }, "the update ended");
    EXPECT_TEXT(model().maintOp()->failureText(), kNoInternet);
    EXPECT_TEXT(model().pinnedTag(), "2026.09.0");
    EXPECT_TEXT(inspected(QStringLiteral("{{.Config.Image}}")), "pihole/pihole:2026.09.0");
    EXPECT_TRUE(answers(Transport::Udp));
}

TEST_F(RealEngine, Another_web_port_moves_the_admin_page)
{
    setUpPihole();
    run(model().changeWebPort(8083));
    waitForOperation(model().maintOp());
    EXPECT_TRUE(model().maintOp()->succeeded()) << model().maintOp()->lines().join(u'\n').toStdString();
    expectHealthy();
    run(model().runPiholeTests(Wait::ForStart));
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("pihole")));
    EXPECT_TRUE(model().dashboardURL().toString().contains(QStringLiteral(":8083/")));
}

TEST_F(RealEngine, Removal_leaves_neither_container_nor_volumes)
{
    setUpPihole();
    run(model().removePihole());
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
    EXPECT_EQ(containerState(), ContainerState::missing());
    EXPECT_TEXT(docker(QStringLiteral("volume ls --quiet")).standardOutput, "");

    model().setWizardFinished(true);
    run(model().removePihole());
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.") << "what is gone already is no trouble";
}

TEST_F(RealEngine, Another_holder_of_port_53_is_named_before_anything_is_done)
{
    for (const char *const protocol : {"tcp", "udp"}) {
        Mac::reset(QStringLiteral("engine"));
        Mac::ctl(QStringLiteral("machine room"));
        Mac::ctl(QStringLiteral("take-port 53 %1 --as unbound --in-machine").arg(QLatin1String(protocol)));
        model().setPasswordInput(kPassword);
        run(model().startPihole());
        EXPECT_TEXT(model().startMessage(), "Port 53 is taken inside Colima's virtual machine, by the program "
                                            "'unbound'. Stop it there, then try again.");
        EXPECT_FALSE(model().startOp()->ended()) << protocol;
    }
}

TEST_F(RealEngine, A_taken_port_53_of_a_machine_that_cannot_be_asked_is_told_in_plain_words)
{
    Mac::ctl(QStringLiteral("take-port 53 tcp --as unbound --in-machine"));
    Mac::ctl(QStringLiteral("fault colima fail 1 --when ssh*"));
    model().setPasswordInput(kPassword);
    run(model().startPihole());
    waitForOperation(model().startOp());
    EXPECT_FALSE(model().startOp()->succeeded());
    EXPECT_TEXT(model().startOp()->failureText(), kPortInUse);
    EXPECT_EQ(containerState(), ContainerState::stopped(QStringLiteral("created")));
}

TEST_F(RealEngine, A_container_that_colimas_name_service_kept_out_starts_after_room_was_made)
{
    Mac::ctl(QStringLiteral("machine no-room"));
    setUpPihole();
    EXPECT_TRUE(model().startOp()->lines().first().startsWith(QLatin1String("> Making room for Pi-hole")));
    expectHealthy();
    EXPECT_TRUE(answers(Transport::Udp));
}

TEST_F(RealEngine, What_goes_wrong_in_docker_is_told_in_plain_words)
{
    EXPECT_TEXT(saidBy(QStringLiteral("pull 127.0.0.1:5000/pihole/pihole:2099.01.0")),
                "That Pi-hole version does not exist on Docker Hub.");
    EXPECT_TEXT(saidBy(QStringLiteral("pull pihole/pihole:2099.01.0")), kNoInternet);
    setUpPihole();
    EXPECT_TEXT(saidBy(QStringLiteral("run -d --name other -p 127.0.0.1:8080:80/tcp pihole/pihole:2026.09.0")),
                kPortInUse);
    EXPECT_TEXT(saidBy(QStringLiteral("run -d --name pihole pihole/pihole:2026.09.0")),
                "Docker reported an error. Open 'Show details' to read it.");
}

TEST_F(RealEngine, A_mac_without_wifi_is_told_that_nothing_can_be_downloaded)
{
    Mac::ctl(QStringLiteral("wifi off"));
    const QString said = docker(QStringLiteral("pull pihole/pihole:2099.01.0")).combined();
    EXPECT_TRUE(said.contains(QStringLiteral("network is unreachable"))) << said.toStdString();
    EXPECT_TEXT(DockerCLI::friendlyError(said), kNoInternet);
}

TEST_F(RealEngine, A_socket_that_this_user_may_not_use_is_told)
{
    ASSERT_TRUE(QFile::setPermissions(QDir::home().filePath(QStringLiteral(".colima/default/docker.sock")), {}));
    EXPECT_TEXT(saidBy(QStringLiteral("pull pihole/pihole:2026.09.0")),
                "Docker refused access (permission denied). Check that your user can use Colima's Docker socket.");
    EXPECT_EQ(containerState(), ContainerState::dockerDown());
}

TEST_F(RealEngine, An_unhealthy_pihole_is_told_apart_from_a_healthy_one)
{
    setUpPihole();
    ASSERT_TRUE(docker(QStringLiteral("pause pihole")).succeeded());
    EXPECT_EQ(containerState(), ContainerState::stopped(QStringLiteral("paused")));
    ASSERT_TRUE(docker(QStringLiteral("unpause pihole")).succeeded());
    expectHealthy();
    ASSERT_TRUE(inPihole(QStringLiteral("__import__('os').remove('/opt/stand-in/health_check.py')")));
    waitFor([] { return containerState() == ContainerState::running(QStringLiteral("unhealthy")); }, "it is unhealthy");
}

TEST_F(RealEngine, What_ran_comes_back_with_the_machine_and_what_was_stopped_does_not)
{
    setUpPihole();
    Mac::ctl(QStringLiteral("engine stop"));
    Mac::ctl(QStringLiteral("engine start"));
    expectHealthy();
    run(model().stopPihole());
    Mac::ctl(QStringLiteral("engine stop"));
    Mac::ctl(QStringLiteral("engine start"));
    EXPECT_EQ(containerState(), ContainerState::stopped(QStringLiteral("exited")));
}

} // namespace corvane::test
