#pragma once

#include "app/settings_store.h"

#include <chrono>
#include <optional>

namespace corvane {

/// What ends a pause.
enum class PauseEnd {
    ItsLength, ///< Pi-hole's timer, which stops while the Mac sleeps.
    TheClock,  ///< A time of the day, which also comes while the Mac sleeps.
};

/// The pause of blocking that Corvane asked for last: when it is over is kept in the settings, because Pi-hole forgets
/// its own timer whenever it restarts, and stays off.
class Pause {
public:
    explicit Pause(SettingsStore &settings)
        : m_settings(settings)
    {}

    void begin(std::chrono::seconds length, PauseEnd endedBy);
    void end();
    /// The user has asked for a pause, or for its end: whoever meant to pause again keeps off.
    void userDecides() { ++m_decisions; }
    [[nodiscard]] int decisions() const { return m_decisions; }
    [[nodiscard]] PauseEnd endedBy() const;
    /// What is left of it, 0 when it is over, absent when there is none. Never more than its whole length, even if the
    /// wall clock was changed during it.
    [[nodiscard]] std::optional<std::chrono::seconds> rest() const;

private:
    SettingsStore &m_settings;
    int m_decisions = 0;
};

} // namespace corvane
