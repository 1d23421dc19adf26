#include "app/current_activities.h"

namespace corvane {

CurrentActivities::Count &CurrentActivities::count(Activity activity)
{
    return m_counts.at(static_cast<size_t>(activity));
}

bool CurrentActivities::isNewest(Activity activity, int run) { return count(activity).newest == run; }

Activities CurrentActivities::underWay() const
{
    Activities found;
    for (size_t i = 0; i < m_counts.size(); ++i) {
        if (m_counts[i].underWay > 0) found |= kActivityRules[i].activity;
    }
    return found;
}

Activities CurrentActivities::marked() const
{
    Activities found;
    for (size_t i = 0; i < m_counts.size(); ++i) {
        if (m_counts[i].marked > 0) found |= kActivityRules[i].activity;
    }
    return found;
}

QSet<QString> CurrentActivities::busyKeys() const
{
    QSet<QString> keys;
    const Activities now = underWay();
    for (const ActivityRule &rule : kActivityRules) {
        if (now.contains(rule.activity) && *rule.busyKey) keys.insert(QString::fromLatin1(rule.busyKey));
    }
    return keys;
}

bool CurrentActivities::mayBegin(Activity activity) const { return !m_closed && !(marked() & excludedBy(activity)); }

QString CurrentActivities::obstacle(Activity activity) const
{
    const Activities inTheWay = marked() & excludedBy(activity);
    if (!inTheWay || inTheWay.contains(activity)) return {};
    if (!(inTheWay & underWay())) return QStringLiteral("Not now: answer the open question first.");
    for (const ActivityRule &rule : kActivityRules) {
        if (!(inTheWay & underWay()).contains(rule.activity)) continue;
        return QStringLiteral("Not now: %1. Try again when that is done.").arg(QString::fromLatin1(rule.words));
    }
    return {};
}

void CurrentActivities::outdate(Activities activities)
{
    for (size_t i = 0; i < m_counts.size(); ++i) {
        if (activities.contains(kActivityRules[i].activity)) ++m_counts[i].newest;
    }
}

void CurrentActivities::close()
{
    m_closed = true;
    for (Count &each : m_counts)
        ++each.newest;
}

ActivityMark::ActivityMark(CurrentActivities &activities, Activity activity, Begin begin)
    : m_activities(&activities)
    , m_activity(activity)
{
    if (ruleOf(activity).changes) ++activities.m_changesBegun;
    ++activities.count(activity).marked;
    m_run = ++activities.count(activity).newest;
    if (begin == Begin::AtOnce) agreed();
}

ActivityMark::~ActivityMark()
{
    if (!m_activities) return;
    --m_activities->count(m_activity).marked;
    if (!m_agreed) return;
    --m_activities->count(m_activity).underWay;
    Q_EMIT m_activities->changed();
}

void ActivityMark::agreed()
{
    if (m_agreed || !m_activities) return;
    m_agreed = true;
    ++m_activities->count(m_activity).underWay;
    Q_EMIT m_activities->changed();
}

bool ActivityMark::stands() const { return m_activities && m_activities->isNewest(m_activity, m_run); }

BoundTo boundTo(const ActivityMark &mark)
{
    // The mark may be taken away before the flow ends.
    return BoundTo([activities = mark.m_activities, activity = mark.m_activity, run = mark.m_run] {
        return activities && activities->isNewest(activity, run);
    });
}

} // namespace corvane
