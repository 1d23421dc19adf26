#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <memory>
#include <type_traits>

namespace corvane {

struct Release {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

/// Owns one Core Foundation object.
template <class Ref>
using Owned = std::unique_ptr<std::remove_pointer_t<Ref>, Release>;

} // namespace corvane
