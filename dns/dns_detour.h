#pragma once

#include "dns/resolver_report.h"

namespace corvane {

/// Who takes this Mac's lookups before Pi-hole gets them, as far as its resolvers show, and what to do about it: a
/// sentence for the user, empty when nobody does.
[[nodiscard]] QString dnsDetour(const ResolverBlock &first);

/// The same where no resolver shows it: Pi-hole is the first server, and yet its log shows no lookup of this Mac.
[[nodiscard]] QString hiddenDnsDetour();

} // namespace corvane
