#include "app/app_model.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

/// More than are shown: some of them nobody asked for.
constexpr int kCountedNames = 15;
/// Enough to see which names only others lead to.
constexpr int kNewestBlocked = 200;
constexpr qsizetype kShownNames = 5;

} // namespace

void AppModel::noteProtection()
{
    if (!statusChecked() && m_day.record().spans().isEmpty()) return;
    m_day.note(protectionNow({icon(), blocking(), listsEmpty(), resolverReport()}));
}

void AppModel::showHistory(bool shown)
{
    if (m_historyShown == shown) return;
    m_historyShown = shown;
    m_historyUnread = shown;
    if (shown && answering()) launch(readHistory(Stats::Include));
}

/// One request beside a refresh: what was asked comes with the counters, the names in turn with what tells which of
/// them nobody asked for. All three at first.
Flow<> AppModel::readHistory(Stats stats)
{
    if (!m_historyShown || !answering() || !mayCount()) co_return;
    const bool withCounters = stats == Stats::Include;
    const bool everything = std::exchange(m_historyUnread, false);
    configureAPI();
    if (everything || withCounters) {
        const auto day = co_await m_api.history();
        if (day) setHistory(*day);
        setHistoryProblem(day ? QString() : day.error().description());
    }
    if (!everything && withCounters) co_return;
    if (!everything) m_topBlockedIsNext = !m_topBlockedIsNext;
    co_await readTopBlocked(everything || m_topBlockedIsNext, everything || !m_topBlockedIsNext);
}

Flow<> AppModel::readTopBlocked(bool counted, bool newest)
{
    if (counted) {
        const auto top = co_await m_api.topBlocked(kCountedNames);
        if (!top) co_return;
        m_topCounted = *top;
    }
    if (newest) {
        const auto questions = co_await m_api.blockedSince(0, kNewestBlocked);
        if (!questions) co_return;
        m_newestBlocked = *questions;
    }
    PiholeTopBlocked top = askedFor(m_topCounted, m_newestBlocked);
    top.names = top.names.first(std::min(kShownNames, top.names.size()));
    setTopBlocked(top);
}

} // namespace corvane
