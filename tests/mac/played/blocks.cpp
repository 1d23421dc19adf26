// The compiler's blocks without a runtime of their own: they are copied once and kept for ever.

#include <cstdlib>
#include <cstring>

namespace {

/// How the compiler lays out a block; the two last functions are there when the flag says so.
struct Descriptor {
    unsigned long reserved;
    unsigned long size;
    void (*copy)(void *target, const void *source);
    void (*dispose)(const void *block);
};

struct Block {
    void *isa;
    int flags;
    int reserved;
    void (*invoke)();
    Descriptor *descriptor;
};

constexpr int kHasCopy = 1 << 25;
constexpr int kIsGlobal = 1 << 28;

} // namespace

extern "C" {

void *_NSConcreteStackBlock[32];
void *_NSConcreteGlobalBlock[32];

void _Block_object_assign(void *target, const void *object, int) { *static_cast<const void **>(target) = object; }
void _Block_object_dispose(const void *, int) {}

} // extern "C"

namespace corvane::played {

void *kept(const void *block)
{
    const auto *source = static_cast<const Block *>(block);
    if (source->flags & kIsGlobal) return const_cast<void *>(block);
    void *copy = std::malloc(source->descriptor->size);
    std::memcpy(copy, block, source->descriptor->size);
    if (source->flags & kHasCopy) source->descriptor->copy(copy, block);
    return copy;
}

} // namespace corvane::played
