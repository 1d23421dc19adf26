#pragma once

#include <QLatin1StringView>

namespace corvane {

/// The one container that Corvane makes, starts, stops and removes.
inline constexpr QLatin1StringView kContainerName{"pihole"};
/// Its two volumes, which hold Pi-hole's data.
inline constexpr QLatin1StringView kSettingsVolume{"pihole_etc"};
inline constexpr QLatin1StringView kDnsmasqVolume{"pihole_dnsmasq"};

} // namespace corvane
