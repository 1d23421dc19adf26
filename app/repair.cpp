#include "app/repair.h"

#include "app/flow.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr std::chrono::seconds kBetweenLooks{3};
/// How far back the first look goes.
constexpr std::chrono::seconds kLately{600};
/// More are asked for within minutes by nobody who looks for one of them; their text is read within a frame.
constexpr int kMostQuestions = 500;

} // namespace

Repair::Repair(PiholeAPI &api, Clock &clock, CurrentActivities &activities)
    : m_api(api)
    , m_clock(clock)
    , m_activities(activities)
{
    connect(&m_activities, &CurrentActivities::changed, this, &Repair::onActivities);
}

Flow<> Repair::watch()
{
    if (watching()) co_return;
    const int watch = ++m_newestWatch;
    setWatching(true);
    m_boundary.reset();
    m_rulesKnown = false;
    setNames({});
    setTrouble({});
    while (watching() && watch == m_newestWatch) {
        co_await look();
        co_await m_clock.pause(kBetweenLooks);
    }
}

Flow<> Repair::look()
{
    if (!m_boundary) co_await setBoundary();
    if (!m_boundary) co_return;
    if (!m_rulesKnown) co_await readRules();
    if (privacyLevel() > 0) co_return; // there is nothing to be seen
    const auto questions = co_await m_api.blockedSince(*m_boundary - kLately.count(), kMostQuestions);
    if (!watching() || !m_boundary) co_return;
    setTrouble(questions ? QString() : questions.error().description());
    if (questions) setNames(blockedNames(*questions, *m_boundary, m_lists, m_rules));
}

/// What is asked from now on is new. Now is what Pi-hole's clock says, which may differ from the Mac's.
Flow<> Repair::setBoundary()
{
    const auto level = co_await m_api.privacyLevel();
    setPrivacyLevel(level.value_or(0));
    const auto newest = co_await m_api.recentQueries(1);
    setTrouble(newest ? QString() : newest.error().description());
    if (!newest) co_return;
    m_boundary = newest->isEmpty() ? 0 : newest->first().time;
    const auto lists = co_await m_api.lists();
    if (lists) m_lists = *lists;
}

Flow<bool> Repair::readRules()
{
    const auto rules = co_await m_api.rules();
    const PiholeAPIError noDatabase = PiholeAPIError::http(400);
    setDatabaseBroken(!rules && rules.error() == noDatabase);
    if (!rules) co_return false;
    m_rules = *rules;
    m_rulesKnown = true;
    QList<Permission> found;
    for (const PiholeRule &rule : *rules) {
        if (const auto permission = Permission::of(rule)) found.append(*permission);
    }
    setPermissions(found);
    co_return true;
}

Flow<> Repair::endPermissions()
{
    const QDateTime now = QDateTime::currentDateTime();
    const auto isOver = [now](const Permission &permission) { return permission.isOver(now); };
    const bool due = std::ranges::any_of(permissions(), isOver);
    if (listsRun() || (m_rulesKnown && !due)) co_return;
    const bool known = co_await readRules();
    if (!known) co_return;
    const QList<Permission> all = permissions();
    bool ended = false;
    for (const Permission &permission : all) {
        if (!isOver(permission)) continue;
        const auto gone = co_await m_api.removeRule(PiholeRule::Kind::AllowedName, permission.name);
        if (gone) remember(permission, Wish::TakeBack);
        ended = true;
    }
    if (ended) co_await readRules();
}

void Repair::remember(const Permission &permission, Wish wish)
{
    m_changes.insert(permission.name, {permission, wish, m_clock.now()});
}

void Repair::onActivities()
{
    if (std::exchange(m_listsRan, listsRun()) && !listsRun()) onRulesReplaced();
}

void Repair::onRulesReplaced()
{
    m_rulesKnown = false;
    if (!m_changes.isEmpty()) launch(repeatChanges());
}

} // namespace corvane
