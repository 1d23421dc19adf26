#pragma once

namespace corvane {

/// Whether a look at the live status also reads Pi-hole's counters.
enum class Stats { Leave, Include };

/// Whether a test gives a container that is still starting its time.
enum class Wait { No, ForStart };

} // namespace corvane
