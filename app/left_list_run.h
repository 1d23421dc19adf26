#pragma once

#include "app/settings_store.h"

#include <optional>

namespace corvane {

/// The run of the block lists that is under way, kept in the settings: Pi-hole goes on with it when Corvane ends, and
/// the next Corvane can say what became of it.
class LeftListRun {
public:
    explicit LeftListRun(SettingsStore &settings)
        : m_settings(settings)
    {}

    struct Run {
        qint64 begun = 0;  ///< Seconds since 1970.
        qint64 before = 0; ///< When the lists had been run last, as Pi-hole said.
    };

    void begin(const Run &run);
    void end();
    /// Absent when none is under way.
    [[nodiscard]] std::optional<Run> run() const;

private:
    SettingsStore &m_settings;
};

} // namespace corvane
