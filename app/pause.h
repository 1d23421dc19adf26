#pragma once

#include "app/settings_store.h"

#include <chrono>
#include <optional>

namespace corvane {

/// The pause of blocking that Corvane asked for last: when it is over is kept in the settings, because Pi-hole forgets
/// its own timer whenever it restarts, and stays off.
class Pause {
public:
    explicit Pause(SettingsStore &settings)
        : m_settings(settings)
    {}

    /// `byTheClock`: it ends at its time also when the Mac sleeps meanwhile, which Pi-hole's own timer does not.
    void begin(std::chrono::seconds length, bool byTheClock = false);
    void end();
    [[nodiscard]] bool goesByTheClock() const;
    /// What is left of it, 0 when it is over, absent when there is none. Never more than its whole length, wherever the
    /// wall clock was set meanwhile.
    [[nodiscard]] std::optional<std::chrono::seconds> rest() const;

private:
    SettingsStore &m_settings;
};

} // namespace corvane
