#include "platform/memory.h"

#include <malloc/malloc.h>

namespace corvane::platform {

void returnFreeMemory() { malloc_zone_pressure_relief(nullptr, 0); }

} // namespace corvane::platform
