#include "checks/browser_inspector.h"

#include "checks/settings_file.h"
#include "exec/command_runner.h"
#include "platform/workspace.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <limits>

namespace corvane {

namespace {

constexpr std::chrono::seconds kOpenTimeout{10};
const QString kOpen = QStringLiteral("/usr/bin/open");

struct ChromiumBrowser {
    const char *id;
    const char *name;
    const char *bundleID;
    const char *folder;
    const char *settingsURL;
    const char *settingsPage;
};

constexpr ChromiumBrowser kChromiumBrowsers[] = {
    {"chrome", "Google Chrome", "com.google.Chrome", "Google/Chrome", "chrome://settings/security",
     "Settings, Privacy and security"},
    {"edge", "Microsoft Edge", "com.microsoft.edgemac", "Microsoft Edge", "edge://settings/privacy",
     "Settings, Privacy, search, and services"},
    {"brave", "Brave", "com.brave.Browser", "BraveSoftware/Brave-Browser", "brave://settings/security",
     "Settings, Privacy and security"},
};

constexpr const char *kSafariBundle = "com.apple.Safari";
constexpr const char *kFirefoxBundle = "org.mozilla.firefox";

QString text(const char *ascii) { return QString::fromLatin1(ascii); }

QDir userLibrary() { return QDir(QDir::homePath() + QStringLiteral("/Library/Application Support")); }

BrowserInfo safari(bool installed)
{
    return {
        .id = QStringLiteral("safari"),
        .name = QStringLiteral("Safari"),
        .bundleID = text(kSafariBundle),
        .settingsURL = std::nullopt,
        .installed = installed,
        .state = SecureDNSState::NotApplicable,
        .detail = QStringLiteral("Safari has no secure-DNS switch of its own. If iCloud Private Relay is on, Safari "
                                 "traffic bypasses Pi-hole."),
        .steps = {QStringLiteral("Open Private Relay and make sure it is Off (or leave it on and accept that Safari "
                                 "skips Pi-hole).")},
    };
}

BrowserInfo notInstalled(const QString &id, const QString &name, const QString &bundleID, const QString &settingsURL)
{
    return {
        .id = id,
        .name = name,
        .bundleID = bundleID,
        .settingsURL = settingsURL,
        .installed = false,
        .state = SecureDNSState::NotApplicable,
        .detail = QStringLiteral("Not installed."),
        .steps = {},
    };
}

BrowserInfo withReading(BrowserInfo browser, const SecureDNSReading &reading, const QStringList &steps)
{
    browser.installed = true;
    browser.state = reading.state;
    browser.detail = reading.detail;
    browser.steps = steps;
    browser.decidesItself = reading.decidesItself;
    return browser;
}

BrowserInfo chromium(const ChromiumBrowser &kind, bool installed)
{
    const BrowserInfo absent =
        notInstalled(text(kind.id), text(kind.name), text(kind.bundleID), text(kind.settingsURL));
    if (!installed) return absent;

    const QString local = userLibrary().filePath(text(kind.folder) + QStringLiteral("/Local State"));
    const QStringList steps{
        QStringLiteral("Open ") + text(kind.settingsPage) + QStringLiteral(", then Security."),
        QStringLiteral("Find 'Use secure DNS' and switch it off (or pick your system's DNS provider)."),
    };
    return withReading(absent, BrowserInspector::chromiumState(local), steps);
}

BrowserInfo firefox(bool installed)
{
    const BrowserInfo absent = notInstalled(QStringLiteral("firefox"), QStringLiteral("Firefox"), text(kFirefoxBundle),
                                            QStringLiteral("about:preferences#privacy"));
    if (!installed) return absent;

    const QStringList steps{QStringLiteral("Open Settings, Privacy & Security, scroll to 'DNS over HTTPS'.")};
    return withReading(absent, BrowserInspector::firefoxState(), steps);
}

qint64 changedAt(const QFileInfo &file)
{
    const QDateTime date = file.lastModified();
    return date.isValid() ? date.toMSecsSinceEpoch() : std::numeric_limits<qint64>::min();
}

/// The "prefs.js" that changed last.
std::optional<QFileInfo> newestPrefs()
{
    const QDir profiles(userLibrary().filePath(QStringLiteral("Firefox/Profiles")));
    const auto entries = profiles.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    QList<QFileInfo> found;
    for (const QString &entry : entries) {
        const QFileInfo prefs(profiles.filePath(entry + QStringLiteral("/prefs.js")));
        if (prefs.exists()) found += prefs;
    }
    const auto newest = std::ranges::max_element(found, {}, changedAt);
    if (newest == found.end()) return std::nullopt;
    return *newest;
}

} // namespace

bool BrowserInspector::installed(const Workspace &workspace, const QString &bundleID)
{
    return workspace.hasApplication(bundleID);
}

QSet<QString> BrowserInspector::installedBundles(const Workspace &workspace)
{
    QStringList bundles{text(kSafariBundle), text(kFirefoxBundle)};
    for (const ChromiumBrowser &kind : kChromiumBrowsers)
        bundles += text(kind.bundleID);

    QSet<QString> found;
    for (const QString &bundle : bundles) {
        if (installed(workspace, bundle)) found += bundle;
    }
    return found;
}

QList<BrowserInfo> BrowserInspector::scan(const QSet<QString> &installedBundles)
{
    QList<BrowserInfo> browsers{safari(installedBundles.contains(text(kSafariBundle)))};
    for (const ChromiumBrowser &kind : kChromiumBrowsers) {
        browsers += chromium(kind, installedBundles.contains(text(kind.bundleID)));
    }
    browsers += firefox(installedBundles.contains(text(kFirefoxBundle)));
    return browsers;
}

SecureDNSReading BrowserInspector::chromiumState(const QString &local)
{
    if (const auto bytes = readSettingsFile(local)) return readLocalState(*bytes);
    return {SecureDNSState::NotReadable,
            QStringLiteral("Could not read the browser's settings file (it may not have been started yet).")};
}

SecureDNSReading BrowserInspector::firefoxState()
{
    const auto prefs = newestPrefs();
    if (!prefs) return {SecureDNSState::NotReadable, QStringLiteral("Could not find a Firefox profile.")};
    if (const auto bytes = readSettingsFile(prefs->filePath())) return readPrefs(*bytes);
    return {SecureDNSState::NotReadable, QStringLiteral("Could not read Firefox's prefs.js.")};
}

QCoro::Task<> BrowserInspector::openSettings(BrowserInfo browser)
{
    QStringList args;
    if (browser.settingsURL) {
        args = {QStringLiteral("-b"), browser.bundleID, *browser.settingsURL};
    } else if (browser.id == u"safari") {
        args = {QStringLiteral("x-apple.systempreferences:")};
    }
    if (args.isEmpty()) co_return;

    const Command command(kOpen, args);
    // Nothing depends on whether it worked: the steps are on screen either way.
    [[maybe_unused]] const auto result = co_await CommandRunner::run(command.within(kOpenTimeout));
}

QCoro::Task<bool> BrowserInspector::open(BrowserInfo browser, QString address)
{
    const Command command(kOpen, {QStringLiteral("-b"), browser.bundleID, address});
    const CommandResult result = co_await CommandRunner::run(command.within(kOpenTimeout));
    co_return result.succeeded();
}

} // namespace corvane
