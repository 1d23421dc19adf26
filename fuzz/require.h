#pragma once

#include <cstdlib>

/// What a fuzzer claims of every input: it breaks where the claim does not hold.
inline void require(bool claim)
{
    if (!claim) std::abort();
}
