#include "app/app_model.h"
#include "app/disturbance.h"
#include "app/test_name.h"
#include "checks/browser_inspector.h"
#include "exec/background.h"
#include "runtime/pihole_controller.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr std::chrono::seconds kLimit{20};
constexpr std::chrono::seconds kBetweenReads{2};
constexpr int kLogLength = 300;

} // namespace

Flow<> AppModel::scanBrowsers()
{
    if (!browserReadAllowed() || !m_activities.mayBegin(Activity::ScanBrowsers)) co_return;
    const ActivityMark mark(m_activities, Activity::ScanBrowsers);
    co_await boundTo(mark);
    const std::function<QList<BrowserInfo>()> scan = [installed = BrowserInspector::installedBundles(m_workspace)] {
        return BrowserInspector::scan(installed);
    };
    BackgroundWork<QList<BrowserInfo>> work(scan);
    const QList<BrowserInfo> found = co_await work;
    // Of two readings at once, the one that began later knows better.
    setBrowsers(found);
    co_await askAboutFirefox();
}

/// Firefox leaves its default secure DNS off where the DNS server says that this name does not exist.
Flow<> AppModel::askAboutFirefox()
{
    setFirefoxToldOff(std::nullopt);
    if (!answering()) co_return;
    const DigResult reply = co_await PiholeController::ask(QStringLiteral("use-application-dns.net"));
    if (!reply.status.isEmpty()) setFirefoxToldOff(reply.status == QLatin1String("NXDOMAIN"));
}

Flow<> AppModel::openBrowserSettings(QString id)
{
    const QList<BrowserInfo> known = browsers();
    const auto browser = std::ranges::find(known, id, &BrowserInfo::id);
    if (browser == known.end()) co_return;
    co_await BrowserInspector::openSettings(*browser);
}

Flow<> AppModel::runBrowserTest()
{
    if (!m_activities.mayBegin(Activity::BrowserTest)) co_return;
    const ActivityMark mark(m_activities, Activity::BrowserTest);
    co_await boundTo(mark);
    configureAPI();

    const Disturbance disturbance(m_activities);
    setNote(QStringLiteral("browser"), {});
    const QString name = freshTestName();
    m_workspace.open(QUrl(QStringLiteral("http://%1/").arg(name)));
    setBrowserTestDetail(QStringLiteral("Opened ") + name +
                         QStringLiteral(" in your default browser. An error page there is expected: the name does not "
                                        "exist. Looking in Pi-hole's log..."));
    const Clock::Instant deadline = m_clock.now() + kLimit;
    bool found = false;
    while (!found && m_clock.now() < deadline) {
        co_await m_clock.pause(kBetweenReads);
        const auto queries = co_await m_api.recentQueries(kLogLength);
        found = queries && std::ranges::count(*queries, name, &PiholeQuery::domain) > 0;
    }
    if (!found && disturbance.happened()) {
        setBrowserTestDetail(Disturbance::kSentence);
        co_return;
    }
    const QString detail =
        found
            ? name + QStringLiteral(" appeared in Pi-hole's query log, so your default browser uses Pi-hole. (The "
                                    "browser's error page was expected.)")
            : name + QStringLiteral(" did not show up in Pi-hole's log within 20 seconds. Your default browser may be "
                                    "using its own secure DNS, a VPN or a proxy.");
    setBrowserTestDetail(detail);
    recordOutcome(QStringLiteral("browser"), found, detail);
    co_await explainMissingNames(&mark, QStringLiteral("browser"), !found);
}

} // namespace corvane
