#pragma once

#include <chrono>

namespace corvane {

/// Whether a look at the live status also reads Pi-hole's counters.
enum class Stats { Leave, Include };

/// Whether a test gives a container that is still starting its time.
enum class Wait { No, ForStart };

/// How long a container may take to become healthy.
struct HealthPatience {
    std::chrono::milliseconds stopped; ///< One that does not run: it may be about to start.
    std::chrono::milliseconds running;
};

} // namespace corvane
