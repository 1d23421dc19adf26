#include "tests/flows/flow_test.h"
#include "tests/flows/reads.h"
#include "tests/flows/saved_files.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>

#include <sys/stat.h>

#include <algorithm>

namespace corvane::test {

namespace {

class Browsers : public FlowTest {
protected:
    Browsers()
        : FlowTest(QStringLiteral("protected"))
    {
        Mac::ctl(QStringLiteral("pihole log-delay 0"));
    }

    static QString library(const char *below)
    {
        return QDir::home().filePath(QStringLiteral("Library/Application Support/") + QString::fromLatin1(below));
    }

    BrowserInfo scanned(const char *id)
    {
        model().setBrowserReadAllowed(true);
        run(model().scanBrowsers());
        const QList<BrowserInfo> all = model().browsers();
        const auto found = std::ranges::find(all, QString::fromLatin1(id), &BrowserInfo::id);
        return found == all.end() ? BrowserInfo() : *found;
    }

    static QStringList openedAddresses()
    {
        QStringList addresses;
        const QJsonArray entries = Mac::ctl(QStringLiteral("opened")).toArray();
        for (const QJsonValue &entry : entries)
            addresses.append(entry.toObject().value(QLatin1String("address")).toString());
        return addresses;
    }

    /// The name that the browser test made up, out of what it says.
    QString testName() { return model().browserTestDetail().section(u' ', 0, 0); }
};

} // namespace

TEST_F(Browsers, Nothing_is_read_before_the_user_agreed)
{
    Mac::ctl(QStringLiteral("app add org.mozilla.firefox"));
    Mac::ctl(QStringLiteral("app add com.google.Chrome"));
    write(library("Google/Chrome/Local State"), R"({"dns_over_https":{"mode":"secure"}})");
    write(library("Firefox/Profiles/a.default/prefs.js"), "user_pref(\"network.trr.mode\", 3);\n");
    Reads chrome(library("Google/Chrome"));
    Reads firefox(library("Firefox/Profiles/a.default"));
    run(model().scanBrowsers());
    EXPECT_TRUE(model().browsers().isEmpty());
    EXPECT_FALSE(chrome.any());
    EXPECT_FALSE(firefox.any());

    EXPECT_EQ(scanned("chrome").state, SecureDNSState::On);
    EXPECT_EQ(scanned("firefox").state, SecureDNSState::On);
    EXPECT_TRUE(chrome.any());
    EXPECT_TRUE(firefox.any());
}

TEST_F(Browsers, A_firefox_that_is_not_installed_is_never_looked_into)
{
    write(library("Firefox/Profiles/a.default/prefs.js"), "user_pref(\"network.trr.mode\", 3);\n");
    Reads reads(library("Firefox/Profiles"));
    EXPECT_TEXT(scanned("firefox").detail, "Not installed.");
    EXPECT_FALSE(reads.any());
}

TEST_F(Browsers, Each_reading_tells_what_it_means)
{
    Mac::ctl(QStringLiteral("app add com.google.Chrome"));
    const QString local = library("Google/Chrome/Local State");
    write(local, "{}");
    EXPECT_EQ(scanned("chrome").state, SecureDNSState::UnknownDefault);
    write(local, R"({"dns_over_https":{"mode":"automatic"}})");
    EXPECT_TEXT(scanned("chrome").detail, "Secure DNS is on 'automatic': it is used only if the system DNS server "
                                          "supports it, so Pi-hole stays in charge.");
    write(local, R"({"dns_over_https":{"mode":"secure"}})");
    EXPECT_TEXT(scanned("chrome").detail, "Secure DNS is ON. This bypasses Pi-hole.");
    write(local, R"({"dns_over_https":{"mode":"secure","templates":"https://dns.example/q"}})");
    EXPECT_TEXT(scanned("chrome").detail, "Secure DNS is ON (https://dns.example/q). This bypasses Pi-hole.");
}

TEST_F(Browsers, Files_that_are_none_end_the_scan_with_a_sentence)
{
    for (const char *bundle :
         {"com.google.Chrome", "com.microsoft.edgemac", "com.brave.Browser", "org.mozilla.firefox"})
        Mac::ctl(QStringLiteral("app add ") + QLatin1String(bundle));
    QDir().mkpath(library("Google/Chrome"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(library("Google/Chrome/Local State")).constData(), 0600), 0);
    QDir().mkpath(library("Microsoft Edge/Local State"));
    QDir().mkpath(library("BraveSoftware/Brave-Browser"));
    QFile::link(library("BraveSoftware/Brave-Browser/Local State"), library("BraveSoftware/Brave-Browser/Local State"));
    QDir().mkpath(library("Firefox/Profiles/a.default"));
    QFile::link(QStringLiteral("/dev/zero"), library("Firefox/Profiles/a.default/prefs.js"));

    for (const char *id : {"chrome", "edge", "brave"}) {
        EXPECT_TEXT(scanned(id).detail,
                    "Could not read the browser's settings file (it may not have been started yet).");
    }
    EXPECT_TEXT(scanned("firefox").detail, "Could not read Firefox's prefs.js.");
}

TEST_F(Browsers, A_settings_page_is_opened_in_its_own_browser)
{
    Mac::ctl(QStringLiteral("app add com.brave.Browser"));
    scanned("brave");
    run(model().openBrowserSettings(QStringLiteral("brave")));
    run(model().openBrowserSettings(QStringLiteral("safari")));
    run(model().openBrowserSettings(QStringLiteral("no such browser")));
    EXPECT_EQ(Mac::calls(QStringLiteral("open")),
              (QStringList{QStringLiteral("-b com.brave.Browser brave://settings/security"),
                           QStringLiteral("x-apple.systempreferences:")}));
}

TEST_F(Browsers, The_test_passes_when_the_browser_asks_pihole)
{
    auto test = model().runBrowserTest();
    EXPECT_TRUE(model().busy().contains(QStringLiteral("browser")));
    const QString name = model().browserTestDetail().section(u' ', 1, 1);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^cv-[0-9a-f]{6}\\.example\\.com$")).match(name).hasMatch())
        << name.toStdString();
    EXPECT_TEXT(model().browserTestDetail(),
                "Opened " + name.toStdString() +
                    " in your default browser. An error page there is expected: the name does not exist. Looking in "
                    "Pi-hole's log...");
    run(std::move(test));

    EXPECT_EQ(openedAddresses(), QStringList(QStringLiteral("http://%1/").arg(name)));
    EXPECT_TEXT(model().browserTestDetail(),
                name.toStdString() + " appeared in Pi-hole's query log, so your default browser uses Pi-hole. (The "
                                     "browser's error page was expected.)");
    const TestOutcome outcome = model().outcomes().value(QStringLiteral("browser"));
    EXPECT_TRUE(outcome.passed);
    EXPECT_EQ(outcome.summary, model().browserTestDetail());
    EXPECT_LT(outcome.date.secsTo(QDateTime::currentDateTime()), 5);
    EXPECT_TRUE(model().busy().isEmpty());
    EXPECT_TRUE(model().isStepDone(6));
}

TEST_F(Browsers, The_test_fails_after_20_seconds_when_the_browser_asks_elsewhere)
{
    Mac::ctl(QStringLiteral("browser own-dns 1.1.1.1"));
    run(model().runBrowserTest());
    EXPECT_EQ(clock.waited(), std::chrono::seconds(20));
    EXPECT_TEXT(model().browserTestDetail(),
                testName().toStdString() + " did not show up in Pi-hole's log within 20 seconds. Your default browser "
                                           "may be using its own secure DNS, a VPN or a proxy.");
    EXPECT_TRUE(testName().startsWith(QStringLiteral("cv-")));
    EXPECT_TRUE(model().outcomes().contains(QStringLiteral("browser")));
    EXPECT_FALSE(model().outcomes().value(QStringLiteral("browser")).passed);
    EXPECT_TRUE(model().busy().isEmpty());
}

TEST_F(Browsers, A_log_that_cannot_be_read_counts_as_not_found_yet)
{
    model().setAdminPassword(QStringLiteral("not-the-password"));
    auto test = model().runBrowserTest();
    waitFor([this] { return clock.waited() >= std::chrono::seconds(4); }, "a read that was refused");
    EXPECT_TRUE(model().outcomes().isEmpty());
    model().setAdminPassword(QStringLiteral("correct-horse-9"));
    model().configureAPI();
    run(std::move(test));
    EXPECT_TRUE(model().outcomes().value(QStringLiteral("browser")).passed)
        << model().browserTestDetail().toStdString();
}

TEST_F(Browsers, A_second_test_during_the_first_does_nothing)
{
    auto first = model().runBrowserTest();
    const QString before = model().browserTestDetail();
    run(model().runBrowserTest());
    EXPECT_EQ(model().browserTestDetail(), before);
    run(std::move(first));
    EXPECT_EQ(openedAddresses().size(), 1);
}

TEST_F(Browsers, Every_test_makes_up_a_name_of_its_own)
{
    run(model().runBrowserTest());
    const QString first = testName();
    run(model().runBrowserTest());
    EXPECT_NE(testName(), first);
}

TEST_F(Browsers, A_model_that_goes_away_during_the_test_ends_it_quietly)
{
    launch(model().runBrowserTest());
    relaunch();
    EXPECT_TRUE(model().busy().isEmpty());
    run(model().runBrowserTest());
    EXPECT_TRUE(model().outcomes().value(QStringLiteral("browser")).passed);
}

} // namespace corvane::test
