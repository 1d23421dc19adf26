#pragma once

#include "app/current_activities.h"

namespace corvane {

/// Sees whether container or engine were changed while a test ran: what failed meanwhile says nothing about them.
class Disturbance {
public:
    /// Watches from now on.
    explicit Disturbance(const CurrentActivities &activities);

    /// Whether there was a change since, or one is under way.
    [[nodiscard]] bool happened() const;
    [[nodiscard]] bool lasts() const;

    /// What a test says instead of a reason that may be false.
    static constexpr QLatin1StringView kSentence{"Pi-hole was changed during this test. Test again."};

private:
    const CurrentActivities &m_activities;
    int m_changesBefore;
    bool m_began;
};

} // namespace corvane
