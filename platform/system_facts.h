#pragma once

#include <QString>

#include <optional>

namespace corvane::platform {

struct OsVersion {
    int major = 0;
    int minor = 0;
};

/// The macOS version this Mac runs; zeros when the system does not say.
[[nodiscard]] OsVersion osVersion();

/// The system control "hw.optional.arm64"; absent when it cannot be read.
[[nodiscard]] std::optional<int> hasArm64();

/// The user's application-support folder as the system reports it; absent when it reports none.
[[nodiscard]] std::optional<QString> applicationSupportDir();

} // namespace corvane::platform
