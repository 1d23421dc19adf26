#include "app/app_model.h"
#include "app/list_verdict.h"

#include <QPointer>

#include <algorithm>

namespace corvane {

namespace {

const QString kListsKey = QStringLiteral("lists");
constexpr int kListRuns = 2;
/// From the end of a run until its names count.
constexpr std::chrono::seconds kListsSettle{1};
/// A run whose answer got lost may go on for as long.
constexpr std::chrono::minutes kLostRun{10};
constexpr std::chrono::seconds kBetweenLooks{5};

qint64 seconds(const Clock &clock) { return clock.wallTime().toSecsSinceEpoch(); }

int enabledIn(const QList<PiholeList> &lists)
{
    return static_cast<int>(std::ranges::count(lists, true, &PiholeList::enabled));
}

} // namespace

Flow<> AppModel::loadBlockLists()
{
    if (!mayBegin(Activity::LoadLists, &AppModel::setApiMessage)) co_return;
    const ActivityMark mark(m_activities, Activity::LoadLists);
    co_await boundTo(mark);
    configureAPI();
    setNote(kListsKey, QStringLiteral("Pi-hole loads its block lists. This takes a few seconds to some minutes..."));
    const auto before = co_await m_api.lists();
    const QList<PiholeList> listsBefore = before.value_or(QList<PiholeList>());
    // A Pi-hole that never had lists uses them from the second run on.
    bool loaded = true;
    for (int run = 0; loaded && (run == 0 || (listsEmpty() && run < kListRuns)); ++run) {
        m_listRun.begin(enabledIn(listsBefore));
        loaded = co_await runLists();
        m_listRun.end();
        m_leftListRun.end();
        if (loaded) co_await m_clock.pause(kListsSettle);
        co_await refreshStats();
        co_await m_repair.readRules();
    }
    const auto after = co_await m_api.lists();
    const QString troubles = loaded && after ? listTroubles(listsBefore, *after) : QString();
    setNote(kListsKey, QStringList{listsVerdict(loaded, listsEmpty()), troubles}.join(u'\n').trimmed());
}

/// One run; whether it came to its end. An answer that got lost says nothing about the run: it goes on, and nothing
/// may disturb it.
Flow<bool> AppModel::runLists()
{
    const auto counters = co_await m_api.summary();
    if (counters && counters->listsRun) m_leftListRun.begin({seconds(m_clock), *counters->listsRun});
    const std::function<void(const QByteArray &)> hear = [run = QPointer<ListRun>(&m_listRun)](const QByteArray &text) {
        if (run) run->hear(text);
    };
    const auto ended = co_await m_api.updateLists(hear);
    if (ended || ended.error() != PiholeAPIError::unreachable() || !counters) co_return ended.value_or(false);
    const bool newer = co_await awaitNewerLists(counters->listsRun, kLostRun);
    co_return newer;
}

/// Waits until Pi-hole reports another run than that one; false when it has gone, or when the time is over.
Flow<bool> AppModel::awaitNewerLists(std::optional<qint64> before, Clock::Duration limit)
{
    const Clock::Instant deadline = m_clock.now() + limit;
    while (m_clock.now() < deadline) {
        co_await m_clock.pause(kBetweenLooks);
        const auto now = co_await m_api.summary();
        // Pi-hole has gone, and the run with it.
        if (!now) co_return false;
        if (now->listsRun != before) co_return true;
    }
    co_return false;
}

/// Reports what became of a run in the middle of which Corvane was closed. While it may still be under way it counts as
/// such: nothing else may change or stop Pi-hole.
Flow<> AppModel::followLeftListRun()
{
    const std::optional<LeftListRun::Run> left = m_leftListRun.run();
    if (!left || !summary() || !m_activities.mayBegin(Activity::LoadLists)) co_return;
    const ActivityMark mark(m_activities, Activity::LoadLists);
    co_await boundTo(mark);
    bool ended = summary()->listsRun != left->before;
    QString verdict = leftListsVerdict(ended);
    const std::chrono::seconds age(seconds(m_clock) - left->begun);
    if (!ended && age >= std::chrono::seconds(0) && age < kLostRun) {
        m_listRun.setProgress(QStringLiteral("Pi-hole may still be loading its block lists: Corvane was closed in the "
                                             "middle of it."));
        ended = co_await awaitNewerLists(left->before, kLostRun - age);
        m_listRun.end();
        co_await refreshStats();
        verdict = ended ? listsVerdict(true, listsEmpty()) : leftListsVerdict(false);
    }
    m_leftListRun.end();
    const auto lists = co_await m_api.lists();
    const QString troubles = ended && lists ? listTroubles({}, *lists) : QString();
    setNote(kListsKey, QStringList{verdict, troubles}.join(u'\n').trimmed());
}

} // namespace corvane
