#include "tests/ui/screen.h"
#include "tests/ui/states.h"

#include <QAccessible>
#include <QTest>

namespace corvane {

namespace {

class Wizard : public Screen {
protected:
    void expectTexts(std::initializer_list<const char *> expected)
    {
        const QStringList all = texts();
        for (const char *text : expected)
            EXPECT_TRUE(all.contains(QString::fromUtf8(text))) << text;
    }
};

TEST_F(Wizard, Welcome_says_what_will_happen)
{
    openStep(0);
    expectTexts({
        "1. Welcome",
        "2. Check this Mac",
        "3. Install Colima and Docker",
        "4. Start Pi-hole",
        "5. Test blocking",
        "6. Point this Mac at Pi-hole",
        "7. Check your browser",
        "8. Done",
        "Welcome",
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
        "and "
        "Pi-hole itself looking up names at 1.1.1.1.",
        "Restore my old settings",
        "Main window",
        "Settings",
        "Back",
        "Step 1 of 8",
        "Next",
    });
}

TEST_F(Wizard, Welcome_says_beside_the_button_how_restoring_went)
{
    openStep(0);
    EXPECT_FALSE(shows(QStringLiteral("welcomeRestoreMessage")));
    m_app.setDnsMessage(QStringLiteral("You cancelled the administrator prompt. Nothing was changed."));
    settle();
    EXPECT_EQ(textOf(QStringLiteral("welcomeRestoreMessage")), m_app.dnsMessage());
    const auto middle = [this](const char *name) {
        const QQuickItem *item = find(QString::fromLatin1(name));
        return item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    };
    EXPECT_GT(middle("welcomeRestoreMessage").x(), middle("welcomeRestoreButton").x());
    EXPECT_NEAR(middle("welcomeRestoreMessage").y(), middle("welcomeRestoreButton").y(), 2);
}

TEST_F(Wizard, Old_settings_are_not_restored_while_the_DNS_is_being_changed)
{
    openStep(5);
    EXPECT_TRUE(enabled(QStringLiteral("dnsRestoreButton")));
    m_app.setBusy({QStringLiteral("applydns")});
    EXPECT_FALSE(enabled(QStringLiteral("dnsRestoreButton")));
    m_app.setBusy({});
}

TEST_F(Wizard, There_is_no_way_back_from_the_first_step_and_none_on_from_the_last)
{
    openStep(0);
    EXPECT_FALSE(enabled(QStringLiteral("backButton")));
    EXPECT_TRUE(enabled(QStringLiteral("nextButton")));
    click(QStringLiteral("nextButton"));
    EXPECT_EQ(m_app.step(), 1);
    settle();
    click(QStringLiteral("backButton"));
    EXPECT_EQ(m_app.step(), 0);
    click(QStringLiteral("step8"));
    EXPECT_EQ(m_app.step(), 7);
    EXPECT_TRUE(enabled(QStringLiteral("backButton")));
    EXPECT_FALSE(shows(QStringLiteral("nextButton")));
    EXPECT_TRUE(reads(QStringLiteral("Step 8 of 8")));
}

TEST_F(Wizard, Checks_run_by_themselves_the_first_time_only)
{
    openStep(1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_app.systemChecks().isEmpty(); }));
    expectTexts({"Check this Mac", "These checks only look; they change nothing.", "Test (run the checks again)"});
    showChecks(m_app, false);
    click(QStringLiteral("step1"));
    click(QStringLiteral("step2"));
    EXPECT_TRUE(m_app.busy().isEmpty());
    expectTexts({"Apple silicon", "This is an Apple silicon Mac.", "macOS 14.5 is supported."});
}

TEST_F(Wizard, A_busy_check_cannot_be_started_twice)
{
    openStep(1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_app.busy().isEmpty(); }));
    m_app.setBusy({QStringLiteral("checks")});
    EXPECT_FALSE(enabled(QStringLiteral("checksButton")));
    m_app.setBusy({});
    EXPECT_TRUE(enabled(QStringLiteral("checksButton")));
}

TEST_F(Wizard, Taken_ports_name_their_holders_and_offer_another_web_port)
{
    openStep(1);
    showChecks(m_app, true);
    expectTexts({"UDP 53 on 127.0.0.1 is in use by:", "TCP 8080 on 127.0.0.1 is in use by:",
                 "Port 53 cannot be moved: the Mac's DNS needs it. Stop the program listed above, then run the checks "
                 "again."});
    EXPECT_TRUE(reads(QStringLiteral("dnsmasq  4711 anna")));
    EXPECT_TRUE(texts().contains(QStringLiteral("Use another port for the admin page:")));
    EXPECT_TRUE(enabled(QStringLiteral("freePortPicker")));
}

TEST_F(Wizard, No_other_port_is_chosen_while_an_operation_runs)
{
    openStep(1);
    showChecks(m_app, true);
    const SleepingOperation maintenance(*m_app.maintOp());
    EXPECT_FALSE(enabled(QStringLiteral("freePortPicker")));
}

TEST_F(Wizard, Only_an_installation_keeps_from_installing)
{
    openStep(2);
    m_app.setHasBrew(true);
    {
        const SleepingOperation start(*m_app.startOp());
        EXPECT_TRUE(enabled(QStringLiteral("installButton")));
        EXPECT_FALSE(enabled(QStringLiteral("startColimaButton")));
    }
    const SleepingOperation installation(*m_app.installOp());
    EXPECT_FALSE(enabled(QStringLiteral("installButton")));
    EXPECT_FALSE(enabled(QStringLiteral("startColimaButton")));
}

TEST_F(Wizard, A_start_that_a_port_prevented_shows_who_holds_it)
{
    openStep(3);
    showChecks(m_app, true);
    EXPECT_FALSE(shows(QStringLiteral("portsPanel")));
    m_app.setStartMessage(QStringLiteral("The password could not be saved in the Keychain."));
    EXPECT_FALSE(shows(QStringLiteral("portsPanel")));
    m_app.setStartMessage(AppModel::kPortTaken);
    EXPECT_TRUE(shows(QStringLiteral("portsPanel")));
    EXPECT_TRUE(reads(QStringLiteral("UDP 53 on 127.0.0.1 is in use by:")));
}

TEST_F(Wizard, A_taken_port_53_alone_offers_no_other_port)
{
    openStep(1);
    showChecks(m_app, true);
    QList<PortReport> reports = m_app.portReports();
    reports[2].probe = PortProbe::Free;
    m_app.setPortReports(reports);
    EXPECT_TRUE(shows(QStringLiteral("portsPanel")));
    EXPECT_FALSE(shows(QStringLiteral("freePortPicker")));
}

TEST_F(Wizard, Without_Homebrew_it_shows_the_way_to_it)
{
    openStep(2);
    expectTexts({"Install Colima and Docker",
                 "Colima runs Docker containers without Docker Desktop. This uses Homebrew: 'brew install colima "
                 "docker', then 'colima start --cpu 2 --memory 2 --disk 10'.",
                 "Homebrew", "colima", "docker", "Homebrew is not installed. This app never installs it for you.",
                 "Get Homebrew (opens brew.sh)", "Start Colima at login",
                 "Uses Homebrew's login service for Colima. Switching it changes how Colima is started, so Colima "
                 "restarts once.",
                 "Docker engine answers (docker info)", "Test"});
    EXPECT_FALSE(shows(QStringLiteral("installButton")));
    click(QStringLiteral("getHomebrewButton"));
    ASSERT_EQ(m_workspace.opened.size(), 1);
    EXPECT_EQ(m_workspace.opened.first().host(), QStringLiteral("brew.sh"));
}

TEST_F(Wizard, With_Homebrew_it_offers_to_install_and_to_start)
{
    openStep(2);
    m_app.setHasBrew(true);
    EXPECT_TRUE(enabled(QStringLiteral("installButton")));
    EXPECT_TRUE(enabled(QStringLiteral("startColimaButton")));
    EXPECT_FALSE(shows(QStringLiteral("getHomebrewButton")));
}

TEST_F(Wizard, The_test_of_Docker_shows_its_result)
{
    openStep(2);
    EXPECT_FALSE(shows(QStringLiteral("dockerTestResult")));
    click(QStringLiteral("dockerTestButton"));
    settle();
    EXPECT_TRUE(shows(QStringLiteral("dockerTestResult")));
}

TEST_F(Wizard, The_password_step_proposes_a_password)
{
    openStep(3);
    EXPECT_EQ(textOf(QStringLiteral("passwordField")).size(), 16);
    EXPECT_TRUE(reads(QStringLiteral("Choose an admin password for Pi-hole's web page. It is kept in your Keychain. "
                                     "Time zone: ")));
    EXPECT_TRUE(reads(QStringLiteral(". Pinned Pi-hole version: 2026.09.0.")));
    expectTexts({"Start Pi-hole", "Admin password", "Generate", "Copy", "Docker is not running yet (step 3).",
                 "The first start can take a minute or two while Pi-hole gets going.", "Test"});
    EXPECT_FALSE(enabled(QStringLiteral("startPiholeButton")));
    m_app.setDockerWorks(true);
    EXPECT_TRUE(enabled(QStringLiteral("startPiholeButton")));
    EXPECT_FALSE(texts().contains(QStringLiteral("Docker is not running yet (step 3).")));
}

TEST_F(Wizard, A_saved_password_stays)
{
    m_app.setAdminPassword(QStringLiteral("from.the-keychain"));
    openStep(3);
    EXPECT_EQ(textOf(QStringLiteral("passwordField")), QStringLiteral("from.the-keychain"));
    click(QStringLiteral("copyPasswordButton"));
    EXPECT_EQ(m_workspace.copiedSecret, QStringLiteral("from.the-keychain"));
    click(QStringLiteral("generateButton"));
    EXPECT_EQ(textOf(QStringLiteral("passwordField")).size(), 16);
}

TEST_F(Wizard, A_password_that_breaks_a_rule_says_which_and_cannot_start)
{
    openStep(3);
    m_app.setDockerWorks(true);
    find(QStringLiteral("passwordField"))->forceActiveFocus();
    press(Qt::Key_A, Qt::ControlModifier);
    type(QStringLiteral("seven77"));
    EXPECT_EQ(m_app.passwordInput(), QStringLiteral("seven77"));
    EXPECT_EQ(textOf(QStringLiteral("tooShortHint")), QStringLiteral("Use at least 8 characters."));
    EXPECT_FALSE(shows(QStringLiteral("otherCharactersHint")));
    EXPECT_FALSE(enabled(QStringLiteral("startPiholeButton")));
    type(QStringLiteral(" x"));
    EXPECT_FALSE(shows(QStringLiteral("tooShortHint")));
    EXPECT_EQ(textOf(QStringLiteral("otherCharactersHint")), QStringLiteral("Use only letters, digits and - _ . @ +"));
    EXPECT_FALSE(enabled(QStringLiteral("startPiholeButton")));
}

TEST_F(Wizard, A_missing_UDP_answer_brings_help)
{
    openStep(3);
    EXPECT_FALSE(shows(QStringLiteral("udpHelp")));
    showPiholeTests(m_app, false);
    expectTexts({"UDP port 53 is probably not reaching your Mac",
                 "The container is healthy, but DNS over UDP gets no answer. Colima's default SSH port forwarder only "
                 "forwards TCP; the gRPC forwarder also forwards UDP.",
                 "Fix: run 'colima stop', then 'colima start --edit', change 'portForwarder: ssh' to 'portForwarder: "
                 "grpc', save, and run 'colima start'. Then press Test again.",
                 "This Colima version does not show a --port-forwarder option, so use the manual steps above."});
    m_app.setGrpcFlagSupported(true);
    EXPECT_TRUE(enabled(QStringLiteral("fixUdpButton")));
    EXPECT_EQ(textOf(QStringLiteral("fixUdpButton")), QStringLiteral("Restart Colima with UDP forwarding for me"));
}

TEST_F(Wizard, Blocking_results_say_what_was_blocked_and_what_was_not)
{
    openStep(4);
    expectTexts({"Test blocking",
                 "The test looks up a tracker domain that Pi-hole's default list blocks, and a normal one. On the very "
                 "first start Pi-hole downloads its block lists, which takes about a minute."});
    BlockingTestResult result;
    result.blockedDomain = QStringLiteral("ads.example.net");
    result.blockedKind = QStringLiteral("answered 0.0.0.0 (nowhere)");
    result.allowedAnswer = QStringLiteral("93.184.216.34");
    result.queries = 120;
    result.blockedToday = 17;
    m_app.setBlockingTest(result);
    expectTexts({"Blocked: ads.example.net answered 0.0.0.0 (nowhere)", "Allowed: example.com", "Answer: 93.184.216.34",
                 "From Pi-hole's API: Queries today: 120. Blocked today: 17"});
}

TEST_F(Wizard, Nothing_blocked_is_said_plainly)
{
    openStep(4);
    BlockingTestResult result;
    result.allowedAnswer = QStringLiteral("no answer (timeout)");
    m_app.setBlockingTest(result);
    expectTexts({"Nothing was blocked", "No test tracker domain was blocked yet.", "no answer (timeout)"});
}

TEST_F(Wizard, The_DNS_step_lists_the_services_and_changes_nothing_by_itself)
{
    openStep(5);
    expectTexts({"Point this Mac at Pi-hole",
                 "This is the only step that changes your Mac's network settings. DNS becomes 127.0.0.1 (Pi-hole) "
                 "first and 1.1.1.1 as backup. Your old values are saved first and can be restored at any time.",
                 "DNS servers macOS uses now: unknown", "No network services found.",
                 "Pi-hole only (no 1.1.1.1 backup)",
                 "Honest note: macOS may sometimes ask 1.1.1.1 instead of Pi-hole, so a few ads can get through. "
                 "'Pi-hole only' avoids that, with the risk above.",
                 "Change DNS...", "Restore my old settings", "Reload list", "Test"});
    EXPECT_FALSE(enabled(QStringLiteral("applyDnsButton")));
    showServices(m_app);
    expectTexts({"Wi-Fi  (used for your internet connection)", "DNS: Automatic", "USB 10/100/1000 LAN",
                 "DNS: 192.168.1.1, 9.9.9.9", "DNS servers macOS uses now: 192.168.1.1"});
    EXPECT_TRUE(enabled(QStringLiteral("applyDnsButton")));
    click(QStringLiteral("service1"));
    EXPECT_TRUE(m_app.selectedServices().isEmpty());
    EXPECT_FALSE(enabled(QStringLiteral("applyDnsButton")));
    click(QStringLiteral("service2"));
    EXPECT_EQ(m_app.selectedServices(), QSet<QString>{QStringLiteral("USB 10/100/1000 LAN")});
}

TEST_F(Wizard, While_services_are_read_it_says_so)
{
    openStep(5);
    m_app.setBusy({QStringLiteral("services")});
    EXPECT_EQ(textOf(QStringLiteral("noServicesText")), QStringLiteral("Reading network services..."));
    m_app.setBusy({});
}

TEST_F(Wizard, Services_stay_in_their_place_while_they_are_read_again)
{
    openStep(5);
    showServices(m_app);
    settle();
    const double before = find(QStringLiteral("service2"))->mapToScene(QPointF()).y();
    m_app.setBusy({QStringLiteral("services")});
    QTest::qWait(20);
    EXPECT_EQ(textOf(QStringLiteral("servicesNote")), QStringLiteral("Reading network services..."));
    EXPECT_EQ(find(QStringLiteral("service2"))->mapToScene(QPointF()).y(), before);
    m_app.setBusy({});
    EXPECT_FALSE(shows(QStringLiteral("servicesNote")));
}

TEST_F(Wizard, Without_a_service_it_says_why_nothing_can_be_changed)
{
    openStep(5);
    EXPECT_FALSE(shows(QStringLiteral("pickServiceHint")));
    showServices(m_app);
    EXPECT_FALSE(shows(QStringLiteral("pickServiceHint")));
    m_app.setSelectedServices({});
    settle();
    EXPECT_EQ(textOf(QStringLiteral("pickServiceHint")), QStringLiteral("Pick at least one network service."));
}

TEST_F(Wizard, Every_answer_to_what_was_pressed_comes_into_sight)
{
    const auto verdictInSight = [this] {
        const QQuickItem *verdict = find(QStringLiteral("browserTestDetail"));
        const double bottom = verdict->mapToScene(QPointF(0, verdict->height())).y();
        return verdict->isVisible() && bottom < find(QStringLiteral("nextButton"))->mapToScene(QPointF()).y();
    };
    openStep(6);
    showBrowsers(m_app);
    find(QStringLiteral("browserTestButton"))->forceActiveFocus();
    m_app.setBrowserTestDetail(QStringLiteral("Opened cv-1a2b3c.example.com in your default browser."));
    EXPECT_TRUE(QTest::qWaitFor(verdictInSight));
    press(Qt::Key_Home);
    EXPECT_FALSE(verdictInSight());
    find(QStringLiteral("browserTestButton"))->forceActiveFocus();
    m_app.setBrowserTestDetail(QStringLiteral("cv-1a2b3c.example.com did not appear in Pi-hole's query log."));
    EXPECT_TRUE(QTest::qWaitFor(verdictInSight));
}

TEST_F(Wizard, An_old_answer_does_not_scroll_the_step_that_is_opened_anew)
{
    showBrowsers(m_app);
    m_app.setBrowserTestDetail(QStringLiteral("Opened cv-1a2b3c.example.com in your default browser."));
    openStep(6);
    QTest::qWait(150);
    EXPECT_GT(find(QStringLiteral("stepTitle"))->mapToScene(QPointF()).y(), 0);
}

TEST_F(Wizard, A_page_is_scrolled_by_keys)
{
    openStep(6);
    showBrowsers(m_app);
    settle();
    const auto titleAt = [this] { return find(QStringLiteral("stepTitle"))->mapToScene(QPointF()).y(); };
    const double start = titleAt();
    find(QStringLiteral("checkBrowsersButton"))->forceActiveFocus();
    press(Qt::Key_PageDown);
    EXPECT_LT(titleAt(), start);
    press(Qt::Key_End);
    const double end = titleAt();
    press(Qt::Key_Up);
    EXPECT_EQ(titleAt(), end + 40);
    press(Qt::Key_Home);
    EXPECT_EQ(titleAt(), start);
}

TEST_F(Wizard, Pi_hole_only_warns)
{
    openStep(5);
    EXPECT_FALSE(shows(QStringLiteral("piholeOnlyWarning")));
    click(QStringLiteral("piholeOnlySwitch"));
    EXPECT_TRUE(m_app.piholeOnly());
    EXPECT_EQ(textOf(QStringLiteral("piholeOnlyWarning")),
              QStringLiteral("Warning: with Pi-hole only, nothing can be looked up while Pi-hole is stopped (for "
                             "example after a restart before Colima is up) until you restore your old settings."));
}

TEST_F(Wizard, The_DNS_test_says_whether_this_Mac_uses_Pi_hole)
{
    openStep(5);
    showOutcome(m_app, QStringLiteral("system"), false, QStringLiteral("0 of 3"));
    expectTexts({"Not confirmed"});
    showOutcome(m_app, QStringLiteral("system"), true, QStringLiteral("3 of 3"));
    m_app.setSystemTestDetail(QStringLiteral("3 of 3 test lookups showed up."));
    expectTexts({"This Mac uses Pi-hole", "3 of 3 test lookups showed up."});
}

TEST_F(Wizard, Browsers_are_read_only_after_consent)
{
    openStep(6);
    expectTexts({"Check your browser",
                 "Some browsers have their own secure DNS (DNS over HTTPS). When it is on, that browser skips Pi-hole. "
                 "This step only reads settings and never changes them.",
                 "To check, this app will read each browser's settings file (Chrome, Edge and Brave: 'Local State'; "
                 "Firefox: 'prefs.js') in your Library folder. Nothing is changed or sent anywhere.",
                 "Allow the read-only check",
                 "This opens a made-up name like cv-1a2b3c.example.com in your default browser. An error page is "
                 "expected: the name does not exist. The test only looks for the name in Pi-hole's query log for up to "
                 "20 seconds.",
                 "Browser test"});
    EXPECT_TRUE(m_app.browsers().isEmpty());
    click(QStringLiteral("allowBrowserReadButton"));
    EXPECT_TRUE(m_app.browserReadAllowed());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_app.browsers().isEmpty(); }));
    expectTexts({"Check again", "Safari"});
    m_app.setBrowsers({});
    expectTexts({"No known browser found."});
    showBrowsers(m_app);
    expectTexts({"Google Chrome", "Firefox", "Open settings"});
    EXPECT_FALSE(enabled(QStringLiteral("browser_edgeSettingsButton")));
    EXPECT_TRUE(enabled(QStringLiteral("browser_safariSettingsButton")));
}

TEST_F(Wizard, Success_is_claimed_only_when_both_tests_passed)
{
    openStep(7);
    expectTexts({"Almost there",
                 "Success is only claimed when the Pi-hole test (step 4) and the Mac DNS test (step 6) both passed in "
                 "this session.",
                 "Docker engine", "Pi-hole container, admin page and DNS (step 4)", "Blocking (step 5)",
                 "This Mac uses Pi-hole (step 6)", "Browser (step 7)", "Not tested in this session.",
                 "Admin password:", "Copy", "Open dashboard", "Go to the main window", "How to undo",
                 "Press 'Restore my old settings' (here, in step 1 or 6, or in the main window) to put your previous "
                 "DNS servers back. 'Remove Pi-hole' in Settings also restores them first.",
                 "This protects this Mac only, not other devices on your network."});
    showOutcome(m_app, QStringLiteral("pihole"), true, QStringLiteral("passed"));
    expectTexts({"Almost there"});
    showOutcome(m_app, QStringLiteral("system"), true, QStringLiteral("passed"));
    expectTexts({"Pi-hole is running and this Mac uses it", "Primary DNS: Pi-hole, backup: 1.1.1.1"});
}

TEST_F(Wizard, The_last_step_gives_the_password_and_leads_to_the_dashboard)
{
    openStep(7);
    EXPECT_FALSE(enabled(QStringLiteral("doneOpenDashboardButton")));
    showRunning(m_app);
    EXPECT_TRUE(enabled(QStringLiteral("doneOpenDashboardButton")));
    click(QStringLiteral("copyAdminPasswordButton"));
    EXPECT_EQ(m_workspace.copiedSecret, m_app.adminPassword());
    click(QStringLiteral("goToMainWindowButton"));
    EXPECT_TRUE(shows(QStringLiteral("statusLine")));
}

TEST_F(Wizard, A_step_that_is_done_is_spoken_as_done_even_when_it_is_the_current_one)
{
    openStep(2);
    m_app.setDockerWorks(true);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(find(QStringLiteral("step3")))->text(QAccessible::Name),
              QStringLiteral("Install Colima and Docker, done, step 3 of 8"));
}

} // namespace

} // namespace corvane
