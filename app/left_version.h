#pragma once

#include "app/settings_store.h"

namespace corvane {

/// The version that an update left, kept in the settings until the new one has proved itself: a user who is cut
/// off before that finds the way back.
class LeftVersion {
public:
    explicit LeftVersion(SettingsStore &settings)
        : m_settings(settings)
    {}

    /// Empty when there is none.
    [[nodiscard]] QString tag() const;
    void keep(const QString &tag);
    void forget();

private:
    SettingsStore &m_settings;
};

} // namespace corvane
