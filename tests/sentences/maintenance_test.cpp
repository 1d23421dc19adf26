#include "tests/flows/pihole_files.h"
#include "tests/flows/saved_files.h"
#include "tests/sentences/on_screen.h"

#include <QDir>
#include <QRegularExpression>

namespace corvane::test {

namespace {

/// What is done to the Mac, and what is said then.
struct Case {
    const char *order;
    const char *sentence;
};

/// What the dashboard says about updates.
class Updates : public OnScreen {
protected:
    /// Begins an update that this order may disturb.
    void update(const char *order = nullptr)
    {
        begin("running");
        openDashboard();
        pressButton("Check for updates");
        EXPECT_TRUE(appears("Version 2026.10.0 is available (you have 2026.09.0)."));
        if (order) mac(order);
        pressButton("Back up and update");
        pressButton("Update");
    }
};

/// What Settings says about the web port, the start at login and removal.
class Settings : public OnScreen {
protected:
    void openOn(const char *state)
    {
        begin(state);
        openSettings();
    }
    void remove()
    {
        pressButton("Remove Pi-hole...");
        pressButton("Remove Pi-hole");
    }
};

/// What the dashboard says about backups.
class Backups : public OnScreen {
protected:
    static QString home(const char *name) { return QDir::home().filePath(QString::fromUtf8(name)); }
};

const char *const kRolledBack = "The update did not finish; the pinned version is back to 2026.09.0. Use Start/Restart "
                                "if Pi-hole is not running.";

} // namespace

TEST_F(Updates, A_check_says_what_it_found)
{
    begin("running");
    openDashboard();
    for (const Case &each : {Case{"feed tag 2026.10.0", "Version 2026.10.0 is available (you have 2026.09.0)."},
                             Case{"feed tag 2026.09.0", "You have the newest version (2026.09.0)."},
                             Case{"feed tag v2026.10.0", "Could not read the newest version."}}) {
        mac(each.order);
        pressButton("Check for updates");
        EXPECT_TRUE(appears(each.sentence));
    }
    mac("feed wrong-cert on");
    pressButton("Check for updates");
    EXPECT_TRUE(appearsWithReason("Could not check for updates: "));
    mac("feed normal");
    mac("feed hang");
    pressButton("Check for updates");
    EXPECT_TRUE(appears("Asking api.github.com for the newest version. Nothing about you is sent..."));
}

TEST_F(Updates, An_update_says_how_it_went)
{
    update();
    EXPECT_TRUE(appear(
        {"Updating Pi-hole to 2026.10.0", "Updated to 2026.10.0.", "Finished.", "Pinned Pi-hole version: 2026.10.0"}));
    update("internet off");
    EXPECT_TRUE(
        appear({kRolledBack, "Docker could not reach the internet to download Pi-hole. Check your connection "
                             "(and any VPN) and try again. If this Mac uses Pi-hole only and Pi-hole is stopped, "
                             "restore your old DNS settings first."}));
    update("container stop");
    EXPECT_TRUE(appears("The update was not started because the backup failed: Pi-hole did not answer on 127.0.0.1."));
    update("fault docker vanish");
    EXPECT_TRUE(appears("docker was not found."));
}

TEST_F(Updates, One_that_left_no_container_is_put_right_by_a_start)
{
    update("fault|docker|fail|125|something odd|--when|run *");
    EXPECT_TRUE(
        appear({kRolledBack, "There is no container of Pi-hole at the moment.", "Bring version 2026.09.0 back"}));
    pressButton("Start");
    EXPECT_TRUE(appearsWithReason("Version 2026.09.0 was not brought back: "));
    settle();
    mac("fault clear");
    pressButton("Start");
    EXPECT_TRUE(appear({"Bringing version 2026.09.0 back", "Version 2026.09.0 is back."}));
}

TEST_F(Updates, A_file_that_cannot_be_written_is_told)
{
    begin("running");
    openDashboard();
    pressButton("Check for updates");
    QFile::remove(PiholeFiles::compose());
    QDir().mkpath(PiholeFiles::compose());
    pressButton("Back up and update");
    pressButton("Update");
    EXPECT_TRUE(appearsWithReason("Could not write the new compose file: "));
    QDir().rmdir(PiholeFiles::compose());
}

TEST_F(Updates, What_would_get_in_the_way_of_an_open_question_says_so)
{
    begin("running");
    openDashboard();
    pressButton("Check for updates");
    pressButton("Back up and update");
    model().startColimaOnly();
    pressButton("Update");
    EXPECT_TRUE(appears("Not now: answer the open question first."));
    EXPECT_TRUE(appears("Updated to 2026.10.0."));
}

TEST_F(Settings, A_new_port_says_how_it_went)
{
    openOn("running");
    mac("take-port 8081 tcp --as nginx");
    pick("webPortPicker", "8081");
    EXPECT_TRUE(appears("Port 8081 is already in use."));
    mac("fault docker late 1 --when run*");
    pick("webPortPicker", "8082");
    EXPECT_TRUE(appears("Recreating Pi-hole on port 8082"));
    settle();
    mac("fault|docker|fail|125|no space left on device|--when|run *");
    pick("webPortPicker", "8083");
    const char *const diskFull = "The Colima disk is full. Free some space (for example 'docker system prune') or "
                                 "recreate Colima with a bigger disk.";
    EXPECT_TRUE(appears(diskFull));
    EXPECT_TRUE(appears(
        (std::string("Pi-hole was not recreated on port 8083: ") + diskFull +
         " The web port is 8082 again. There is no container of Pi-hole at the moment. Press Start to get it back.")
            .c_str()));
    settle();
    mac("fault docker vanish");
    pick("webPortPicker", "8084");
    EXPECT_TRUE(appears("docker was not found."));
    mac("fault clear");
    QFile::remove(PiholeFiles::compose());
    QDir().mkpath(PiholeFiles::compose());
    pick("webPortPicker", "8085");
    EXPECT_TRUE(appearsWithReason("Could not write the new compose file: "));
    QDir().rmdir(PiholeFiles::compose());
}

TEST_F(Settings, A_start_at_login_that_is_refused_is_told)
{
    openOn("bare");
    write(QDir::home().filePath(QStringLiteral(".config/autostart")), "a file in the folder's place");
    click(QStringLiteral("launchAtLoginSwitch"));
    EXPECT_TRUE(appearsWithReason("Could not change launch at login: "));
    QFile::remove(QDir::home().filePath(QStringLiteral(".config/autostart")));
}

TEST_F(Settings, A_removal_says_how_it_went)
{
    openOn("running");
    remove();
    EXPECT_TRUE(appears("Pi-hole was removed."));
    settle();
    openOn("running");
    mac("engine stop");
    remove();
    EXPECT_TRUE(appears("Docker could not remove everything: Docker is not running. Start Colima first (step 3)."));
    settle();
    openOn("running");
    mac("fault docker vanish");
    remove();
    EXPECT_TRUE(appears("Docker could not remove everything: docker was not found."));
    settle();
    openOn("protected");
    mac("prompt cancel once");
    remove();
    EXPECT_TRUE(appears("Pi-hole was not removed because your DNS could not be restored: You cancelled the "
                        "administrator prompt. Nothing was changed."));
}

TEST_F(Backups, Say_how_they_went)
{
    begin("running");
    openDashboard();
    pressButton("Back up...");
    ASSERT_TRUE(filePanel());
    EXPECT_TRUE(QRegularExpression(QStringLiteral("/pihole-backup-\\d{8}-\\d{6}\\.zip$"))
                    .match(filePanel()->selectedFiles().value(0))
                    .hasMatch());
    chooseFile(home("my backup.zip"));
    EXPECT_TRUE(appears("Backup saved to my backup.zip."));
    pressButton("Back up...");
    chooseFile(QStringLiteral("/System/Library/backup.zip"));
    EXPECT_TRUE(appearsWithReason("Backup failed: "));

    write(home("bad.zip"), "This is no zip.");
    pressButton("Restore...");
    chooseFile(home("bad.zip"));
    pressButton("Restore backup");
    EXPECT_TRUE(appears("Restore failed: Pi-hole answered with HTTP 400"));
    pressButton("Restore...");
    chooseFile(home("my backup.zip"));
    pressButton("Restore backup");
    EXPECT_TRUE(appears("Backup restored."));
    settle();
}

TEST_F(Backups, Say_why_they_failed)
{
    begin("running");
    openDashboard();
    mac("container stop");
    pressButton("Back up...");
    EXPECT_TRUE(appears("Backup failed: Pi-hole did not answer on 127.0.0.1."));
    write(home("some.zip"), "PK");
    pressButton("Restore...");
    chooseFile(home("some.zip"));
    pressButton("Restore backup");
    EXPECT_TRUE(appears("Restore failed: Pi-hole did not answer on 127.0.0.1."));
}

} // namespace corvane::test
