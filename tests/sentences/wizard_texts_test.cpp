#include "tests/sentences/on_screen.h"

namespace corvane::test {

/// What the set-up says by itself, step by step.
class WizardTexts : public OnScreen {};

TEST_F(WizardTexts, Header_sidebar_and_bar_are_the_same_on_every_step)
{
    begin("bare");
    openStep(1);
    EXPECT_EQ(window()->title(), QStringLiteral("Corvane"));
    EXPECT_TRUE(appear({"Corvane", "Main window", "Settings"}));
    EXPECT_TRUE(appear({"1. Welcome", "2. Check this Mac", "3. Install Colima and Docker", "4. Start Pi-hole",
                        "5. Test blocking", "6. Point this Mac at Pi-hole", "7. Check your browser", "8. Done"}));
    EXPECT_TRUE(appear({"Back", "Step 1 of 8", "Next"}));
    pressButton("Next");
    EXPECT_TRUE(appear({"Check this Mac", "Step 2 of 8"}));
    settle();
    pressButton("8. Done");
    EXPECT_TRUE(appears("Step 8 of 8"));
    pressButton("Main window");
    EXPECT_TRUE(appears("Setup wizard"));
}

TEST_F(WizardTexts, Of_step_1)
{
    begin("bare");
    openStep(1);
    EXPECT_TRUE(appear(
        {"Welcome",
         "Pi-hole blocks ads and trackers by DNS: before your Mac connects to a website, it asks a DNS server for the "
         "address. Pi-hole answers 'nowhere' for known ad and tracker names.",
         "What this wizard will do",
         "1. Check this Mac, then install Colima and Docker with Homebrew if they are missing.",
         "2. Run Pi-hole in a container that listens on this Mac only (127.0.0.1).",
         "3. Test that it answers and that it blocks.",
         "4. In step 6, point this Mac's DNS at Pi-hole first and 1.1.1.1 as backup.",
         "5. Look at your browsers' own secure-DNS settings, which can bypass Pi-hole (read-only).",
         "Your network settings change only in step 6, after you confirm. Before that, nothing about your DNS is "
         "touched.",
         "Nothing is sent to a cloud service. The only internet traffic is Homebrew and Docker downloading software, "
         "and Pi-hole itself looking up names at 1.1.1.1.",
         "Restore my old settings"}));
}

TEST_F(WizardTexts, Of_step_2)
{
    begin("bare");
    openStep(2);
    EXPECT_TRUE(
        appear({"Check this Mac", "These checks only look; they change nothing.", "Test (run the checks again)"}));
}

TEST_F(WizardTexts, Of_step_3)
{
    begin("bare");
    openStep(3);
    EXPECT_TRUE(appear(
        {"Install Colima and Docker",
         "Colima runs Docker containers without Docker Desktop. This uses Homebrew: 'brew install colima docker', then "
         "'colima start --cpu 2 --memory 2 --disk 10'.",
         "Homebrew", "colima", "docker", "Homebrew is not installed. This app never installs it for you.",
         "Get Homebrew (opens brew.sh)", "Start Colima at login",
         "Uses Homebrew's login service for Colima. Switching it changes how Colima is started, so Colima restarts "
         "once.",
         "Docker engine answers (docker info)", "Test"}));
    begin("homebrew");
    openStep(3);
    EXPECT_TRUE(appear({"Install Colima and Docker", "Start Colima"}));
    EXPECT_FALSE(reads(QStringLiteral("Homebrew is not installed.")));
}

TEST_F(WizardTexts, Of_step_4)
{
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "Europe/Berlin");
    begin("stopped");
    openStep(4);
    EXPECT_TRUE(appear({"Start Pi-hole",
                        "Choose an admin password for Pi-hole's web page. It is kept in your Keychain. Time zone: "
                        "Europe/Berlin. Pinned "
                        "Pi-hole version: 2026.09.0.",
                        "Admin password", "Generate", "Copy", "Start Pi-hole", "Docker is not running yet (step 3).",
                        "The first start can take a minute or two while Pi-hole gets going.", "Test"}));
    qputenv("TZ", zone);
    click(QStringLiteral("passwordField"));
    press(Qt::Key_A, Qt::ControlModifier);
    type(QStringLiteral("seven77"));
    EXPECT_TRUE(appears("Use at least 8 characters."));
    type(QStringLiteral(" 8"));
    EXPECT_TRUE(appears("Use only letters, digits and - _ . @ +"));
}

TEST_F(WizardTexts, Of_step_5)
{
    begin("stopped");
    openStep(5);
    EXPECT_TRUE(appear(
        {"Test blocking",
         "The test looks up a tracker domain that Pi-hole's default list blocks, and a normal one. On the very first "
         "start Pi-hole downloads its block lists, which takes about a minute.",
         "Test"}));
}

TEST_F(WizardTexts, Of_step_6)
{
    begin("running");
    mac("servers|Thunderbolt Bridge|9.9.9.9|8.8.8.8");
    openStep(6);
    EXPECT_TRUE(appear(
        {"Point this Mac at Pi-hole",
         "This is the only step that changes your Mac's network settings. DNS becomes 127.0.0.1 (Pi-hole) first and "
         "1.1.1.1 as backup. Your old values are saved first and can be restored at any time.",
         "DNS servers macOS uses now: 192.168.1.1", "Wi-Fi  (used for your internet connection)", "DNS: Automatic",
         "Thunderbolt Bridge", "DNS: 9.9.9.9, 8.8.8.8", "Pi-hole only (no 1.1.1.1 backup)",
         "Honest note: macOS may sometimes ask 1.1.1.1 instead of Pi-hole, so a few ads can get through. 'Pi-hole "
         "only' avoids that, with the risk above.",
         "Change DNS...", "Restore my old settings", "Reload list", "Test"}));
    const char *const warning =
        "Warning: with Pi-hole only, nothing can be looked up while Pi-hole is stopped (for example after a restart "
        "before Colima is up) until you restore your old settings.";
    EXPECT_FALSE(reads(QString::fromUtf8(warning)));
    click(QStringLiteral("piholeOnlySwitch"));
    EXPECT_TRUE(appears(warning));
}

TEST_F(WizardTexts, Of_step_6_without_services_and_without_resolvers)
{
    begin("running");
    openStep(6);
    mac("fault networksetup fail");
    pressButton("Reload list");
    EXPECT_TRUE(appears("No network services found."));
    mac("fault clear");
    mac("fault networksetup late 1 --at 1");
    pressButton("Reload list");
    EXPECT_TRUE(appears("Reading network services..."));
    settle();
    mac("fault scutil fail");
    run(model().refreshStatus(Stats::Leave)); // as the poll does every few seconds
    EXPECT_TRUE(appears("DNS servers macOS uses now: unknown"));
}

TEST_F(WizardTexts, Of_step_7)
{
    begin("running");
    openStep(7);
    EXPECT_TRUE(appear(
        {"Check your browser",
         "Some browsers have their own secure DNS (DNS over HTTPS). When it is on, that browser skips Pi-hole. This "
         "step only reads settings and never changes them.",
         "To check, this app will read each browser's settings file (Chrome, Edge and Brave: 'Local State'; Firefox: "
         "'prefs.js') in your Library folder. Nothing is changed or sent anywhere.",
         "Allow the read-only check",
         "This opens a made-up name like cv-1a2b3c.example.com in your default browser. An error page is expected: the "
         "name does not exist. The test only looks for the name in Pi-hole's query log for up to 20 seconds.",
         "Browser test"}));
    pressButton("Allow the read-only check");
    EXPECT_TRUE(
        appear({"Check again", "Safari", "Google Chrome", "Microsoft Edge", "Brave", "Firefox", "Open settings"}));
    // Every scan finds Safari, which is part of macOS; so the empty list can only be put there.
    model().setBrowsers({});
    EXPECT_TRUE(appears("No known browser found."));
}

TEST_F(WizardTexts, Of_step_8_before_and_after_success)
{
    begin("protected");
    openStep(8);
    EXPECT_TRUE(appear(
        {"Almost there",
         "Success is only claimed when the Pi-hole test (step 4) and the Mac DNS test (step 6) both passed in this "
         "session.",
         "Docker engine", "Pi-hole container, admin page and DNS (step 4)", "Blocking (step 5)",
         "This Mac uses Pi-hole (step 6)", "Browser (step 7)", "Not tested in this session.",
         "Admin password:", "correct-horse-9", "Copy", "Open dashboard", "Go to the main window", "How to undo",
         "Press 'Restore my old settings' (here, in step 1 or 6, or in the main window) to put your previous DNS "
         "servers back. 'Remove Pi-hole' in Settings also restores them first.",
         "Restore my old settings", "This protects this Mac only, not other devices on your network."}));
    run(model().runAllTests());
    EXPECT_TRUE(appear({"Pi-hole is running and this Mac uses it", "Primary DNS: Pi-hole, backup: 1.1.1.1"}));
}

} // namespace corvane::test
