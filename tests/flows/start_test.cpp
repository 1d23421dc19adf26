#include "exec/app_paths.h"
#include "exec/keychain.h"
#include "runtime/docker_cli.h"
#include "runtime/pihole_controller.h"
#include "tests/flows/in_state.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTimer>

#include <array>

namespace corvane::test {

namespace {

const QString kPassword = QStringLiteral("Fresh-Word_7.@+");
const char *const kEngineGone = "Cannot connect to the Docker daemon at unix:///Users/ada/.colima/default/docker.sock. "
                                "Is the docker daemon running?";

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList dockerVerbs()
{
    QStringList verbs;
    for (const QString &call : Mac::calls(QStringLiteral("docker"))) {
        const QString verb = call.section(u' ', 0, 0);
        if (verb == u"pull" || verb == u"rm" || verb == u"run") verbs += verb;
    }
    return verbs;
}

} // namespace

TEST_F(Engine, A_first_start_pulls_creates_and_tests_pihole)
{
    model().setPasswordInput(kPassword);
    run(model().startPihole());
    EXPECT_TEXT(model().startOp()->title(), "Starting Pi-hole");
    waitForOperation(model().startOp());
    EXPECT_TRUE(model().startOp()->succeeded()) << model().startOp()->lines().join(u'\n').toStdString();
    EXPECT_TEXT(dockerVerbs().join(u' '), "pull rm run");
    EXPECT_TEXT(model().startOp()->lines().first(), "> docker pull pihole/pihole:2026.09.0");
    EXPECT_TEXT(model().startMessage(), "");
    EXPECT_TEXT(model().adminPassword(), kPassword.toStdString());
    EXPECT_EQ(Keychain::load(), kPassword);
    EXPECT_EQ(readAll(PiholeController::environmentFile()),
              "FTLCONF_webserver_api_password=" + kPassword.toUtf8() + '\n');
    ASSERT_EQ(model().piholeChecks().size(), 3);
    for (const CheckRow &row : model().piholeChecks())
        EXPECT_EQ(row.state, CheckState::Ok) << row.id.toStdString() << ": " << row.detail.toStdString();
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("pihole")));
    ASSERT_TRUE(model().summary()) << "Pi-hole lets the new password in";
}

TEST_F(Engine, With_the_compose_plug_in_the_same_start_uses_it)
{
    Mac::ctl(QStringLiteral("compose on"));
    model().setPasswordInput(kPassword);
    run(model().startPihole());
    waitForOperation(model().startOp());
    EXPECT_TRUE(model().startOp()->succeeded()) << model().startOp()->lines().join(u'\n').toStdString();
    const QStringList calls = Mac::calls(QStringLiteral("docker"));
    EXPECT_EQ(calls.filter(QRegularExpression(QStringLiteral("^compose -f .*docker-compose.yml pull$"))).size(), 1);
    EXPECT_EQ(calls.filter(QRegularExpression(QStringLiteral("^compose -f .*docker-compose.yml up -d$"))).size(), 1);
    EXPECT_TEXT(dockerVerbs().join(u' '), "rm");
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("pihole")));
}

TEST_F(Engine, A_password_that_breaks_a_rule_stops_everything_before_it_begins)
{
    const auto before = Mac::journal().size();
    model().setPasswordInput(QStringLiteral("abcdef7"));
    run(model().startPihole());
    EXPECT_TEXT(model().startMessage(), "Use at least 8 characters.");
    model().setPasswordInput(QStringLiteral("two words"));
    run(model().startPihole());
    EXPECT_TEXT(model().startMessage(), "Use only letters, digits and - _ . @ +");
    EXPECT_EQ(Mac::journal().size(), before) << "nothing was run";
    EXPECT_TEXT(model().adminPassword(), "");
    EXPECT_FALSE(QFile::exists(PiholeController::environmentFile()));
}

TEST_F(Running, A_password_that_breaks_a_rule_has_no_line_of_an_older_press_beside_it)
{
    Mac::ctl({QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("1"),
              QStringLiteral("something odd"), QStringLiteral("--when"), QStringLiteral("stop *")});
    run(model().stopPihole());
    EXPECT_TRUE(model().notes().contains(QStringLiteral("start")));
    model().setPasswordInput(QStringLiteral("short"));
    run(model().startPihole());
    EXPECT_TEXT(model().startMessage(), "Use at least 8 characters.");
    EXPECT_FALSE(model().notes().contains(QStringLiteral("start")));
}

TEST_F(Stopped, Without_a_running_engine_the_step_before_is_named)
{
    model().setPasswordInput(kPassword);
    run(model().startPihole());
    EXPECT_TEXT(model().startMessage(), "Docker is not running. Finish step 3 first.");
    EXPECT_FALSE(model().startOp()->ended());
    EXPECT_TEXT(model().adminPassword(), "");
}

TEST_F(Engine, A_taken_web_port_stops_the_start_and_names_the_holder)
{
    Mac::ctl(QStringLiteral("take-port 8080 tcp --as httpd"));
    model().setPasswordInput(kPassword);
    run(model().startPihole());
    EXPECT_TEXT(model().startMessage(), "A port that Pi-hole needs is taken. See what holds it below.");
    ASSERT_EQ(model().portReports().size(), 3);
    EXPECT_EQ(model().portReports()[2].probe, PortProbe::InUse);
    EXPECT_TRUE(model().portReports()[2].holder.contains(QStringLiteral("httpd")));
    EXPECT_FALSE(model().startOp()->ended());
    EXPECT_FALSE(Keychain::load());
    EXPECT_TEXT(dockerVerbs().join(u' '), "");
}

TEST_F(Engine, A_port_that_is_taken_during_the_start_is_looked_at_again)
{
    Mac::ctl(QStringList{QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("late"),
                         QStringLiteral("0.5"), QStringLiteral("--when"), QStringLiteral("pull *")});
    model().setPasswordInput(kPassword);
    launch(model().startPihole());
    waitFor([this] { return model().startOp()->running(); }, "the pull runs");
    Mac::ctl(QStringLiteral("take-port 8080 tcp --as nginx --in-machine"));
    waitForOperation(model().startOp());
    EXPECT_EQ(model().startOp()->failureText(), DockerCLI::kPortInUse);
    const QList<PortReport> reports = model().portReports();
    EXPECT_EQ(std::ranges::count(reports, PortProbe::InUse, &PortReport::probe), 1);
}

TEST_F(Engine, A_taken_port_53_is_found_before_the_start_where_it_may_be_tested)
{
    Mac::ctl(QStringLiteral("port53 grant"));
    Mac::ctl(QStringLiteral("take-port 53 tcp --as unbound"));
    model().setPasswordInput(kPassword);
    run(model().startPihole());
    EXPECT_TEXT(model().startMessage(), "A port that Pi-hole needs is taken. See what holds it below.");
    EXPECT_TRUE(model().portReports()[1].holder.contains(QStringLiteral("unbound")));
    Mac::ctl(QStringLiteral("port53 deny"));
}

TEST_F(Engine, A_taken_port_53_of_a_machine_that_cannot_be_asked_is_dockers_to_find)
{
    Mac::ctl(QStringLiteral("fault colima fail 1 --when ssh*"));
    Mac::ctl(QStringLiteral("take-port 53 tcp --as unbound --in-machine"));
    model().setPasswordInput(kPassword);
    run(model().startPihole());
    waitForOperation(model().startOp());
    EXPECT_FALSE(model().startOp()->succeeded());
    EXPECT_TEXT(model().startOp()->failureText(),
                "A port that Pi-hole needs is already in use. Pick another web port (8081 to 8090) or stop whatever "
                "uses port 53.");
    EXPECT_TRUE(model().piholeChecks().isEmpty()) << "no tests after a failed start";
}

TEST_F(Running, A_restart_with_a_new_password_does_not_look_at_the_ports)
{
    ASSERT_EQ(model().adminPassword(), QStringLiteral("correct-horse-9"));
    model().setPasswordInput(kPassword);
    run(model().startPihole());
    waitForOperation(model().startOp());
    EXPECT_TRUE(model().startOp()->succeeded());
    EXPECT_TRUE(model().portReports().isEmpty());
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("pihole")));
    EXPECT_TEXT(model().apiMessage(), "");
    EXPECT_TRUE(model().summary()) << "the new password counts";
}

TEST_F(Running, Files_that_cannot_be_written_leave_the_running_container_alone)
{
    const QString compose = PiholeController::composeFile();
    ASSERT_TRUE(QFile::remove(compose));
    ASSERT_TRUE(QDir().mkpath(compose + QStringLiteral("/in the way")));
    model().setPasswordInput(kPassword);
    run(model().startPihole());
    EXPECT_TRUE(model().startMessage().startsWith(QStringLiteral("Could not write the Pi-hole files: ")))
        << model().startMessage().toStdString();
    EXPECT_GT(model().startMessage().size(), 36) << "the system's reason follows";
    EXPECT_FALSE(model().startOp()->ended());
    EXPECT_TEXT(dockerVerbs().join(u' '), "");
    EXPECT_FALSE(model().outcomes().contains(QStringLiteral("pihole"))) << "there is nothing new to test";
    EXPECT_EQ(Keychain::load(), kPassword) << "the password was saved before the files";
    EXPECT_TEXT(model().adminPassword(), kPassword.toStdString());

    ASSERT_TRUE(QDir(compose).removeRecursively());
    run(model().startPihole());
    waitForOperation(model().startOp());
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("pihole"))) << "the next attempt writes them again";
}

TEST_F(Engine, What_docker_complains_about_is_told_in_plain_words)
{
    struct Trouble {
        const char *command;
        const char *undo;
        const char *sentence;
    };
    const std::array troubles{
        Trouble{"internet off", "internet on",
                "Docker could not reach the internet to download Pi-hole. Check your connection (and any VPN) and try "
                "again."},
        Trouble{"disk-full on", "disk-full off",
                "The Colima disk is full. Free some space (for example 'docker system prune') or recreate Colima with "
                "a bigger disk."},
        Trouble{"registry remove 2026.09.0", "registry add 2026.09.0",
                "That Pi-hole version does not exist on Docker Hub."},
    };
    model().setPasswordInput(kPassword);
    for (const Trouble &trouble : troubles) {
        Mac::ctl(QString::fromLatin1(trouble.command));
        run(model().startPihole());
        waitForOperation(model().startOp());
        EXPECT_FALSE(model().startOp()->succeeded());
        EXPECT_TEXT(model().startOp()->failureText(), trouble.sentence);
        Mac::ctl(QString::fromLatin1(trouble.undo));
    }
    EXPECT_TRUE(model().piholeChecks().isEmpty());
}

TEST_F(Running, A_pull_that_fails_leaves_the_old_container_running)
{
    Mac::ctl(QStringLiteral("registry remove 2026.09.0"));
    model().setPasswordInput(kPassword);
    run(model().startPihole());
    waitForOperation(model().startOp());
    EXPECT_FALSE(model().startOp()->succeeded());
    EXPECT_TEXT(dockerVerbs().join(u' '), "pull");
    run(model().refreshStatus(Stats::Leave));
    EXPECT_TRUE(model().answering());
}

TEST_F(Engine, An_engine_that_stops_between_two_steps_is_named)
{
    Mac::ctl(QStringList{QStringLiteral("fault"), QStringLiteral("docker"), QStringLiteral("fail"), QStringLiteral("1"),
                         QString::fromLatin1(kEngineGone), QStringLiteral("--when"), QStringLiteral("run *")});
    model().setPasswordInput(kPassword);
    run(model().startPihole());
    waitForOperation(model().startOp());
    EXPECT_TEXT(model().startOp()->failureText(), "Docker is not running. Start Colima first (step 3).");
    EXPECT_TEXT(dockerVerbs().join(u' '), "pull rm run");
    Mac::ctl(QStringLiteral("fault clear"));
    run(model().startPihole());
    waitForOperation(model().startOp());
    EXPECT_TRUE(model().startOp()->succeeded()) << "the next attempt starts where nothing is half done";
}

TEST_F(Engine, An_engine_that_stops_during_the_pull_is_named)
{
    Mac::ctl(QStringLiteral("speed real"));
    model().setPasswordInput(kPassword);
    bool stopped = false;
    QObject::connect(model().startOp(), &OperationRunner::lineCountChanged, &user, [&stopped] {
        if (!std::exchange(stopped, true)) Mac::ctl(QStringLiteral("engine stop"));
    });
    run(model().startPihole());
    waitForOperation(model().startOp());
    Mac::ctl(QStringLiteral("speed fast"));
    EXPECT_TRUE(stopped);
    EXPECT_FALSE(model().startOp()->succeeded());
    EXPECT_TEXT(model().startOp()->failureText(), "Docker is not running. Start Colima first (step 3).");
}

TEST_F(Engine, A_docker_that_goes_away_at_any_of_its_calls_is_missed_in_words)
{
    for (int call = 1; call <= 6; ++call) {
        SCOPED_TRACE(call);
        Mac::reset(QStringLiteral("engine"));
        relaunch();
        Mac::ctl(QStringLiteral("fault docker vanish --at %1").arg(call));
        model().setPasswordInput(kPassword);
        run(model().startPihole());
        waitFor([this] { return !model().startOp()->running(); }, "the start ends");
        EXPECT_FALSE(model().startOp()->succeeded());
        EXPECT_TEXT(model().notice(), "");
        EXPECT_FALSE(model().startMessage().isEmpty() && model().startOp()->failureText().isEmpty());
        Mac::ctl(QStringLiteral("fault clear"));
    }
}

TEST_F(Engine, Pressing_start_twice_starts_once)
{
    model().setPasswordInput(kPassword);
    auto first = model().startPihole();
    run(model().startPihole());
    waitFor([this] { return model().startOp()->running(); }, "the first begins");
    run(model().startPihole());
    run(std::move(first));
    EXPECT_TEXT(model().startMessage(), "");
    EXPECT_TEXT(dockerVerbs().join(u' '), "pull rm run");
}

TEST_F(Running, While_an_operation_runs_nothing_is_changed_for_a_start)
{
    Mac::ctl(QStringLiteral("fault colima late 0.3 --at 1"));
    model().startColimaOnly();
    model().setPasswordInput(kPassword);
    run(model().startPihole());
    EXPECT_TEXT(model().startMessage(), "Not now: Colima is being started. Try again when that is done.");
    EXPECT_TEXT(model().adminPassword(), "correct-horse-9");
    EXPECT_EQ(Keychain::load(), QStringLiteral("correct-horse-9"));
    waitForOperation(model().installOp());
}

TEST_F(Engine, A_cancelled_start_says_cancelled)
{
    Mac::ctl(QStringLiteral("fault docker hang --when pull*"));
    model().setPasswordInput(kPassword);
    launch(model().startPihole());
    waitFor([] { return !dockerVerbs().isEmpty(); }, "the pull has begun");
    model().startOp()->cancel();
    waitForOperation(model().startOp());
    EXPECT_TEXT(model().startOp()->failureText(), "Cancelled.");
    EXPECT_TEXT(dockerVerbs().join(u' '), "pull");
    EXPECT_TRUE(model().piholeChecks().isEmpty());
}

TEST_F(Engine, A_model_that_goes_away_at_any_moment_of_a_start_ends_it_quietly)
{
    for (int milliseconds : {0, 5, 20, 60, 150}) {
        Mac::reset(QStringLiteral("engine"));
        model().setPasswordInput(kPassword);
        launch(model().startPihole());
        bool passedBy = false;
        QTimer::singleShot(milliseconds, &user, [&passedBy] { passedBy = true; });
        waitFor([&passedBy] { return passedBy; }, "the moment");
        relaunch();
    }
    EXPECT_FALSE(model().operationRunning());
}

} // namespace corvane::test
