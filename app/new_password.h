#pragma once

#include "app/settings_store.h"

namespace corvane {

/// Whether the admin password that is kept may be one that Pi-hole does not have yet, kept in the settings: it gets one
/// only with a new container, and a user who is cut off before that finds out why Pi-hole refuses it.
class NewPassword {
public:
    explicit NewPassword(SettingsStore &settings)
        : m_settings(settings)
    {}

    [[nodiscard]] bool isOnItsWay() const;
    void begin();
    /// Pi-hole has it, or there is no Pi-hole any more.
    void end();

private:
    SettingsStore &m_settings;
};

} // namespace corvane
