#include "tests/sentences/on_screen.h"

#include <QTcpServer>
#include <QTcpSocket>

namespace corvane::test {

namespace {

/// Answers every request on Pi-hole's web port in the same way.
class OtherProgram {
public:
    explicit OtherProgram(const QByteArray &answer)
    {
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this, answer] {
            QTcpSocket *socket = m_server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket, answer] {
                socket->write(answer);
                socket->disconnectFromHost();
            });
        });
        EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost, 8080)) << m_server.errorString().toStdString();
    }

private:
    QTcpServer m_server;
};

/// What the everyday actions say: on the dashboard, in the banner, and after the menu was used.
class Actions : public OnScreen {};

const char *const kNotRunning = "Docker is not running. Start Colima first (step 3).";

} // namespace

TEST_F(Actions, A_pause_and_its_end_are_told)
{
    begin("running");
    openDashboard();
    pressButton("Pause blocking 5 minutes");
    EXPECT_TRUE(appears("Blocking is paused for 5 minutes."));
    pressButton("Resume blocking");
    EXPECT_TRUE(appears("Blocking is back on."));
    chooseInMenu("Pause blocking 5 minutes");
    EXPECT_TRUE(appears("Blocking is paused for 5 minutes."));
    mac("pihole web drop");
    chooseInMenu("Resume blocking");
    EXPECT_TRUE(appears("Could not resume blocking: Pi-hole did not answer on 127.0.0.1."));
}

TEST_F(Actions, What_keeps_pihole_from_pausing_is_told)
{
    begin("running");
    openDashboard();
    mac("pihole web drop");
    pressButton("Pause blocking 5 minutes");
    EXPECT_TRUE(appears("Could not pause blocking: Pi-hole did not answer on 127.0.0.1."));
    mac("pihole web on");
    model().setAdminPassword(QStringLiteral("not-the-password"));
    pressButton("Pause blocking 5 minutes");
    EXPECT_TRUE(appears("Could not pause blocking: Pi-hole refused the admin password."));
}

TEST_F(Actions, Another_program_in_piholes_place_is_told)
{
    begin("running");
    openDashboard();
    mac("container stop");
    {
        const OtherProgram refuses("HTTP/1.1 503 Service Unavailable\r\nContent-Length: 0\r\n\r\n");
        pressButton("Pause blocking 5 minutes");
        EXPECT_TRUE(appears("Could not pause blocking: Pi-hole answered with HTTP 503"));
    }
    const OtherProgram talks("HTTP/1.1 200 OK\r\nContent-Length: 7\r\n\r\nWelcome");
    pressButton("Pause blocking 5 minutes");
    EXPECT_TRUE(appears("Could not pause blocking: Pi-hole sent an answer this app does not understand."));
}

TEST_F(Actions, Statistics_that_cannot_be_read_are_told)
{
    begin("running");
    openDashboard();
    mac("pihole web drop");
    run(model().refreshStatus(Stats::Include)); // as the poll does every few seconds
    EXPECT_TRUE(appears("Pi-hole did not answer on 127.0.0.1."));
}

TEST_F(Actions, A_start_that_lacks_something_names_the_step_of_the_set_up)
{
    begin("homebrew");
    openDashboard();
    pressButton("Start");
    EXPECT_TRUE(appears("Colima is not installed. Use step 3 of the wizard."));
    begin("engine");
    openDashboard();
    pressButton("Start");
    EXPECT_TRUE(appears("Pi-hole is not installed yet. Run step 4 of the wizard."));
    begin("engine");
    openDashboard();
    chooseInMenu("Start Pi-hole");
    EXPECT_TRUE(appears("Pi-hole is not installed yet. Run step 4 of the wizard."));
}

TEST_F(Actions, A_colima_that_does_not_start_is_told_on_the_dashboard_and_in_the_banner)
{
    begin("stopped");
    mac("colima|fail|error starting vm");
    openDashboard();
    pressButton("Start");
    EXPECT_TRUE(appear({"Starting Colima", "Colima did not start. See the log.",
                        "Docker reported an error. Open 'Show details' to read it."}));
    EXPECT_TRUE(logged("maintLog", "> colima start"));

    begin("dead-engine");
    mac("colima|fail|error starting vm");
    openStep(1);
    pressButton("Start Pi-hole now");
    EXPECT_TRUE(appear({"Starting Colima", "Colima did not start. See the log."}));
}

TEST_F(Actions, A_docker_that_comes_later_than_colima_is_waited_for_with_a_word)
{
    begin("dead-engine");
    mac("engine boot");
    openDashboard();
    pressButton("Start");
    EXPECT_TRUE(appears("Waiting for Docker..."));
    EXPECT_TRUE(appears("Colima was started, but Docker does not answer yet. It may need another minute."));
}

TEST_F(Actions, What_docker_says_about_a_start_stop_or_restart_is_told)
{
    struct Case {
        const char *state;
        const char *order;
        const char *button;
        const char *sentence;
    };
    const Case cases[] = {
        {"running", "engine stop", "Restart", kNotRunning},
        {"running", "engine stop", "Stop", kNotRunning},
        {"dead", "fault|docker|fail|1|driver failed: port is already allocated|--when|start *", "Start",
         "Another container in Colima holds a port that Pi-hole needs. Pick another web port (8081 to 8090), or stop "
         "that "
         "container; \"docker ps\" in Terminal shows it."},
        {"dead", "fault|docker|fail|1|permission denied|--when|start *", "Start Pi-hole now",
         "Docker refused access (permission denied). Check that your user can use Colima's Docker socket."},
        {"running", "fault docker vanish", "Stop", "Docker reported an error. Open 'Show details' to read it."},
    };
    for (const Case &each : cases) {
        begin(each.state);
        openDashboard();
        mac(each.order);
        pressButton(each.button);
        EXPECT_TRUE(appears(each.sentence)) << each.order;
    }
}

TEST_F(Actions, The_log_tells_what_it_lacks)
{
    begin("running");
    openDashboard();
    mac("fault docker fail 0 --when logs*");
    pressButton("Refresh");
    EXPECT_TRUE(logged("pihole", "(no log output)"));
    mac("fault docker vanish");
    pressButton("Refresh");
    EXPECT_TRUE(logged("pihole", "docker was not found."));
    click(QStringLiteral("followSwitch"));
    EXPECT_TRUE(appears("docker was not found.")) << "in the notice";
    mac("fault clear");
    click(QStringLiteral("followSwitch"));
    EXPECT_TRUE(logged("pihole", "> docker logs --follow --tail 100 pihole"));
    click(QStringLiteral("followSwitch"));
}

TEST_F(Actions, A_log_that_cannot_be_saved_is_told)
{
    begin("running");
    openDashboard();
    pressButton("Refresh");
    pressButton("Save...");
    ASSERT_TRUE(filePanel());
    EXPECT_TRUE(filePanel()->selectedFiles().value(0).endsWith(QStringLiteral("/pihole-log.txt")));
    chooseFile(QStringLiteral("/System/Library/pihole-log.txt"));
    EXPECT_TRUE(appearsWithReason("Could not save the log: "));
}

} // namespace corvane::test
