#include "platform/memory.h"

#include <malloc.h>

namespace corvane::platform {

void returnFreeMemory() { malloc_trim(0); }

} // namespace corvane::platform
