#include "app/disturbance.h"

namespace corvane {

Disturbance::Disturbance(const CurrentActivities &activities)
    : m_activities(activities)
    , m_changesBefore(activities.changesBegun())
    , m_began(lasts())
{}

bool Disturbance::happened() const { return m_began || m_changesBefore != m_activities.changesBegun(); }

bool Disturbance::lasts() const
{
    constexpr Activities kChanging = changing(Subject::Engine | Subject::Container);
    return static_cast<bool>(m_activities.underWay() & kChanging);
}

} // namespace corvane
