// Breaks on its first input: what a finding does to scripts/fuzz can be seen with it.

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t * /*data*/, std::size_t /*size*/) { std::abort(); }
