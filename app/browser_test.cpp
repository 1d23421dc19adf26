#include "app/app_model.h"
#include "app/busy_key.h"
#include "app/test_name.h"
#include "checks/browser_inspector.h"
#include "exec/background.h"

#include <QPointer>

#include <algorithm>

namespace corvane {

namespace {

constexpr std::chrono::seconds kLimit{20};
constexpr std::chrono::seconds kBetweenReads{2};
constexpr int kLogLength = 300;

} // namespace

QCoro::Task<> AppModel::scanBrowsers()
{
    const QString key = QStringLiteral("browsers");
    if (!browserReadAllowed() || busy().contains(key)) co_return;
    const BusyKey mark(this, key);
    const QPointer<AppModel> alive(this);
    const std::function<QList<BrowserInfo>()> scan = [installed = BrowserInspector::installedBundles(m_workspace)] {
        return BrowserInspector::scan(installed);
    };
    const int number = ++m_newestScan;
    BackgroundWork<QList<BrowserInfo>> work(scan);
    const QList<BrowserInfo> found = co_await work;
    // Of two readings at once, the one that began later knows better.
    if (alive && number == m_newestScan) setBrowsers(found);
}

QCoro::Task<> AppModel::openBrowserSettings(QString id)
{
    const QList<BrowserInfo> known = browsers();
    const auto browser = std::ranges::find(known, id, &BrowserInfo::id);
    if (browser == known.end()) co_return;
    co_await BrowserInspector::openSettings(*browser);
}

QCoro::Task<> AppModel::runBrowserTest()
{
    const QString key = QStringLiteral("browser");
    if (busy().contains(key)) co_return;
    const BusyKey mark(this, key);
    const QPointer<AppModel> alive(this);
    configureAPI();

    setNote(key, {});
    const QString name = freshTestName();
    m_workspace.open(QUrl(QStringLiteral("http://%1/").arg(name)));
    setBrowserTestDetail(QStringLiteral("Opened ") + name +
                         QStringLiteral(" in your default browser. An error page there is expected: the name does not "
                                        "exist. Looking in Pi-hole's log..."));
    const Clock::Instant deadline = m_clock.now() + kLimit;
    bool found = false;
    while (!found && m_clock.now() < deadline) {
        co_await m_clock.pause(kBetweenReads);
        if (!alive) co_return;
        const auto queries = co_await m_api.recentQueries(kLogLength);
        if (!alive) co_return;
        found = queries && std::ranges::count(*queries, name, &PiholeQuery::domain) > 0;
    }
    const QString detail =
        found
            ? name + QStringLiteral(" appeared in Pi-hole's query log, so your default browser uses Pi-hole. (The "
                                    "browser's error page was expected.)")
            : name + QStringLiteral(" did not show up in Pi-hole's log within 20 seconds. Your default browser may be "
                                    "using its own secure DNS, a VPN or a proxy.");
    setBrowserTestDetail(detail);
    recordOutcome(key, found, detail);
    co_await explainMissingNames(key, !found);
}

} // namespace corvane
