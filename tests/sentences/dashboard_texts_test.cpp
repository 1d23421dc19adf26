#include "tests/sentences/on_screen.h"

namespace corvane::test {

/// What the dashboard, the menu, Settings and the parts that they share say by themselves.
class DashboardTexts : public OnScreen {};

TEST_F(DashboardTexts, Of_the_dashboard)
{
    begin("protected");
    openDashboard();
    EXPECT_TRUE(appear(
        {"Setup wizard",
         "Settings",
         "Today",
         "Queries",
         "Blocked",
         "Blocked %",
         "Blocking",
         "On",
         "Pause blocking 5 minutes",
         "Open dashboard",
         "Start",
         "Stop",
         "Restart",
         "Run tests again",
         "Restore my old settings",
         "Logs",
         "Refresh",
         "Follow",
         "Copy",
         "Save...",
         "Press Refresh to load the last 300 lines (docker logs --tail 300 pihole).",
         "Updates",
         "Pinned Pi-hole version: 2026.09.0",
         "Updating saves a backup first, changes the pinned version, pulls the image and recreates the container. Data "
         "volumes are never deleted.",
         "Check for updates",
         "Back up and update",
         "Backup and restore (Teleporter)",
         "Back up...",
         "Restore..."}));
}

TEST_F(DashboardTexts, The_status_in_one_sentence)
{
    struct Case {
        const char *state;
        const char *sentence;
    };
    for (const Case &each :
         {Case{"protected", "Pi-hole is answering and this Mac uses it"},
          Case{"running", "Pi-hole is answering, but this Mac does not use it"},
          Case{"dead", "This Mac uses Pi-hole, but Pi-hole is not answering"},
          Case{"stopped", "Stopped (Docker/Colima is not running)"}, Case{"engine", "Pi-hole is not installed yet"}}) {
        begin(each.state);
        openDashboard();
        EXPECT_TRUE(appears(each.sentence));
        EXPECT_EQ(menuItems().value(0), QString::fromUtf8(each.sentence));
    }
    begin("running");
    openDashboard();
    pressButton("Stop");
    EXPECT_TRUE(appears("Pi-hole is stopped"));
    start("running");
    openDashboard();
    EXPECT_TRUE(appears("Checking Pi-hole..."));
}

TEST_F(DashboardTexts, Todays_numbers_and_the_state_of_blocking)
{
    begin("stopped");
    openDashboard();
    for (const char *number : {"queriesValue", "blockedValue", "blockedPercentValue", "blockingValue"})
        EXPECT_EQ(textOf(QString::fromLatin1(number)), QStringLiteral("-")) << number;

    begin("running");
    openDashboard();
    EXPECT_EQ(textOf(QStringLiteral("blockingValue")), QStringLiteral("On"));
    pressButton("Pause blocking 5 minutes");
    EXPECT_TRUE(appears("Resume blocking"));
    mac("pihole advance 1");
    run(model().refreshStatus(Stats::Include)); // as the poll does every few seconds
    EXPECT_TRUE(appears("Paused (5 min left)"));
    EXPECT_TRUE(menuItems().contains(QStringLiteral("Resume blocking")));
    pressButton("Resume blocking");
    EXPECT_TRUE(appears("Pause blocking 5 minutes"));
    // On Pi-hole's own page, blocking can be switched off for good.
    ASSERT_TRUE(QCoro::waitFor(model().api().setBlocking(false, std::nullopt)));
    run(model().refreshStatus(Stats::Include));
    EXPECT_TRUE(appears("Off"));
}

TEST_F(DashboardTexts, Of_the_banner)
{
    begin("dead");
    openDashboard();
    EXPECT_TRUE(
        appear({"This Mac's DNS points at Pi-hole, but Pi-hole is not answering. Websites may not load.",
                "This often happens after a restart when Colima is not running yet.", "Start Pi-hole now", "Hide"}));
    EXPECT_TRUE(shows(QStringLiteral("bannerRestoreButton")));
    pressButton("Hide");
    EXPECT_FALSE(reads(QStringLiteral("Websites may not load.")));
}

TEST_F(DashboardTexts, Of_the_menu)
{
    begin("running");
    EXPECT_EQ(menuItems(), (QStringList{QStringLiteral("Pi-hole is answering, but this Mac does not use it"),
                                        QStringLiteral("Open dashboard"), QStringLiteral("Pause blocking 5 minutes"),
                                        QStringLiteral("Stop Pi-hole"), QStringLiteral("Open window"),
                                        QStringLiteral("Quit Corvane"), QStringLiteral("Pause blocking for")}));
    begin("engine");
    EXPECT_EQ(menuItems(), (QStringList{QStringLiteral("Pi-hole is not installed yet"),
                                        QStringLiteral("Open dashboard"), QStringLiteral("Pause blocking 5 minutes"),
                                        QStringLiteral("Start Pi-hole"), QStringLiteral("Open window"),
                                        QStringLiteral("Quit Corvane"), QStringLiteral("Pause blocking for")}));
}

TEST_F(DashboardTexts, Of_settings_as_a_window_and_as_a_sheet)
{
    const auto expectSettings = [this] {
        EXPECT_TRUE(appear(
            {"General", "Launch Corvane at login", "Start Colima at login", "Ports", "Admin page port", "8080",
             "Changing it recreates the container. Your data is kept.",
             "DNS: 53 (TCP and UDP) on 127.0.0.1. Fixed, because the Mac's DNS needs it.", "Remove",
             "Remove Pi-hole...",
             "Removes the container 'pihole' and the volumes 'pihole_etc' and 'pihole_dnsmasq', after restoring your "
             "saved DNS settings.",
             "About",
             "Corvane sets up Pi-hole in Docker on Colima and points this Mac's DNS at it. It protects this Mac only, "
             "not other devices on your network. Nothing is sent to a cloud service.",
             "Pi-hole is a separate project (EUPL licence); this app only runs its official Docker image."}));
    };
    begin("running");
    openSettings();
    expectSettings();
    click(QStringLiteral("webPortPicker"));
    EXPECT_TRUE(appear({"8081", "8082", "8083", "8084", "8085", "8086", "8087", "8088", "8089", "8090"}));
    press(Qt::Key_Escape);
    openDashboard();
    pressButton("Settings");
    expectSettings();
    EXPECT_TRUE(appears("Close"));
}

TEST_F(DashboardTexts, Of_a_log_while_it_runs_and_after_it)
{
    begin("stopped");
    openStep(3);
    mac("fault colima late 1 --at 1");
    pressButton("Start Colima");
    EXPECT_TRUE(appear({"Starting Colima", "Cancel", "Live log"}));
    EXPECT_TRUE(appear({"Finished.", "Show details"}));
}

TEST_F(DashboardTexts, Of_the_ports_panel)
{
    begin("stopped");
    mac("port53 grant");
    mac("take-port 8080 tcp --as httpd");
    openStep(2);
    EXPECT_TRUE(appear({"TCP 8080 on 127.0.0.1 is in use by:", "Use another port for the admin page:"}));
    EXPECT_FALSE(reads(QStringLiteral("Port 53 cannot be moved")));
    for (int port = 8081; port <= 8090; ++port)
        Mac::ctl(QStringLiteral("take-port %1 tcp --as httpd").arg(port));
    mac("take-port 53 udp --as dnsmasq");
    mac("take-port 53 tcp --as dnsmasq");
    pressButton("Test (run the checks again)");
    EXPECT_TRUE(appear({"Ports 8081 to 8090 are all taken too.",
                        "UDP 53 on 127.0.0.1 is in use by:", "TCP 53 on 127.0.0.1 is in use by:",
                        "Port 53 cannot be moved: the Mac's DNS needs it. Stop the program listed above, then run the "
                        "checks again."}));
    mac("port53 deny");
}

} // namespace corvane::test
