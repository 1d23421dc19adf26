#include "checks/browser_inspector.h"
#include "platform/workspace.h"
#include "tests/support/home_folder.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace corvane::test {
namespace {

const QString kChrome = QStringLiteral("com.google.Chrome");
const QString kEdge = QStringLiteral("com.microsoft.edgemac");
const QString kBrave = QStringLiteral("com.brave.Browser");
const QString kFirefox = QStringLiteral("org.mozilla.firefox");
const QString kSafari = QStringLiteral("com.apple.Safari");
const QSet<QString> kAll{kChrome, kEdge, kBrave, kFirefox, kSafari};

class KnownApplications final : public Workspace {
public:
    explicit KnownApplications(QSet<QString> bundles)
        : m_bundles(std::move(bundles))
    {}
    bool open(const QUrl &) override { return false; }
    [[nodiscard]] bool hasApplication(const QString &bundleId) const override { return m_bundles.contains(bundleId); }
    void copyToClipboard(const QString &) override {}
    void copySecretToClipboard(const QString &) override {}
    void activate() override {}

private:
    QSet<QString> m_bundles;
};

class Browsers : public testing::Test {
protected:
    HomeFolder m_home;

    [[nodiscard]] QString library(const char *below) const
    {
        return m_home.path(QStringLiteral("Library/Application Support/") + QString::fromLatin1(below));
    }
    void put(const char *below, const QByteArray &content) const
    {
        const QString path = library(below);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    void putPrefs(const char *profile, int mode, int minutesAgo) const
    {
        const QByteArray path = QByteArray("Firefox/Profiles/") + profile + "/prefs.js";
        put(path.constData(), "user_pref(\"network.trr.mode\", " + QByteArray::number(mode) + ");\n");
        QFile file(library(path.constData()));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(-60 * minutesAgo),
                                     QFileDevice::FileModificationTime));
    }
    static BrowserInfo scanned(const char *id, const QSet<QString> &installed = kAll)
    {
        for (const BrowserInfo &browser : BrowserInspector::scan(installed)) {
            if (browser.id == QString::fromLatin1(id)) return browser;
        }
        ADD_FAILURE() << "no " << id;
        return {};
    }
};

TEST_F(Browsers, Are_listed_in_a_fixed_order)
{
    QStringList ids;
    QStringList names;
    for (const BrowserInfo &browser : BrowserInspector::scan({})) {
        ids += browser.id;
        names += browser.name;
    }
    EXPECT_EQ(ids.join(u' '), QStringLiteral("safari chrome edge brave firefox"));
    EXPECT_EQ(names.join(u','), QStringLiteral("Safari,Google Chrome,Microsoft Edge,Brave,Firefox"));
}

TEST_F(Browsers, Are_known_by_their_bundle_identifiers)
{
    const KnownApplications workspace({kEdge, kSafari, QStringLiteral("org.example.other")});
    EXPECT_EQ(BrowserInspector::installedBundles(workspace), (QSet<QString>{kEdge, kSafari}));
    EXPECT_TRUE(BrowserInspector::installed(workspace, kEdge));
    EXPECT_FALSE(BrowserInspector::installed(workspace, kBrave));
    EXPECT_EQ(BrowserInspector::installedBundles(KnownApplications(kAll)), kAll);
}

TEST_F(Browsers, Safari_says_the_same_installed_or_not)
{
    BrowserInfo with = scanned("safari");
    const BrowserInfo without = scanned("safari", {});
    EXPECT_TRUE(with.installed);
    EXPECT_FALSE(without.installed);
    with.installed = false;
    EXPECT_EQ(with, without);
    EXPECT_EQ(with.state, SecureDNSState::NotApplicable);
    EXPECT_EQ(with.settingsURL, std::nullopt);
    EXPECT_EQ(with.detail, QStringLiteral("Safari has no secure-DNS switch of its own. If iCloud Private Relay is on, "
                                          "Safari traffic bypasses Pi-hole."));
    EXPECT_EQ(with.steps, QStringList(QStringLiteral("Open Private Relay and make sure it is Off (or leave it on and "
                                                     "accept that Safari skips Pi-hole).")));
}

TEST_F(Browsers, One_that_is_not_installed_says_so_and_is_not_read)
{
    put("Google/Chrome/Local State", R"({"dns_over_https":{"mode":"secure"}})");
    put("Firefox/Profiles/a/prefs.js", "user_pref(\"network.trr.mode\", 2);");
    for (const char *id : {"chrome", "edge", "brave", "firefox"}) {
        const BrowserInfo browser = scanned(id, {kSafari});
        EXPECT_FALSE(browser.installed) << id;
        EXPECT_EQ(browser.state, SecureDNSState::NotApplicable) << id;
        EXPECT_EQ(browser.detail, QStringLiteral("Not installed.")) << id;
        EXPECT_TRUE(browser.steps.isEmpty()) << id;
    }
}

TEST_F(Browsers, Of_the_chromium_family_are_read_from_their_own_folders)
{
    put("Google/Chrome/Local State", R"({"dns_over_https":{"mode":"secure"}})");
    put("Microsoft Edge/Local State", R"({"dns_over_https":{"mode":"off"}})");
    put("BraveSoftware/Brave-Browser/Local State", "{}");
    EXPECT_EQ(scanned("chrome").state, SecureDNSState::On);
    EXPECT_EQ(scanned("edge").state, SecureDNSState::Off);
    EXPECT_EQ(scanned("brave").state, SecureDNSState::UnknownDefault);
    EXPECT_TRUE(scanned("brave").installed);
}

TEST_F(Browsers, Of_the_chromium_family_tell_their_own_way_to_the_setting)
{
    const QString last =
        QStringLiteral("Find 'Use secure DNS' and switch it off (or pick your system's DNS provider).");
    const QString common = QStringLiteral("Open Settings, Privacy and security, then Security.");
    EXPECT_EQ(scanned("chrome").steps, QStringList({common, last}));
    EXPECT_EQ(scanned("brave").steps, QStringList({common, last}));
    EXPECT_EQ(scanned("edge").steps,
              QStringList({QStringLiteral("Open Settings, Privacy, search, and services, then Security."), last}));
    EXPECT_EQ(scanned("chrome").settingsURL, QStringLiteral("chrome://settings/security"));
    EXPECT_EQ(scanned("edge").settingsURL, QStringLiteral("edge://settings/privacy"));
    EXPECT_EQ(scanned("brave").settingsURL, QStringLiteral("brave://settings/security"));
    EXPECT_EQ(scanned("edge").bundleID, kEdge);
}

TEST_F(Browsers, That_were_never_started_cannot_be_read)
{
    const QString chromium =
        QStringLiteral("Could not read the browser's settings file (it may not have been started yet).");
    EXPECT_EQ(scanned("chrome").state, SecureDNSState::NotReadable);
    EXPECT_EQ(scanned("chrome").detail, chromium);
    EXPECT_EQ(scanned("firefox").state, SecureDNSState::NotReadable);
    EXPECT_EQ(scanned("firefox").detail, QStringLiteral("Could not find a Firefox profile."));
    EXPECT_EQ(scanned("firefox").steps,
              QStringList(QStringLiteral("Open Settings, Privacy & Security, scroll to 'DNS over HTTPS'.")));
    EXPECT_EQ(scanned("firefox").settingsURL, QStringLiteral("about:preferences#privacy"));
}

TEST_F(Browsers, Firefox_is_read_from_the_profile_that_changed_last)
{
    putPrefs("aaa.default", 5, 10);
    putPrefs("mmm.default-release", 2, 1);
    putPrefs("zzz.old", 5, 1000);
    EXPECT_EQ(BrowserInspector::firefoxState().state, SecureDNSState::On);
    putPrefs("zzz.old", 5, 0);
    EXPECT_EQ(BrowserInspector::firefoxState().state, SecureDNSState::Off);
}

TEST_F(Browsers, Firefox_profiles_without_settings_do_not_count)
{
    ASSERT_TRUE(QDir().mkpath(library("Firefox/Profiles/empty")));
    put("Firefox/Profiles/file", "prefs.js");
    EXPECT_EQ(BrowserInspector::firefoxState().detail, QStringLiteral("Could not find a Firefox profile."));
    putPrefs(".hidden", 5, 10);
    EXPECT_EQ(BrowserInspector::firefoxState().state, SecureDNSState::Off);
}

TEST_F(Browsers, Firefox_settings_that_are_no_file_cannot_be_read)
{
    ASSERT_TRUE(QDir().mkpath(library("Firefox/Profiles/a")));
    ASSERT_EQ(::mkfifo(QFile::encodeName(library("Firefox/Profiles/a/prefs.js")).constData(), 0600), 0);
    const SecureDNSReading unreadable{SecureDNSState::NotReadable,
                                      QStringLiteral("Could not read Firefox's prefs.js.")};
    EXPECT_EQ(BrowserInspector::firefoxState(), unreadable);
}

TEST_F(Browsers, A_file_in_place_of_the_profiles_is_no_profile)
{
    put("Firefox/Profiles", "");
    EXPECT_EQ(BrowserInspector::firefoxState().detail, QStringLiteral("Could not find a Firefox profile."));
}

} // namespace
} // namespace corvane::test
