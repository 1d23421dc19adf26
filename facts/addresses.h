#pragma once

#include <QLatin1StringView>

namespace corvane {

/// Where this Mac reaches Pi-hole.
inline constexpr QLatin1StringView kPiholeAddress{"127.0.0.1"};
/// The server that Corvane puts behind Pi-hole in this Mac's settings, unless the user wants Pi-hole only.
inline constexpr QLatin1StringView kBackupServer{"1.1.1.1"};

} // namespace corvane
