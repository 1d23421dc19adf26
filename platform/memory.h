#pragma once

namespace corvane::platform {

/// Hands memory that was freed, but is kept for the next allocation, back to the system.
void returnFreeMemory();

} // namespace corvane::platform
