#include "tests/flows/in_state.h"

namespace corvane::test {

namespace {

using std::chrono::seconds;

/// The three rows, each as its state's number and its detail.
std::string rowText(const AppModel &model, int row)
{
    const CheckRow found = model.piholeChecks().value(row);
    const char *state = found.state == CheckState::Ok ? "ok: " : found.state == CheckState::Failed ? "failed: " : "? ";
    return state + found.detail.toStdString();
}

/// The questions for names of the world; Pi-hole's own name is asked for beside them.
QStringList questions()
{
    QStringList calls = Mac::calls(QStringLiteral("dig"));
    calls.removeIf([](const QString &call) { return call.contains(QStringLiteral(" pi.hole ")); });
    return calls;
}

qsizetype digs() { return questions().size(); }

} // namespace

TEST_F(Running, A_healthy_pihole_passes_all_three)
{
    auto test = model().runPiholeTests(Wait::No);
    ASSERT_EQ(model().piholeChecks().size(), 3);
    EXPECT_EQ(model().piholeChecks()[0],
              (CheckRow{QStringLiteral("container"), QStringLiteral("Container running and healthy"),
                        CheckState::Running, QStringLiteral("Checking...")}));
    EXPECT_EQ(model().piholeChecks()[1],
              (CheckRow{QStringLiteral("web"), QStringLiteral("Admin page answers on 127.0.0.1:8080"),
                        CheckState::Unknown, QStringLiteral("Waiting...")}));
    EXPECT_EQ(model().piholeChecks()[2],
              (CheckRow{QStringLiteral("dns"), QStringLiteral("dig @127.0.0.1 example.com returns an answer"),
                        CheckState::Unknown, QStringLiteral("Waiting...")}));
    EXPECT_TRUE(model().busy().contains(QStringLiteral("pihole")));
    run(std::move(test));
    EXPECT_EQ(rowText(model(), 0), "ok: Running and healthy.");
    EXPECT_EQ(rowText(model(), 1), "ok: http://127.0.0.1:8080/admin answered.");
    EXPECT_TRUE(model().piholeChecks()[2].detail.startsWith(QStringLiteral("Answer: "))) << rowText(model(), 2);
    EXPECT_TEXT(model().outcomes().value(QStringLiteral("pihole")).summary,
                "Container, admin page and DNS answer all passed");
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("pihole")));
    EXPECT_TRUE(model().statusChecked()) << "the status is refreshed";
    EXPECT_TRUE(model().summary()) << "with its counters";
    EXPECT_TRUE(quiet());
}

TEST_F(Running, A_test_during_which_pihole_is_stopped_blames_no_port)
{
    launch(model().runPiholeTests(Wait::No));
    waitFor([this] { return model().piholeChecks()[0].state == CheckState::Ok; }, "the container was looked at");
    run(model().stopPihole());
    waitFor([this] { return quiet(); }, "the test ended");
    EXPECT_EQ(rowText(model(), 0), "failed: The container exists but is 'exited'.");
    EXPECT_EQ(rowText(model(), 2), "failed: No answer on 127.0.0.1 port 53.");
    EXPECT_FALSE(model().udpProblem());
}

TEST_F(Running, Without_waiting_a_starting_container_fails_at_once_with_one_attempt_each)
{
    Mac::ctl(QStringLiteral("container health starting"));
    Mac::ctl(QStringLiteral("pihole web drop"));
    Mac::ctl(QStringLiteral("fault dig fail 9"));
    run(model().runPiholeTests(Wait::No));
    EXPECT_EQ(clock.waited(), seconds(0));
    EXPECT_EQ(rowText(model(), 0), "failed: Running, but its health is 'starting'. It may still be starting; wait a "
                                   "minute and press Test.");
    EXPECT_EQ(rowText(model(), 1), "failed: No answer on port 8080.");
    EXPECT_EQ(rowText(model(), 2), "failed: No answer on 127.0.0.1 port 53.");
    EXPECT_EQ(digs(), 1 + 1) << "one attempt, and the status check";
    EXPECT_FALSE(model().udpProblem());
    EXPECT_TEXT(model().outcomes().value(QStringLiteral("pihole")).summary, "At least one Pi-hole check failed");
}

TEST_F(Running, With_waiting_a_container_that_becomes_healthy_passes)
{
    Mac::ctl(QStringLiteral("container health starting"));
    launch(model().runPiholeTests(Wait::ForStart));
    waitFor([this] { return clock.waited() >= seconds(4); }, "two pauses");
    EXPECT_EQ(model().piholeChecks()[0].state, CheckState::Running);
    Mac::ctl(QStringLiteral("container health healthy"));
    waitFor([this] { return quiet(); }, "the tests end");
    EXPECT_EQ(rowText(model(), 0), "ok: Running and healthy.");
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("pihole")));
}

TEST_F(Running, A_container_that_never_becomes_healthy_is_waited_for_90_seconds)
{
    Mac::ctl(QStringLiteral("container health unhealthy"));
    run(model().runPiholeTests(Wait::ForStart));
    EXPECT_EQ(clock.waited(), seconds(90));
    EXPECT_EQ(rowText(model(), 0), "failed: Running, but its health is 'unhealthy'. It may still be starting; wait a "
                                   "minute and press Test.");
    EXPECT_EQ(rowText(model(), 1), "ok: http://127.0.0.1:8080/admin answered.");
    EXPECT_FALSE(passed(model().outcomes(), QStringLiteral("pihole")));
}

TEST_F(Running, An_image_without_health_checks_counts_as_passed)
{
    Mac::ctl(QStringLiteral("container health none"));
    run(model().runPiholeTests(Wait::ForStart));
    EXPECT_EQ(rowText(model(), 0), "ok: Running (this image reports no health status).");
    EXPECT_EQ(clock.waited(), seconds(0));
    EXPECT_TRUE(passed(model().outcomes(), QStringLiteral("pihole")));
}

TEST_F(Running, A_stopped_container_is_waited_for_and_then_named)
{
    Mac::ctl(QStringLiteral("container stop"));
    run(model().runPiholeTests(Wait::ForStart));
    EXPECT_EQ(clock.waited(), seconds(90));
    EXPECT_EQ(rowText(model(), 0), "failed: The container exists but is 'exited'.");
    EXPECT_EQ(rowText(model(), 2), "failed: No answer on 127.0.0.1 port 53.");
}

TEST_F(Engine, Without_a_container_nothing_is_waited_for)
{
    run(model().runPiholeTests(Wait::ForStart));
    EXPECT_EQ(rowText(model(), 0), "failed: No container named 'pihole' yet. Press Start Pi-hole.");
    EXPECT_EQ(clock.waited(), seconds(0));
}

TEST_F(Stopped, With_docker_down_nothing_is_waited_for)
{
    run(model().runPiholeTests(Wait::ForStart));
    EXPECT_EQ(rowText(model(), 0), "failed: Docker is not running.");
    EXPECT_EQ(rowText(model(), 1), "failed: No answer on port 8080.");
    EXPECT_EQ(clock.waited(), seconds(0));
}

TEST_F(Running, A_page_and_a_dns_that_stay_away_are_asked_three_times)
{
    Mac::ctl(QStringLiteral("pihole web drop"));
    Mac::ctl(QStringLiteral("fault dig fail 9"));
    run(model().runPiholeTests(Wait::No));
    EXPECT_EQ(clock.waited(), seconds(2 * 2 + 2 * 2));
    EXPECT_EQ(rowText(model(), 1), "failed: No answer on port 8080.");
    EXPECT_EQ(rowText(model(), 2), "failed: No answer over UDP (or TCP). UDP port 53 is probably not reaching the Mac, "
                                   "or Pi-hole is still starting.");
    EXPECT_TRUE(model().udpProblem());
    EXPECT_FALSE(model().tcpWorks());
    EXPECT_EQ(digs(), 3 + 1 + 1) << "three over UDP, one over TCP, and the status check";
}

TEST_F(Running, Udp_that_does_not_arrive_is_found_explained_and_mended)
{
    Mac::ctl(QStringLiteral("forwarder ssh"));
    run(model().runPiholeTests(Wait::No));
    EXPECT_EQ(rowText(model(), 0), "ok: Running and healthy.");
    EXPECT_EQ(rowText(model(), 2),
              "failed: No answer over UDP, but TCP works. UDP port 53 is probably not reaching the Mac.");
    EXPECT_TRUE(model().udpProblem());
    EXPECT_TRUE(model().tcpWorks());
    EXPECT_TRUE(model().grpcFlagSupported());
    EXPECT_TRUE(questions().last().contains(QStringLiteral("example.com")));

    run(model().fixUDPForwarding());
    ASSERT_EQ(user.alerts().size(), 1);
    const Alert alert = user.alerts().first();
    EXPECT_TEXT(alert.title, "Restart Colima with UDP forwarding?");
    EXPECT_TEXT(alert.text, "Colima will be stopped and started again with the gRPC port forwarder, which also "
                            "forwards UDP. Pi-hole comes back by itself afterwards.");
    EXPECT_TEXT(alert.accept, "Restart Colima");
    EXPECT_TEXT(alert.reject, "Cancel");
    EXPECT_TEXT(model().startOp()->title(), "Restarting Colima");
    waitForOperation(model().startOp());
    waitFor([this] { return passed(model().outcomes(), QStringLiteral("pihole")) && quiet(); }, "the tests pass");
    EXPECT_EQ(Mac::calls(QStringLiteral("colima")).last(2),
              (QStringList{QStringLiteral("stop"),
                           QStringLiteral("start --cpu 2 --memory 2 --disk 10 --port-forwarder grpc")}));
    EXPECT_FALSE(model().udpProblem());
    EXPECT_FALSE(model().tcpWorks());
    EXPECT_TRUE(model().dockerWorks());
}

TEST_F(Running, A_colima_without_the_option_is_told_apart)
{
    Mac::ctl(QStringLiteral("forwarder ssh"));
    Mac::ctl(QStringLiteral("port-forwarder-option off"));
    run(model().runPiholeTests(Wait::No));
    EXPECT_TRUE(model().udpProblem());
    EXPECT_FALSE(model().grpcFlagSupported());
}

TEST_F(Running, A_cancelled_fix_runs_nothing)
{
    user.cancels();
    run(model().fixUDPForwarding());
    EXPECT_EQ(user.alerts().size(), 1);
    EXPECT_FALSE(model().operationRunning());
    EXPECT_TRUE(Mac::calls(QStringLiteral("colima")).isEmpty());
}

TEST_F(Running, A_fix_that_fails_runs_no_tests)
{
    Mac::ctl(QStringList{QStringLiteral("colima"), QStringLiteral("fail"), QStringLiteral("error starting vm")});
    run(model().fixUDPForwarding());
    waitForOperation(model().startOp());
    waitFor([this] { return !model().dockerWorks(); }, "the tools are looked up again");
    EXPECT_FALSE(model().startOp()->succeeded());
    EXPECT_FALSE(model().startOp()->failureText().isEmpty());
    EXPECT_TRUE(model().piholeChecks().isEmpty());
}

TEST_F(Homebrew, A_fix_without_colima_asks_nothing_and_says_why)
{
    run(model().fixUDPForwarding());
    EXPECT_TRUE(user.alerts().isEmpty());
    EXPECT_TEXT(model().notice(), "Colima was not found.");
    EXPECT_FALSE(model().operationRunning());
}

TEST_F(Running, A_fix_asks_nothing_while_an_operation_runs)
{
    Mac::ctl(QStringLiteral("fault colima late 0.3 --at 1"));
    model().startColimaOnly();
    run(model().fixUDPForwarding());
    EXPECT_TRUE(user.alerts().isEmpty());
    EXPECT_TEXT(model().notice(), "Not now: Colima is being started. Try again when that is done.");
    waitForOperation(model().installOp());
}

TEST_F(Running, Nothing_that_needs_colima_begins_while_the_question_is_open)
{
    user.beforeAnswering([this] {
        model().startColimaOnly();
        EXPECT_TEXT(model().notice(), "Not now: answer the open question first.");
    });
    run(model().fixUDPForwarding());
    EXPECT_EQ(user.alerts().size(), 1);
    EXPECT_FALSE(model().installOp()->ended());
    EXPECT_TRUE(model().startOp()->succeeded());
}

TEST_F(Running, A_fix_is_under_way_while_colima_restarts)
{
    QList<bool> underWay;
    const auto told = QObject::connect(model().startOp(), &OperationRunner::runningChanged, model().startOp(),
                                       [&] { underWay += model().underWay().contains(Activity::UdpFix); });
    run(model().fixUDPForwarding());
    EXPECT_EQ(underWay.value(0), true);
    EXPECT_FALSE(model().underWay().contains(Activity::UdpFix));
    QObject::disconnect(told);
}

TEST_F(Running, The_newest_of_two_runs_owns_the_rows)
{
    Mac::ctl(QStringLiteral("container health starting"));
    launch(model().runPiholeTests(Wait::ForStart));
    waitFor([this] { return clock.waited() >= seconds(2); }, "the first run waits");
    run(model().runPiholeTests(Wait::No));
    const CheckRows shown = model().piholeChecks();
    Mac::ctl(QStringLiteral("container health healthy"));
    waitFor([this] { return quiet(); }, "the first ends too");
    EXPECT_EQ(model().piholeChecks(), shown);
    EXPECT_FALSE(passed(model().outcomes(), QStringLiteral("pihole")));
}

TEST_F(Running, A_model_that_goes_away_while_the_tests_wait_ends_them_quietly)
{
    Mac::ctl(QStringLiteral("container health starting"));
    launch(model().runPiholeTests(Wait::ForStart));
    waitFor([this] { return clock.waited() >= seconds(2); }, "the run waits");
    relaunch();
    EXPECT_TRUE(model().piholeChecks().isEmpty());
    EXPECT_TRUE(quiet());
}

} // namespace corvane::test
