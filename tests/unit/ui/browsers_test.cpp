#include "ui/decisions/browsers.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

using Way = BrowserVerdict::Way;

struct BrowserLook {
    SecureDNSState state;
    const char *symbol;
    Tint::Name tint;
};

class BrowserBadge : public testing::TestWithParam<BrowserLook> {};

TEST_P(BrowserBadge, Has_the_symbol_of_its_state)
{
    const Badge badge = browserBadge(GetParam().state);
    EXPECT_EQ(badge.symbol, QString::fromLatin1(GetParam().symbol));
    EXPECT_EQ(badge.tint, GetParam().tint);
}

INSTANTIATE_TEST_SUITE_P(
    States, BrowserBadge,
    testing::Values(BrowserLook{SecureDNSState::On, "exclamationmark.triangle.fill", Tint::Red},
                    BrowserLook{SecureDNSState::Off, "checkmark.circle.fill", Tint::Green},
                    BrowserLook{SecureDNSState::UnknownDefault, "questionmark.circle.fill", Tint::Orange},
                    BrowserLook{SecureDNSState::NotReadable, "questionmark.circle.fill", Tint::Orange},
                    BrowserLook{SecureDNSState::NotApplicable, "info.circle.fill", Tint::Blue}));

TEST(Browsers, Show_their_steps_numbered_and_open_only_what_is_there)
{
    BrowserInfo firefox;
    firefox.id = QStringLiteral("firefox");
    firefox.detail = QStringLiteral("Not installed.");
    EXPECT_FALSE(browserRows({firefox}, {}).first().enabled);
    firefox.installed = true;
    firefox.settingsURL = QStringLiteral("about:preferences#privacy");
    firefox.steps = {QStringLiteral("Open it."), QStringLiteral("Close it.")};
    const Row row = browserRows({firefox}, {}).first();
    EXPECT_TRUE(row.enabled);
    EXPECT_EQ(row.detail, QStringLiteral("Not installed.\n1. Open it.\n2. Close it."));
}

TEST(Browsers, A_browser_that_is_off_says_nothing_about_switching_it_off)
{
    BrowserInfo browser;
    browser.detail = QStringLiteral("Secure DNS is off. Good.");
    browser.steps = {QStringLiteral("Open Settings.")};
    browser.state = SecureDNSState::Off;
    EXPECT_EQ(browserRows({browser}, {}).first().detail, browser.detail);
    browser.state = SecureDNSState::On;
    EXPECT_EQ(browserRows({browser}, {}).first().detail, browser.detail + QStringLiteral("\n1. Open Settings."));
}

BrowserInfo onItsDefault(const char *id)
{
    BrowserInfo browser;
    browser.id = QString::fromLatin1(id);
    browser.name = QStringLiteral("The browser");
    browser.installed = true;
    browser.state = SecureDNSState::UnknownDefault;
    browser.detail = QStringLiteral("Not set by you.");
    browser.steps = {QStringLiteral("Open Settings.")};
    browser.decidesItself = true;
    return browser;
}

/// A Mac that asks these servers in this order.
BrowserSurroundings asking(const char *servers, BrowserRule rule = BrowserRule::NotNeeded)
{
    const QStringList list = QString::fromLatin1(servers).split(u' ');
    return {ResolverReport{list, list.first() == u"127.0.0.1", {}}, rule, true, {}};
}

struct Expected {
    const char *servers;
    BrowserRule rule;
    Way way;
    Tint::Name tint;
};

class ChromiumOnItsDefault : public testing::TestWithParam<Expected> {};

TEST_P(ChromiumOnItsDefault, Is_judged_by_the_servers_and_the_rule)
{
    for (const char *id : {"chrome", "edge", "brave"}) {
        const BrowserSurroundings around = asking(GetParam().servers, GetParam().rule);
        EXPECT_EQ(browserVerdict(onItsDefault(id), around).way, GetParam().way);
        EXPECT_EQ(browserRows({onItsDefault(id)}, around).first().badge.tint, GetParam().tint);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Servers, ChromiumOnItsDefault,
    testing::Values(Expected{"127.0.0.1", BrowserRule::NotNeeded, Way::WithPihole, Tint::Green},
                    Expected{"127.0.0.1 1.1.1.1", BrowserRule::InPlace, Way::WithPihole, Tint::Green},
                    Expected{"127.0.0.1 1.1.1.1", BrowserRule::Refused, Way::PastPihole, Tint::Red},
                    Expected{"127.0.0.1 1.1.1.1", BrowserRule::NotNeeded, Way::PastPihole, Tint::Red},
                    Expected{"127.0.0.1 192.168.1.1", BrowserRule::NotNeeded, Way::WithPihole, Tint::Green},
                    Expected{"127.0.0.1 10.255.0.1", BrowserRule::NotNeeded, Way::WithPihole, Tint::Green},
                    Expected{"127.0.0.1 172.31.255.1", BrowserRule::NotNeeded, Way::WithPihole, Tint::Green},
                    Expected{"127.0.0.1 172.15.0.1", BrowserRule::NotNeeded, Way::Uncertain, Tint::Orange},
                    Expected{"127.0.0.1 172.32.0.1", BrowserRule::NotNeeded, Way::Uncertain, Tint::Orange},
                    Expected{"127.0.0.1 fd12::1", BrowserRule::NotNeeded, Way::WithPihole, Tint::Green},
                    Expected{"127.0.0.1 fe80::1%en0", BrowserRule::NotNeeded, Way::WithPihole, Tint::Green},
                    Expected{"127.0.0.1 8.8.8.8", BrowserRule::NotNeeded, Way::Uncertain, Tint::Orange},
                    Expected{"127.0.0.1 1.1.1.1", BrowserRule::Interrupted, Way::Uncertain, Tint::Orange},
                    Expected{"127.0.0.1 1.1.1.1", BrowserRule::SwitchedOff, Way::PastPihole, Tint::Red},
                    Expected{"127.0.0.1 1.1.1.1", BrowserRule::Overruled, Way::PastPihole, Tint::Red},
                    Expected{"192.168.1.1", BrowserRule::NotNeeded, Way::Uncertain, Tint::Orange}));

TEST(Browsers, One_that_goes_past_pihole_is_told_how_to_stop_that_even_where_its_setting_reads_well)
{
    BrowserInfo chrome = onItsDefault("chrome");
    chrome.state = SecureDNSState::Off; // "automatic"
    const Row row = browserRows({chrome}, asking("127.0.0.1 1.1.1.1", BrowserRule::Refused)).first();
    EXPECT_EQ(row.detail, QStringLiteral("Not set by you.\n1. Open Settings."));
    EXPECT_TRUE(row.note.contains(QStringLiteral("Switch secure DNS off")));
}

TEST(Browsers, What_the_user_has_set_counts_whatever_the_servers)
{
    BrowserInfo chrome = onItsDefault("chrome");
    chrome.decidesItself = false;
    for (const auto &[state, tint] : {std::pair{SecureDNSState::On, Tint::Red}, {SecureDNSState::Off, Tint::Green}}) {
        chrome.state = state;
        const Row row = browserRows({chrome}, asking("127.0.0.1 1.1.1.1", BrowserRule::Refused)).first();
        EXPECT_EQ(row.badge.tint, tint);
        EXPECT_TRUE(row.note.isEmpty());
    }
}

TEST(Browsers, Firefox_on_its_default_stays_with_pihole_when_pihole_tells_it_to)
{
    BrowserSurroundings around = asking("127.0.0.1 1.1.1.1", BrowserRule::Refused);
    EXPECT_EQ(browserVerdict(onItsDefault("firefox"), around).way, Way::WithPihole);
    around.firefoxToldOff = false;
    EXPECT_EQ(browserVerdict(onItsDefault("firefox"), around).way, Way::Uncertain);
    around.firefoxToldOff = std::nullopt;
    EXPECT_EQ(browserVerdict(onItsDefault("firefox"), around), BrowserVerdict());
}

TEST(Browsers, None_asks_pihole_while_this_mac_does_not)
{
    BrowserInfo chrome = onItsDefault("chrome");
    chrome.decidesItself = false;
    chrome.state = SecureDNSState::Off;
    EXPECT_EQ(browserVerdict(chrome, asking("10.8.0.1")).way, Way::Uncertain);
    EXPECT_EQ(browserVerdict(chrome, {}).way, Way::Unknown) << "not known yet";
    chrome.state = SecureDNSState::On;
    EXPECT_EQ(browserVerdict(chrome, asking("10.8.0.1")).way, Way::Unknown) << "its own setting says it all";
}

TEST(Browsers, One_that_is_not_installed_gets_no_verdict)
{
    BrowserInfo chrome = onItsDefault("chrome");
    chrome.installed = false;
    EXPECT_EQ(browserVerdict(chrome, asking("127.0.0.1 1.1.1.1")), BrowserVerdict());
}

TEST(Browsers, What_a_test_found_stands_beneath_the_row)
{
    const QList<BrowserInfo> browsers{onItsDefault("chrome"), onItsDefault("edge")};
    BrowserSurroundings around;
    around.proofs.insert(QStringLiteral("edge"), BrowserProof::GoesPast);
    const QList<Row> rows = browserRows(browsers, around);
    EXPECT_TRUE(rows.at(0).note.isEmpty());
    EXPECT_EQ(rows.at(1).note,
              QStringLiteral("Tested: The browser asked Pi-hole at first, but not ten seconds later. It goes past "
                             "Pi-hole. Switch its secure DNS off."));
}

TEST(Browsers, One_that_was_tested_while_pihole_was_changed_is_not_blamed)
{
    BrowserSurroundings around;
    around.proofs.insert(QStringLiteral("chrome"), BrowserProof::Disturbed);
    EXPECT_EQ(browserRows({onItsDefault("chrome")}, around).at(0).note,
              QStringLiteral("Pi-hole was changed during this test. Test again."));
}

TEST(Browsers, Only_those_that_were_proved_are_listed_at_the_end)
{
    QList<BrowserInfo> browsers{onItsDefault("chrome"), onItsDefault("edge"), onItsDefault("brave")};
    browsers[0].name = QStringLiteral("Chrome");
    browsers[2].name = QStringLiteral("Brave");
    BrowserProofs proofs{{QStringLiteral("edge"), BrowserProof::NeverAsks}};
    EXPECT_TRUE(provedBrowsers(browsers, proofs).isEmpty());
    proofs.insert(QStringLiteral("brave"), BrowserProof::AsksPihole);
    proofs.insert(QStringLiteral("chrome"), BrowserProof::AsksPihole);
    EXPECT_EQ(provedBrowsers(browsers, proofs), QStringLiteral("Proved to use Pi-hole: Chrome, Brave"));
}

TEST(BrowserRuleText, Says_what_the_rule_does_where_it_is_needed)
{
    EXPECT_TRUE(browserRuleText(BrowserRule::NotNeeded, true, true).isEmpty());
    EXPECT_TRUE(
        browserRuleText(BrowserRule::InPlace, true, true).startsWith(QStringLiteral("A rule in Pi-hole keeps")));
    for (const BrowserRule rule : {BrowserRule::Refused, BrowserRule::SwitchedOff, BrowserRule::Overruled})
        EXPECT_TRUE(browserRuleText(rule, true, true).endsWith(QStringLiteral("'Pi-hole only' (step 6) avoids that.")));
}

TEST(BrowserRuleText, Says_what_an_outage_and_a_pause_leave_behind)
{
    const auto text = [](bool answering, bool blocks) {
        return browserRuleText(BrowserRule::Interrupted, answering, blocks);
    };
    EXPECT_TRUE(text(false, true).startsWith(QStringLiteral("While Pi-hole is silent, ")));
    EXPECT_TRUE(text(true, false).startsWith(QStringLiteral("While blocking is off, ")));
    EXPECT_TRUE(text(true, true).startsWith(QStringLiteral("Pi-hole was silent or its blocking off for a while")));
    for (const QString &each : {text(false, true), text(true, false), text(true, true)})
        EXPECT_TRUE(each.endsWith(QStringLiteral("Quit a browser that was open, and open it again.")));
}

} // namespace

} // namespace corvane::test
