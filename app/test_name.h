#pragma once

#include <QString>

namespace corvane {

/// A made-up name under the reserved domain example.com, such as "cv-1a2b3c.example.com". Nobody has ever asked for it,
/// so no cache can answer it, and it cannot exist.
[[nodiscard]] QString freshTestName();

} // namespace corvane
