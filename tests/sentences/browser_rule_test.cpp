#include "tests/flows/saved_files.h"
#include "tests/sentences/on_screen.h"

#include <QCoro/QCoroTask>
#include <QDir>

namespace corvane::test {

namespace {

constexpr PiholeRule::Kind kPattern = PiholeRule::Kind::DeniedPattern;
const QString kExpression = QStringLiteral("^chrome\\.cloudflare-dns\\.com$;reply=NXDOMAIN");
const char *const kKept =
    "A rule in Pi-hole keeps Chrome, Edge and Brave from going over to the secure DNS of 1.1.1.1.";

/// What is said about browsers that know this Mac's backup server.
class BrowserRules : public OnScreen {
protected:
    /// A Mac that is not set up to the end: it gets its servers now.
    void beginAndChange(const PiholeRule &rule)
    {
        begin("running");
        ASSERT_TRUE(QCoro::waitFor(model().api().addRule(rule)));
        openStep(6);
        pressButton("Change DNS...");
        pressButton("Change DNS");
    }

    /// Chrome and Firefox on their defaults, on a Mac with these servers.
    void openWithServers(const char *order)
    {
        begin("protected");
        mac("app add com.google.Chrome");
        mac("app add org.mozilla.firefox");
        const QDir library(QDir::home().filePath(QStringLiteral("Library/Application Support")));
        write(library.filePath(QStringLiteral("Google/Chrome/Local State")), "{}");
        write(library.filePath(QStringLiteral("Firefox/Profiles/a.default/prefs.js")), "");
        if (order) mac(order);
        run(model().refreshStatus(Stats::Include));
        openStep(7);
        model().setBrowserReadAllowed(true);
        pressButton("Check again");
    }

    void expectProof(const char *order, const char *sentence)
    {
        openWithServers(order);
        settle();
        click(QStringLiteral("browser_chromeTestButton"));
        EXPECT_TRUE(appears(sentence));
    }
};

} // namespace

TEST_F(BrowserRules, The_rule_is_told_in_step_6_and_on_the_dashboard)
{
    begin("protected");
    openStep(6);
    EXPECT_TRUE(appears(kKept));
    openDashboard();
    EXPECT_TRUE(appears(kKept));
}

TEST_F(BrowserRules, What_follows_from_a_rule_that_does_nothing_is_told)
{
    begin("running");
    openStep(6);
    model().setAdminPassword(QStringLiteral("not-the-password"));
    pressButton("Change DNS...");
    pressButton("Change DNS");
    EXPECT_TRUE(appears("Pi-hole did not take the rule that keeps browsers with it. Chrome, Edge and Brave may go over "
                        "to the secure DNS of 1.1.1.1, past Pi-hole. 'Pi-hole only' (step 6) avoids that."));
    settle();
    beginAndChange({kPattern, kExpression, QStringLiteral("mine"), false});
    EXPECT_TRUE(
        appears("The rule in Pi-hole that keeps browsers with it is switched off. Chrome, Edge and Brave may go "
                "over to the secure DNS of 1.1.1.1, past Pi-hole. 'Pi-hole only' (step 6) avoids that."));
    settle();
    beginAndChange({PiholeRule::Kind::AllowedName, QStringLiteral("chrome.cloudflare-dns.com")});
    EXPECT_TRUE(appears("Pi-hole has the rule that keeps browsers with it, but answers all the same: a name that is "
                        "allowed there overrules it. Chrome, Edge and Brave may go over to the secure DNS of 1.1.1.1, "
                        "past Pi-hole. 'Pi-hole only' (step 6) avoids that."));
    settle();
}

TEST_F(BrowserRules, An_outage_and_a_pause_are_told_with_what_they_leave_behind)
{
    begin("protected");
    openDashboard();
    pressButton("Pause blocking 5 minutes");
    EXPECT_TRUE(appears("While blocking is off, Chrome, Edge and Brave may go over to the secure DNS of 1.1.1.1, past "
                        "Pi-hole. They stay there when it is on again. Quit a browser that was open, and open it "
                        "again."));
    pressButton("Resume blocking");
    const char *const after = "Pi-hole was silent or its blocking off for a while. Chrome, Edge and Brave may have "
                              "gone over to the secure DNS "
                              "of 1.1.1.1, past Pi-hole. Quit a browser that was open, and open it again.";
    EXPECT_TRUE(appears(after));

    begin("protected");
    openStep(2);
    mac("pihole silent on");
    run(model().refreshStatus(Stats::Leave));
    EXPECT_TRUE(
        appears("While Pi-hole is silent, 1.1.1.1 answers, ads included, and Chrome, Edge and Brave may go over "
                "to the secure DNS of 1.1.1.1, past Pi-hole. They stay there when Pi-hole is back. Quit a "
                "browser that was open, and open it again."));
    mac("pihole silent off");
    run(model().refreshStatus(Stats::Include));
    openStep(6);
    EXPECT_TRUE(appears(after));
}

TEST_F(BrowserRules, Each_browser_is_judged_by_the_servers_of_this_mac)
{
    openWithServers(nullptr);
    EXPECT_TRUE(appear({"A rule in Pi-hole keeps it from going over to the secure DNS of 1.1.1.1.",
                        "Pi-hole tells Firefox to leave its default secure DNS off, and Firefox does so as long as you "
                        "have not switched it on yourself."}));
    model().setFirefoxToldOff(false); // this Pi-hole cannot be told to leave it out
    EXPECT_TRUE(appears("Pi-hole does not tell Firefox to leave its default secure DNS off. Switch it off as described "
                        "above to be certain."));
    run(model().pauseBlocking());
    EXPECT_TRUE(
        appears("Pi-hole was silent or its blocking off for a while. If the browser was open then, it may still "
                "ask 1.1.1.1. Quit it and open it again, or press Test."));
    model().setBrowserRule(BrowserRule::Refused);
    EXPECT_TRUE(
        appears("It knows this Mac's backup server 1.1.1.1 and goes over to its secure DNS after a few seconds, "
                "past Pi-hole. Switch secure DNS off as described above, or use Pi-hole only (step 6)."));
    const std::pair<const char *, const char *> others[] = {
        {"servers Wi-Fi 127.0.0.1", "Pi-hole is this Mac's only DNS server, so there is no other to go to."},
        {"servers Wi-Fi 127.0.0.1 192.168.1.1",
         "This Mac's other DNS server belongs to your own network, so the browser knows no secure DNS of it."},
        {"servers Wi-Fi 127.0.0.1 8.8.8.8", "This Mac also has the DNS server 8.8.8.8. The browser may go over to its "
                                            "secure DNS. Switch secure DNS off to be certain."},
        {"servers Wi-Fi 192.168.1.1",
         "This Mac itself does not ask Pi-hole now (step 6), so its browsers do not either."},
    };
    for (const auto &[order, sentence] : others) {
        openWithServers(order);
        EXPECT_TRUE(appears(sentence)) << order;
    }
}

TEST_F(BrowserRules, A_test_of_one_browser_says_what_it_did_and_found)
{
    openWithServers(nullptr);
    settle();
    mac("pihole web hang");
    click(QStringLiteral("browser_chromeTestButton"));
    EXPECT_TRUE(appears("Two made-up names are opened in Google Chrome, ten seconds apart. Error pages are expected. "
                        "Looking in Pi-hole's log..."));
    mac("pihole web on");
    EXPECT_TRUE(appears("Tested: Google Chrome uses Pi-hole, at once and ten seconds later."));
    openStep(8);
    EXPECT_TRUE(appears("Proved to use Pi-hole: Google Chrome"));

    expectProof("browser leaves 1.1.1.1", "Tested: Google Chrome asked Pi-hole at first, but not ten seconds later. It "
                                          "goes past Pi-hole. Switch its secure DNS off.");
    expectProof("browser own-dns 1.1.1.1", "Tested: Google Chrome did not ask Pi-hole. It may be using its own secure "
                                           "DNS, a VPN or a proxy.");
    expectProof("fault open fail", "Google Chrome could not be opened.");
    openWithServers(nullptr);
    settle();
    model().setAdminPassword(QStringLiteral("not-the-password"));
    click(QStringLiteral("browser_chromeTestButton"));
    EXPECT_TRUE(appears("Pi-hole's log could not be read, so nothing is known about Google Chrome."));
    model().setBrowserProofs({{QStringLiteral("chrome"), BrowserProof::CameLate}}); // nobody can time that
    EXPECT_TRUE(appears("Tested: Google Chrome asked Pi-hole ten seconds later, but not at once. Test again to be "
                        "certain."));
}

TEST_F(BrowserRules, Whoever_takes_the_lookups_is_told_in_step_6_and_on_the_dashboard)
{
    const char *const vpn =
        "A VPN (utun4) has put its own DNS server first, so nothing is asked of Pi-hole while it is "
        "connected. Disconnect it, or switch off its own DNS in its settings.";
    const char *const hidden =
        "macOS names Pi-hole first, and yet its lookups go elsewhere. An encrypted-DNS profile, iCloud Private Relay "
        "or "
        "a security program takes them without being listed. Look in System Settings under 'VPN & Filters' (Network), "
        "'Device Management' (General) and 'Private Relay' (iCloud), switch it off, and test again.";
    begin("protected");
    mac("vpn on 10.8.0.1");
    run(model().refreshStatus(Stats::Leave));
    openStep(6);
    EXPECT_TRUE(appears(vpn));
    openDashboard();
    EXPECT_TRUE(appears(vpn));

    begin("protected");
    mac("hidden-dns 1.1.1.1");
    openStep(6);
    pressButton("Test");
    EXPECT_TRUE(appears(hidden));
    openDashboard();
    EXPECT_TRUE(appears(hidden));

    // What the simulated Mac does not play.
    const auto show = [this](const ResolverBlock &first) { model().setResolverReport(ResolverReport::of({first})); };
    show({.nameservers = {QStringLiteral("10.200.110.1")}, .domain = {}, .supplemental = true});
    EXPECT_TRUE(appears("A VPN or a security program has put its own DNS server (10.200.110.1) before all others, so "
                        "nothing is asked of Pi-hole. Quit it, or switch off its own DNS in its settings."));
    show({.nameservers = {QStringLiteral("fe80::1%en0"), QStringLiteral("127.0.0.1")}, .domain = {}});
    EXPECT_TRUE(appears("Your router announces its own DNS server over IPv6 (fe80::1%en0), and macOS asks it before "
                        "Pi-hole. Switch that off in the router's settings."));
}

} // namespace corvane::test
