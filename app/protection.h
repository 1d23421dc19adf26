#pragma once

#include "api/pihole_types.h"
#include "app/menu_icon.h"
#include "dns/resolver_report.h"

#include <optional>

namespace corvane {

/// What this Mac's names were protected by. The numbers are kept in the day's file.
enum class Protection {
    Unknown = 0,     ///< Corvane did not run, or had not looked yet.
    Protected = 1,   ///< Pi-hole answered this Mac and blocked.
    NotBlocking = 2, ///< Pi-hole answered this Mac and let everything through.
    Backup = 3,      ///< Pi-hole did not answer; another server did in its place.
    Down = 4,        ///< Pi-hole did not answer, and this Mac asks nobody else.
    NotUsed = 5,     ///< This Mac did not use Pi-hole.
    Asleep = 6,      ///< The Mac slept.
};

/// What the status shows now.
struct ProtectionSigns {
    MenuIcon icon = MenuIcon::Unknown;
    std::optional<PiholeBlocking> blocking = std::nullopt;
    bool listsEmpty = false;
    std::optional<ResolverReport> resolvers = std::nullopt;
};

[[nodiscard]] Protection protectionNow(const ProtectionSigns &signs);

} // namespace corvane
