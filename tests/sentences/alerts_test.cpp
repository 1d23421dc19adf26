#include "tests/flows/saved_files.h"
#include "tests/sentences/on_screen.h"

#include <QDir>

namespace corvane::test {

namespace {

/// Every question: what it is asked after, and that its second button leaves everything as it was.
class Alerts : public OnScreen {
protected:
    /// Answers no, after which nothing may be under way.
    void decline()
    {
        pressButton("Cancel");
        settle();
    }
};

const Question kUpdate{"Update Pi-hole to 2026.10.0?",
                       "A backup is saved first, then the new image is downloaded and Pi-hole restarts. Your data "
                       "volumes are never deleted.",
                       "Update", "Cancel"};

} // namespace

TEST_F(Alerts, Before_colima_starts_at_login)
{
    begin("running");
    model().setAutostartColima(false);
    openStep(3);
    click(QStringLiteral("stepAutostartSwitch"));
    EXPECT_TRUE(asks({"Start Colima at login?",
                      "Colima will be stopped once and then started by Homebrew's login service. Pi-hole is "
                      "unavailable for a short moment.",
                      "Continue", "Cancel"}));
    decline();
    EXPECT_FALSE(model().autostartColima());
}

TEST_F(Alerts, Before_colima_no_longer_starts_at_login)
{
    begin("running");
    openSettings();
    click(QStringLiteral("autostartColimaSwitch"));
    EXPECT_TRUE(asks({"Stop starting Colima at login?",
                      "Homebrew's login service for Colima will be stopped, and Colima will be started again by hand "
                      "(it will not start at login).",
                      "Continue", "Cancel"}));
    decline();
    EXPECT_TRUE(model().autostartColima());
}

TEST_F(Alerts, Before_colima_restarts_for_udp)
{
    begin("running");
    mac("forwarder ssh");
    openStep(4);
    pressButton("Test");
    pressButton("Restart Colima with UDP forwarding for me");
    EXPECT_TRUE(asks({"Restart Colima with UDP forwarding?",
                      "Colima will be stopped and started again with the gRPC port forwarder, which also forwards UDP. "
                      "Pi-hole comes back by itself afterwards.",
                      "Restart Colima", "Cancel"}));
    decline();
    EXPECT_TRUE(Mac::calls(QStringLiteral("colima")).filter(QStringLiteral("stop")).isEmpty());
}

TEST_F(Alerts, Before_an_update)
{
    begin("running");
    openDashboard();
    pressButton("Check for updates");
    pressButton("Back up and update");
    EXPECT_TRUE(asks(kUpdate));
    decline();
    EXPECT_EQ(model().pinnedTag(), QStringLiteral("2026.09.0"));
}

TEST_F(Alerts, Before_pihole_is_removed)
{
    const Question question{"Remove Pi-hole?",
                            "This removes the container 'pihole' and its two data volumes 'pihole_etc' and "
                            "'pihole_dnsmasq'. Your saved DNS settings are restored first (administrator prompt). "
                            "Colima and Docker stay installed.",
                            "Remove Pi-hole", "Cancel"};
    begin("running");
    openSettings();
    pressButton("Remove Pi-hole...");
    EXPECT_TRUE(asks(question));
    decline();
    openDashboard();
    pressButton("Settings");
    pressButton("Remove Pi-hole...");
    EXPECT_TRUE(asks(question)) << "in the sheet too";
    decline();
    EXPECT_TRUE(model().containerState().isRunning());
}

TEST_F(Alerts, Before_a_backup_is_restored)
{
    begin("running");
    const QString file = QDir::home().filePath(QStringLiteral("my backup.zip"));
    write(file, "PK");
    openDashboard();
    pressButton("Restore...");
    chooseFile(file);
    EXPECT_TRUE(asks({"Restore this backup?",
                      "Pi-hole's settings, lists and local DNS entries will be replaced by the contents of my "
                      "backup.zip.",
                      "Restore backup", "Cancel"}));
    decline();
    EXPECT_TRUE(model().notice().isEmpty());
}

TEST_F(Alerts, Before_dns_changes)
{
    begin("running");
    mac("servers|Thunderbolt Bridge|9.9.9.9|8.8.8.8");
    openStep(6);
    click(QStringLiteral("service2"));
    pressButton("Change DNS...");
    EXPECT_TRUE(asks({"Change DNS on 2 network service(s)?",
                      "• Wi-Fi: Automatic  ->  127.0.0.1, then 1.1.1.1\n"
                      "• Thunderbolt Bridge: 9.9.9.9, 8.8.8.8  ->  127.0.0.1, then 1.1.1.1\n"
                      "\n"
                      "Your old values are saved first in dns-backup.json (Application Support/Corvane). The DNS cache "
                      "is flushed. macOS will ask for your administrator password once.",
                      "Change DNS", "Cancel"}));
    decline();

    click(QStringLiteral("service2"));
    click(QStringLiteral("piholeOnlySwitch"));
    pressButton("Change DNS...");
    EXPECT_TRUE(asks({"Change DNS on 1 network service(s)?",
                      "• Wi-Fi: Automatic  ->  127.0.0.1 only\n"
                      "\n"
                      "Your old values are saved first in dns-backup.json (Application Support/Corvane). The DNS cache "
                      "is flushed. macOS will ask for your administrator password once.\n"
                      "\n"
                      "Pi-hole only: if Pi-hole stops, this Mac has no DNS until you restore your old settings.",
                      "Change DNS", "Cancel"}));
    decline();
    EXPECT_EQ(Mac::prompts(), 0);
}

TEST_F(Alerts, Before_old_dns_settings_come_back)
{
    begin("running");
    const char *const heading = "Restore my old DNS settings?";
    const Question withoutBackup{
        heading,
        "No saved settings were found. Network services that point at Pi-hole will be set back "
        "to Automatic. macOS will ask for your administrator password.",
        "Restore", "Cancel"};
    const Question withBackup{heading,
                              "The DNS servers saved before the wizard changed them will be put back. macOS will ask "
                              "for your administrator password.",
                              "Restore", "Cancel"};
    openStep(1);
    pressButton("Restore my old settings");
    EXPECT_TRUE(asks(withoutBackup));
    decline();

    openStep(6);
    pressButton("Change DNS...");
    pressButton("Change DNS");
    EXPECT_TRUE(appears("DNS changed."));
    settle();
    for (const int step : {1, 6, 8}) {
        openStep(step);
        pressButton("Restore my old settings");
        EXPECT_TRUE(asks(withBackup)) << "step " << step;
        decline();
    }
    openDashboard();
    pressButton("Restore my old settings");
    EXPECT_TRUE(asks(withBackup));
    decline();
    EXPECT_EQ(Mac::prompts(), 1) << "for the change alone";
}

} // namespace corvane::test
