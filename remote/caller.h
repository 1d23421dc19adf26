#pragma once

#include "remote/answer.h"
#include "remote/request.h"

#include <expected>
#include <functional>

namespace corvane::remote {

/// Why there is no answer.
enum class Silence {
    NotRunning, ///< No Corvane runs.
    NoAnswer,   ///< One runs, and says nothing, or nothing that can be understood.
};

/// How long a caller waits, in milliseconds.
struct Patience {
    /// Until Corvane has heard.
    int hearing = 3'000;
    /// From then until it has ended what it was asked for.
    int working = 60'000;
};

/// Asks the Corvane that runs, and waits for its answer. `begun` gets what it says meanwhile. Blocks; needs no event
/// loop.
[[nodiscard]] std::expected<Answer, Silence> ask(const Request &request, Patience patience,
                                                 const std::function<void(const QString &)> &begun);

} // namespace corvane::remote
