// What the flows make of failures whose cause the tool itself names.

#include "tests/flows/in_state.h"

#include <QFile>

namespace corvane::test {

namespace {

/// The tool fails with these recorded words at its calls that match.
void failWith(const char *file, const char *tool, const char *when, const QStringList &how = {})
{
    QFile words(QStringLiteral(CORVANE_TEST_DATA "/tools/failures/%1.txt").arg(QLatin1String(file)));
    ASSERT_TRUE(words.open(QIODevice::ReadOnly)) << file;
    const QStringList fault{QStringLiteral("fault"),
                            QString::fromLatin1(tool),
                            QStringLiteral("fail"),
                            QStringLiteral("1"),
                            QString::fromUtf8(words.readAll().trimmed()),
                            QStringLiteral("--when"),
                            QString::fromLatin1(when)};
    Mac::ctl(fault + how);
}

} // namespace

TEST_F(Stopped, A_colima_that_was_left_behind_is_cleared_away_at_the_next_start)
{
    failWith("colima_disk_in_use", "colima", "start*", {QStringLiteral("--at"), QStringLiteral("1")});
    model().startColimaOnly();
    waitForOperation(model().installOp());
    EXPECT_FALSE(model().installOp()->succeeded());
    EXPECT_TRUE(model().installOp()->failureSentence().startsWith(QStringLiteral("Colima did not end properly")));

    model().startColimaOnly();
    waitForOperation(model().installOp());
    EXPECT_TRUE(model().installOp()->succeeded());
    waitFor([this] { return model().dockerWorks(); }, "docker works");
    EXPECT_TRUE(Mac::calls(QStringLiteral("colima")).contains(QStringLiteral("stop --force")));
}

TEST_F(Stopped, The_start_from_the_dashboard_clears_away_what_was_left_behind_too)
{
    failWith("colima_host_agent_gone", "colima", "start*", {QStringLiteral("--at"), QStringLiteral("1")});
    run(model().startPiholeNow());
    waitForOperation(model().maintOp());
    EXPECT_FALSE(model().maintOp()->succeeded());
    run(model().startPiholeNow());
    waitForOperation(model().maintOp());
    EXPECT_TRUE(model().maintOp()->succeeded());
    EXPECT_TRUE(Mac::calls(QStringLiteral("colima")).contains(QStringLiteral("stop --force")));
}

TEST_F(Stopped, A_colima_that_fails_for_another_reason_is_not_stopped_by_force)
{
    failWith("colima_no_network", "colima", "start*", {QStringLiteral("--at"), QStringLiteral("1")});
    for (int i = 0; i < 2; ++i) {
        model().startColimaOnly();
        waitForOperation(model().installOp());
    }
    EXPECT_TRUE(model().installOp()->succeeded());
    EXPECT_FALSE(Mac::calls(QStringLiteral("colima")).contains(QStringLiteral("stop --force")));
}

TEST_F(Engine, A_login_service_that_macos_refuses_leaves_colima_started_by_hand)
{
    model().setAutostartColima(false);
    run(model().refreshTools());
    failWith("brew_launchd_refused", "brew", "services start*");
    run(model().changeAutostart(true));
    waitFor([this] { return model().installOp()->title() == QStringLiteral("Starting Colima"); }, "the plain start");
    waitForOperation(model().installOp());
    EXPECT_TRUE(model().installOp()->succeeded());
    waitFor([this] { return model().dockerWorks(); }, "docker works");
    EXPECT_FALSE(model().autostartColima()) << "the switch says what is";
    EXPECT_TEXT(model().notice(), "Colima does not start at login: macOS did not accept its login service. It is "
                                  "started by hand now.");
}

TEST_F(Engine, The_general_sentence_stays_beside_the_cause)
{
    failWith("docker_limit_status", "docker", "pull*");
    model().setPasswordInput(QStringLiteral("correct-horse-9"));
    run(model().startPihole());
    waitForOperation(model().startOp());
    EXPECT_TEXT(model().startOp()->failureText(), "Docker could not reach the internet to download Pi-hole. Check your "
                                                  "connection (and any VPN) and try again.");
    EXPECT_TRUE(model().startOp()->failureSentence().startsWith(QStringLiteral("Docker Hub's download limit")));
    EXPECT_TRUE(model().startOp()->failureLine().endsWith(QStringLiteral("429 Too Many Requests")));
}

} // namespace corvane::test
