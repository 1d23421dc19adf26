#include "dns/dns_configurator.h"
#include "tests/sentences/on_screen.h"

#include <QDir>

namespace corvane::test {

namespace {

/// A change of DNS: what is done to the Mac before it, and what step 6 says after it.
struct Case {
    const char *order;
    const char *sentence;
};

/// What is said about this Mac's DNS.
class Dns : public OnScreen {
protected:
    void change(const char *state = "running", const char *order = nullptr)
    {
        begin(state);
        openStep(6);
        if (order) mac(order);
        pressButton("Change DNS...");
        pressButton("Change DNS");
    }

    void test()
    {
        pressButton("Test");
        settle();
    }
};

const char *const kCancelled = "You cancelled the administrator prompt. Nothing was changed.";
const char *const kNothing = "There is nothing to restore: no saved settings and no service points at Pi-hole.";

} // namespace

TEST_F(Dns, A_change_says_how_it_went)
{
    const Case cases[] = {
        {"prompt accept", "DNS changed."},
        {"prompt cancel once", kCancelled},
        {"fault osascript fail", "macOS refused the change."},
        {"keeps Wi-Fi no", "macOS did not keep the new DNS servers for Wi-Fi (it shows: Automatic)."},
        {"keeps Wi-Fi 127.0.0.1", "macOS did not keep the new DNS servers for Wi-Fi (it shows: 127.0.0.1)."},
    };
    for (const Case &each : cases) {
        change("running", each.order);
        EXPECT_TRUE(appears(each.sentence)) << each.order;
        settle();
    }
    change("running", "prompt refuse once");
    const QString macosOwn = QStringLiteral("The administrator user name or password was incorrect. (-60007)");
    EXPECT_TRUE(eventually([&] { return textOf(QStringLiteral("dnsMessage")).contains(macosOwn); }));
}

TEST_F(Dns, A_prompt_that_nobody_answers_is_told)
{
    begin("running");
    openStep(6);
    // The prompt stays for three minutes, which no test waits.
    CommandResult unanswered;
    unanswered.timedOut = true;
    model().setDnsMessage(DNSConfigurator::friendly(unanswered));
    EXPECT_TRUE(appears("The administrator prompt timed out."));
}

TEST_F(Dns, A_change_that_cannot_begin_says_why)
{
    begin("running");
    openStep(6);
    ASSERT_TRUE(QDir().mkpath(DNSConfigurator::backupFile() + QStringLiteral("/in the way")));
    pressButton("Change DNS...");
    pressButton("Change DNS");
    EXPECT_TRUE(appearsWithReason("The old settings could not be saved, so nothing was changed: "));
    settle();
    ASSERT_TRUE(QDir(DNSConfigurator::backupFile()).removeRecursively());

    click(QStringLiteral("service1"));
    // The button is off while no service is selected, so that the flow has to be started for it.
    run(model().applyDNS());
    EXPECT_TRUE(appears("Pick at least one network service."));
    click(QStringLiteral("service1"));
    mac("container stop");
    run(model().refreshStatus(Stats::Leave)); // as the poll does every few seconds
    pressButton("Change DNS...");
    EXPECT_TRUE(appears("Pi-hole is not answering yet, so the Mac's DNS was not changed. Finish step 4 first."));
}

TEST_F(Dns, A_restore_says_how_it_went_wherever_it_was_started)
{
    begin("running");
    for (const int step : {1, 6, 8}) {
        openStep(step);
        pressButton("Restore my old settings");
        pressButton("Restore");
        EXPECT_TRUE(appears(kNothing)) << "step " << step;
        settle();
        model().setDnsMessage({});
    }
    openDashboard();
    pressButton("Restore my old settings");
    pressButton("Restore");
    EXPECT_TRUE(appears(kNothing));
    settle();

    for (const int step : {1, 6, 8}) {
        begin("protected");
        openStep(step);
        pressButton("Restore my old settings");
        pressButton("Restore");
        EXPECT_TRUE(appears("Your old DNS settings are back.")) << "step " << step;
        settle();
    }
}

TEST_F(Dns, A_restore_from_the_banner_says_how_it_went)
{
    begin("dead");
    mac("prompt cancel once");
    openStep(2);
    click(QStringLiteral("bannerRestoreButton"));
    pressButton("Restore");
    EXPECT_TRUE(appears(kCancelled));
    settle();
    click(QStringLiteral("bannerRestoreButton"));
    pressButton("Restore");
    EXPECT_TRUE(appears("Your old DNS settings are back."));
}

TEST_F(Dns, The_mac_dns_test_says_what_it_found)
{
    const char *const all = "3 of 3 test lookups through the system resolver showed up in Pi-hole's log.";
    begin("protected");
    openStep(6);
    test();
    EXPECT_TRUE(appear({"This Mac uses Pi-hole", all,
                        "macOS also lists other DNS servers (1.1.1.1). Queries sent to those bypass Pi-hole."}));
    openStep(8);
    EXPECT_TRUE(appears(all));

    begin("protected");
    openStep(6);
    mac("fault scutil fail");
    test();
    EXPECT_TRUE(appear({"Not confirmed",
                        "3 of 3 test lookups through the system resolver showed up in Pi-hole's log. "
                        "The first DNS server macOS uses is not Pi-hole.",
                        "Could not read the system's DNS servers from scutil."}));

    begin("running");
    openStep(6);
    test();
    EXPECT_TRUE(appear({"Not confirmed",
                        "0 of 3 test lookups through the system resolver showed up in Pi-hole's log. "
                        "The first DNS server macOS uses is not Pi-hole.",
                        "The first DNS server macOS uses is 192.168.1.1, not Pi-hole (127.0.0.1). A VPN, a "
                        "configuration profile or the router (IPv6 DNS) may be overriding it."}));
    begin("running");
    model().setAdminPassword(QStringLiteral("not-the-password"));
    openStep(6);
    test();
    EXPECT_TRUE(appears("0 of 3 test lookups through the system resolver showed up in Pi-hole's log. (Could not read "
                        "the log: Pi-hole refused the admin password.) The first DNS server macOS uses is not "
                        "Pi-hole."));
}

} // namespace corvane::test
