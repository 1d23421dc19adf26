#include "tests/flows/saved_files.h"
#include "tests/sentences/on_screen.h"

#include <QDir>
#include <QRegularExpression>

namespace corvane::test {

namespace {

/// What is in a browser's settings file, and what step 7 says about it.
struct Case {
    const char *file;
    const char *content;
    const char *sentence;
};

const char *const kChrome = "Google/Chrome/Local State";
const char *const kFirefox = "Firefox/Profiles/a.default/prefs.js";

/// What step 7 says about browsers.
class Browsers : public OnScreen {
protected:
    static QString library(const char *below)
    {
        return QDir::home().filePath(QStringLiteral("Library/Application Support/") + QString::fromLatin1(below));
    }

    void openWithBrowsers()
    {
        begin("running");
        for (const char *bundle :
             {"com.google.Chrome", "com.microsoft.edgemac", "com.brave.Browser", "org.mozilla.firefox"})
            Mac::ctl(QStringLiteral("app add ") + QLatin1String(bundle));
        openStep(7);
    }

    /// Whether a sentence that begins with a made-up name appears below the browser test.
    [[nodiscard]] bool tells(const QString &pattern)
    {
        const QRegularExpression sentence(QRegularExpression::anchoredPattern(pattern));
        return eventually([&] { return sentence.match(textOf(QStringLiteral("browserTestDetail"))).hasMatch(); });
    }
};

} // namespace

TEST_F(Browsers, Each_one_is_told_what_to_do)
{
    openWithBrowsers();
    pressButton("Allow the read-only check");
    EXPECT_TRUE(appear(
        {"Safari has no secure-DNS switch of its own. If iCloud Private Relay is on, Safari traffic bypasses Pi-hole.",
         "1. Open Private Relay and make sure it is Off (or leave it on and accept that Safari skips Pi-hole).",
         "1. Open Settings, Privacy and security, then Security.",
         "1. Open Settings, Privacy, search, and services, then Security.",
         "2. Find 'Use secure DNS' and switch it off (or pick your system's DNS provider).",
         "1. Open Settings, Privacy & Security, scroll to 'DNS over HTTPS'.",
         "Could not read the browser's settings file (it may not have been started yet).",
         "Could not find a Firefox profile."}));
    begin("running");
    openStep(7);
    pressButton("Allow the read-only check");
    EXPECT_TRUE(appears("Not installed."));
}

TEST_F(Browsers, Each_reading_is_told_with_what_it_means)
{
    const Case cases[] = {
        {kChrome, "[]", "The settings file has an unexpected format."},
        {kChrome, "{}",
         "Not set by you. The default only upgrades to secure DNS when the system DNS server supports it, which "
         "Pi-hole does not."},
        {kChrome, R"({"dns_over_https":{"mode":"secure"}})", "Secure DNS is ON. This bypasses Pi-hole."},
        {kChrome, R"({"dns_over_https":{"mode":"secure","templates":"https://dns.example/q"}})",
         "Secure DNS is ON (https://dns.example/q). This bypasses Pi-hole."},
        {kChrome, R"({"dns_over_https":{"mode":"off"}})", "Secure DNS is off. Good."},
        {kChrome, R"({"dns_over_https":{"mode":"automatic"}})",
         "Secure DNS is on 'automatic': it is used only if the system DNS server supports it, so Pi-hole stays in "
         "charge."},
        {kFirefox, "",
         "Not set by you. Firefox enables secure DNS by default in some countries, so check the setting."},
        {kFirefox, "user_pref(\"network.trr.mode\", 3);\n",
         "Secure DNS is ON (network.trr.mode = 3). This bypasses Pi-hole."},
        {kFirefox, "user_pref(\"network.trr.mode\", 5);\n", "Secure DNS is switched off (network.trr.mode = 5). Good."},
        {kFirefox, "user_pref(\"network.trr.mode\", 0);\n",
         "network.trr.mode = 0 (Firefox default). Firefox may still turn secure DNS on for some countries."},
        {kFirefox, "user_pref(\"network.trr.mode\", 1);\n", "network.trr.mode = 1."},
    };
    openWithBrowsers();
    pressButton("Allow the read-only check");
    EXPECT_TRUE(appears("Check again"));
    for (const Case &each : cases) {
        write(library(each.file), each.content);
        pressButton("Check again");
        EXPECT_TRUE(appears(each.sentence)) << each.content;
    }
    QFile::remove(library(kFirefox));
    QDir().mkpath(library(kFirefox));
    pressButton("Check again");
    EXPECT_TRUE(appears("Could not read Firefox's prefs.js."));
}

TEST_F(Browsers, The_browser_test_says_what_it_did_and_found)
{
    begin("protected");
    mac("pihole web hang");
    openStep(7);
    pressButton("Browser test");
    EXPECT_TRUE(tells(QStringLiteral("Opened cv-[0-9a-f]{6}\\.example\\.com in your default browser. An error page "
                                     "there is expected: the name does not exist. Looking in Pi-hole's log\\.\\.\\.")));
    mac("pihole web on");
    const QString found =
        QStringLiteral("cv-[0-9a-f]{6}\\.example\\.com appeared in Pi-hole's query log, so your default browser uses "
                       "Pi-hole. \\(The browser's error page was expected.\\)");
    EXPECT_TRUE(tells(found));
    const QString told = textOf(QStringLiteral("browserTestDetail"));
    openStep(8);
    EXPECT_TRUE(appears(told.toUtf8().constData()));

    begin("protected");
    mac("browser own-dns 1.1.1.1");
    openStep(7);
    pressButton("Browser test");
    EXPECT_TRUE(tells(QStringLiteral(
        "cv-[0-9a-f]{6}\\.example\\.com did not show up in Pi-hole's log within 20 seconds. Your default "
        "browser may be using its own secure DNS, a VPN or a proxy.")));
}

} // namespace corvane::test
