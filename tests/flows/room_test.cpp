#include "checks/port_checker.h"
#include "runtime/docker_cli.h"
#include "runtime/machine_port.h"
#include "runtime/pihole_controller.h"
#include "tests/flows/in_state.h"

namespace corvane::test {

namespace {

const QString kPassword = QStringLiteral("Fresh-Word_7.@+");
const char *const kMakingRoom = "> Making room for Pi-hole in Colima's virtual machine";

/// A Mac whose Pi-hole was set up and stopped before Colima's machine was made again.
class NewMachine : public FlowTest {
protected:
    NewMachine()
        : FlowTest(QStringLiteral("dead"))
    {
        Mac::ctl(QStringLiteral("machine no-room"));
    }
};

MachinePort::Holder holder() { return QCoro::waitFor(MachinePort::ask()).holder(); }

QString inMachine(const QString &command)
{
    return Mac::ctl(QStringLiteral("machine ") + command).toObject().value(QLatin1String("output")).toString();
}

QStringList announced(const OperationRunner *operation)
{
    QStringList steps;
    for (const QString &line : operation->lines()) {
        if (line.startsWith(QLatin1String("> "))) steps += line;
    }
    return steps;
}

} // namespace

class Start : public Fresh {
protected:
    void press()
    {
        model().setPasswordInput(kPassword);
        run(model().startPihole());
    }

    void start()
    {
        press();
        waitForOperation(model().startOp());
    }
};

TEST_F(Start, A_first_start_begins_with_making_room_and_names_resolve_right_after)
{
    ASSERT_EQ(holder(), MachinePort::Holder::NameService);
    start();
    EXPECT_TRUE(model().startOp()->succeeded()) << model().startOp()->lines().join(u'\n').toStdString();
    const QStringList steps = announced(model().startOp());
    ASSERT_EQ(steps.size(), 4);
    EXPECT_TEXT(steps[0], kMakingRoom);
    EXPECT_TEXT(steps[1], "> docker pull pihole/pihole:2026.09.0");
    EXPECT_TEXT(steps[2], "> docker rm -f pihole (volumes are kept)");
    EXPECT_TEXT(steps[3], "> docker run -d --name pihole ...");
    EXPECT_EQ(holder(), MachinePort::Holder::Nobody);
    EXPECT_TRUE(inMachine(QStringLiteral("getent hosts example.com")).contains(QLatin1String("93.184.215.14")));
}

TEST_F(Start, A_second_start_finds_the_room_also_after_a_restart_of_colima)
{
    start();
    Mac::ctl(QStringLiteral("engine stop"));
    Mac::ctl(QStringLiteral("engine start"));
    start();
    EXPECT_TRUE(model().startOp()->succeeded());
    EXPECT_TEXT(announced(model().startOp()).first(), "> docker pull pihole/pihole:2026.09.0");
}

TEST_F(Start, What_colima_forwards_for_itself_is_told_as_no_holder_of_the_port)
{
    const QString lsof = QCoro::waitFor(PortChecker::holder(53, Transport::Tcp));
    ASSERT_TRUE(lsof.contains(QLatin1String("limactl"))) << "the machine's name service is forwarded";
    run(model().runSystemChecks());
    for (const PortReport &report : model().portReports())
        EXPECT_TEXT(report.holder, "") << report.label.toStdString();
}

TEST_F(Start, An_older_colima_needs_no_room)
{
    Mac::ctl(QStringLiteral("colima-release 0.8"));
    start();
    EXPECT_TRUE(model().startOp()->succeeded());
    EXPECT_TEXT(announced(model().startOp()).first(), "> docker pull pihole/pihole:2026.09.0");
}

TEST_F(Start, A_machine_that_cannot_be_asked_holds_nothing_up)
{
    Mac::ctl(QStringLiteral("machine room"));
    Mac::ctl(QStringLiteral("fault colima fail 1 --when ssh*"));
    start();
    EXPECT_TRUE(model().startOp()->succeeded());
}

TEST_F(Start, Another_program_in_the_machine_is_named_before_anything_is_done)
{
    Mac::ctl(QStringLiteral("machine room"));
    Mac::ctl(QStringLiteral("take-port 53 udp --as named --in-machine"));
    press();
    EXPECT_TEXT(model().startMessage(), "Port 53 is taken inside Colima's virtual machine, by the program 'named'. "
                                        "Stop it there, then try again.");
    EXPECT_FALSE(model().startOp()->ended());
    EXPECT_TEXT(model().adminPassword(), "");
}

TEST_F(Start, Another_container_is_named_before_anything_is_done)
{
    Mac::ctl(QStringLiteral("machine room"));
    const QStringList other{QStringLiteral("run"),
                            QStringLiteral("-d"),
                            QStringLiteral("--name"),
                            QStringLiteral("dns-proxy"),
                            QStringLiteral("-p"),
                            QStringLiteral("127.0.0.1:53:53/udp"),
                            QStringLiteral("pihole/pihole:2026.09.0")};
    ASSERT_TRUE(QCoro::waitFor(DockerCLI::run(other, std::chrono::seconds(30))).succeeded());
    press();
    EXPECT_TEXT(model().startMessage(), "Port 53 is taken inside Colima's virtual machine, by the container "
                                        "'dns-proxy'. Stop that container, then try again.");
    EXPECT_FALSE(model().startOp()->ended());
}

TEST_F(Start, A_name_service_that_does_not_come_back_is_put_back_as_it_was)
{
    Mac::ctl(QStringList{QStringLiteral("machine"), QStringLiteral("sh"), QStringLiteral("-c"),
                         QStringLiteral("echo 'conf-file=/etc/dnsmasq.d/none' > /etc/dnsmasq.d/03-broken.conf")});
    start();
    EXPECT_FALSE(model().startOp()->succeeded());
    EXPECT_EQ(announced(model().startOp()).size(), 1);
    EXPECT_FALSE(inMachine(QStringLiteral("ls /etc/dnsmasq.d")).contains(QLatin1String("02-corvane.conf")));
}

TEST_F(Running, A_restart_replaces_its_own_container_without_making_room)
{
    model().setPasswordInput(kPassword);
    run(model().startPihole());
    waitForOperation(model().startOp());
    EXPECT_TRUE(model().startOp()->succeeded());
    EXPECT_TEXT(announced(model().startOp()).first(), "> docker pull pihole/pihole:2026.09.0");
}

TEST_F(NewMachine, A_stopped_pihole_is_started_after_room_was_made)
{
    run(model().startPiholeNow());
    EXPECT_TEXT(model().startMessage(), "");
    EXPECT_TRUE(model().containerState().isRunning());
    EXPECT_TRUE(model().answering());
}

TEST_F(NewMachine, A_stopped_pihole_is_not_started_against_another_holder)
{
    Mac::ctl(QStringLiteral("machine room"));
    Mac::ctl(QStringLiteral("take-port 53 tcp --as named --in-machine"));
    run(model().startPiholeNow());
    EXPECT_TEXT(model().startMessage(), "Port 53 is taken inside Colima's virtual machine, by the program 'named'. "
                                        "Stop it there, then try again.");
    EXPECT_FALSE(model().containerState().isRunning());
}

TEST_F(NewMachine, A_new_web_port_makes_room_first)
{
    run(model().changeWebPort(8083));
    waitForOperation(model().maintOp());
    EXPECT_TRUE(model().maintOp()->succeeded());
    EXPECT_TEXT(announced(model().maintOp()).first(), kMakingRoom);
    EXPECT_EQ(model().webPort(), 8083);
}

TEST_F(NewMachine, A_new_web_port_is_not_taken_over_against_another_holder)
{
    Mac::ctl(QStringLiteral("machine room"));
    Mac::ctl(QStringLiteral("take-port 53 tcp --as named --in-machine"));
    run(model().changeWebPort(8083));
    EXPECT_TRUE(model().notice().startsWith(QLatin1String("Port 53 is taken inside Colima's virtual machine")));
    EXPECT_EQ(model().webPort(), 8080);
    EXPECT_FALSE(model().maintOp()->ended());
}

TEST_F(NewMachine, The_name_service_of_the_machine_does_not_pass_for_a_stopped_pihole)
{
    const DigResult reply = QCoro::waitFor(PiholeController::ask(QStringLiteral("example.com")));
    ASSERT_TRUE(reply.answered()) << "the machine's dnsmasq answers";
    run(model().refreshStatus(Stats::Leave));
    EXPECT_FALSE(model().answering());
    EXPECT_EQ(model().icon(), MenuIcon::NotAnswering);
    EXPECT_TRUE(model().showDeadDNSBanner());
}

TEST_F(Running, A_removal_gives_the_room_back)
{
    run(model().removePihole());
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
    EXPECT_EQ(holder(), MachinePort::Holder::NameService);
    EXPECT_FALSE(inMachine(QStringLiteral("ls /etc/dnsmasq.d")).contains(QLatin1String("02-corvane.conf")));
}

TEST_F(Running, A_removal_succeeds_without_giving_the_room_back)
{
    Mac::ctl(QStringLiteral("fault colima fail 1 --when ssh*"));
    run(model().removePihole());
    EXPECT_TEXT(model().notice(), "Pi-hole was removed.");
}

} // namespace corvane::test
