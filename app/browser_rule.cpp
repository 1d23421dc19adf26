#include "app/app_model.h"

namespace corvane {

namespace {

/// What changes the Mac's servers, and with them what is needed, or makes Pi-hole forget what is changed during it.
constexpr Activities kNotBeside =
    Activity::ApplyDns | Activity::RestoreDns | Activity::Removal | Activity::LoadLists | Activity::ImportBackup;

} // namespace

/// What a look at Pi-hole comes with. While blocking is off no rule works, so that nothing could be proved.
Flow<> AppModel::keepBrowserRule()
{
    if (m_activities.underWay() & kNotBeside) co_return;
    if (!blocking() || !blocking()->enabled) co_return;
    co_await m_browserRuleKeeper.keep(resolverReport());
}

/// Before the servers change: a browser looks for the backup's secure DNS as soon as it sees them.
Flow<> AppModel::putBrowserRule()
{
    // Pi-hole would forget it at the end of the run; a later look puts it there.
    if (m_activities.underWay() & Activity::LoadLists) co_return;
    configureAPI();
    const bool blocks = !blocking() || blocking()->enabled;
    co_await m_browserRuleKeeper.put(blocks ? BrowserRuleKeeper::Proof::Ask : BrowserRuleKeeper::Proof::Skip);
}

/// A Pi-hole that is down is asked when it is back, not while somebody waits for the old servers.
Flow<> AppModel::dropBrowserRule()
{
    configureAPI();
    if (answering())
        co_await m_browserRuleKeeper.drop();
    else
        m_browserRuleKeeper.lookAgain();
}

void AppModel::followBrowserRule()
{
    connect(&m_browserRuleKeeper, &BrowserRuleKeeper::changed, this,
            [this] { setBrowserRule(m_browserRuleKeeper.state()); });
    const auto watch = [this] {
        const bool silent = statusChecked() && !answering();
        const bool off = blocking() && !blocking()->enabled;
        if (silent || off) m_browserRuleKeeper.interrupt();
    };
    connect(this, &AppModel::answeringChanged, this, watch);
    connect(this, &AppModel::statusCheckedChanged, this, watch);
    connect(this, &AppModel::blockingChanged, this, watch);
}

} // namespace corvane
