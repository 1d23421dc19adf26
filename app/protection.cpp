#include "app/protection.h"

#include "facts/addresses.h"

#include <algorithm>

namespace corvane {

namespace {

bool hasBackup(const std::optional<ResolverReport> &resolvers)
{
    return resolvers && std::ranges::any_of(resolvers->defaultServers,
                                            [](const QString &server) { return server != kPiholeAddress; });
}

} // namespace

Protection protectionNow(const ProtectionSigns &signs)
{
    switch (signs.icon) {
    case MenuIcon::Active:
        return signs.listsEmpty || (signs.blocking && !signs.blocking->enabled) ? Protection::NotBlocking
                                                                                : Protection::Protected;
    case MenuIcon::NotAnswering:
        return hasBackup(signs.resolvers) ? Protection::Backup : Protection::Down;
    case MenuIcon::NotUsed:
    case MenuIcon::Stopped:
        return Protection::NotUsed;
    case MenuIcon::Unknown:
        break;
    }
    return Protection::Unknown;
}

} // namespace corvane
