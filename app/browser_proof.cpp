#include "app/browser_proof.h"

#include "app/app_model.h"
#include "app/disturbance.h"
#include "app/test_name.h"
#include "checks/browser_inspector.h"

#include <algorithm>

namespace corvane {

namespace {

/// A browser that finds secure DNS for one of the Mac's servers goes over to it within some six seconds.
constexpr std::chrono::seconds kBetweenNames{10};
constexpr std::chrono::seconds kLimit{20};
constexpr std::chrono::seconds kBetweenReads{2};
constexpr int kLogLength = 300;

QString addressOf(const QString &name) { return QStringLiteral("http://%1/").arg(name); }

} // namespace

Flow<> AppModel::proveBrowser(QString id)
{
    const QList<BrowserInfo> known = browsers();
    const auto found = std::ranges::find(known, id, &BrowserInfo::id);
    if (found == known.end() || !m_activities.mayBegin(Activity::BrowserProof)) co_return;
    const ActivityMark mark(m_activities, Activity::BrowserProof);
    co_await boundTo(mark);
    // A copy, as the list may change during a wait. NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const BrowserInfo browser = *found;
    configureAPI();
    showBrowserProof(id, BrowserProof::Running);
    const Disturbance disturbance(m_activities);

    const QString early = freshTestName();
    const bool opened = co_await BrowserInspector::open(browser, addressOf(early));
    if (!opened) {
        showBrowserProof(id, BrowserProof::NotOpened);
        co_return;
    }
    co_await m_clock.pause(kBetweenNames);
    const QString late = freshTestName();
    [[maybe_unused]] const bool openedAgain = co_await BrowserInspector::open(browser, addressOf(late));
    BrowserProof proof = co_await findInBrowserLog(&mark, early, late);
    if (proof != BrowserProof::AsksPihole && disturbance.happened()) proof = BrowserProof::Disturbed;
    showBrowserProof(id, proof);
    if (proof == BrowserProof::AsksPihole && browser.decidesItself) m_browserRuleKeeper.proved();
}

void AppModel::showBrowserProof(const QString &id, BrowserProof proof)
{
    BrowserProofs proofs = browserProofs();
    proofs.insert(id, proof);
    setBrowserProofs(proofs);
}

/// Looks for both names in Pi-hole's log until they are there or 20 seconds are over.
Flow<BrowserProof> AppModel::findInBrowserLog(const ActivityMark *run, QString early, QString late)
{
    co_await boundTo(*run);
    const Clock::Instant deadline = m_clock.now() + kLimit;
    bool earlyCame = false;
    bool lateCame = false;
    bool wasRead = false;
    while (!(earlyCame && lateCame) && m_clock.now() < deadline) {
        co_await m_clock.pause(kBetweenReads);
        const auto queries = co_await m_api.recentQueries(kLogLength);
        if (!queries) continue;
        wasRead = true;
        earlyCame = earlyCame || std::ranges::count(*queries, early, &PiholeQuery::domain) > 0;
        lateCame = lateCame || std::ranges::count(*queries, late, &PiholeQuery::domain) > 0;
    }
    if (!wasRead) co_return BrowserProof::Unread;
    if (lateCame) co_return earlyCame ? BrowserProof::AsksPihole : BrowserProof::CameLate;
    co_return earlyCame ? BrowserProof::GoesPast : BrowserProof::NeverAsks;
}

} // namespace corvane
