#pragma once

#include "app/settings_store.h"

namespace corvane {

/// The version that an update left, kept in the settings until the new one has proved itself: a user who is cut
/// off before that finds the way back. A second update may come before that; then the version that had proved itself is
/// kept as well.
class LeftVersion {
public:
    explicit LeftVersion(SettingsStore &settings)
        : m_settings(settings)
    {}

    /// What the newest update left; empty when there is none.
    [[nodiscard]] QString tag() const;
    /// What is known to work; empty when there is no tag().
    [[nodiscard]] QString good() const;
    /// An update leaves this version.
    void keep(const QString &tag);
    /// This version is in force: what led away from it did not come about.
    void settle(const QString &inForce);
    void forget();

private:
    void store(const QString &tag, const QString &good);

    SettingsStore &m_settings;
};

} // namespace corvane
