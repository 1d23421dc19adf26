#include "ui/decisions/places.h"

#include "app/operation_title.h"

namespace corvane {

bool answersInBanner(Place::Name asked, bool banner, bool setUp)
{
    if (!banner) return false;
    switch (asked) {
    case Place::Banner:
    case Place::Menu:
        return true;
    case Place::Dashboard:
        return setUp; // The place itself is out of sight.
    case Place::SetUp:
        break;
    }
    return false;
}

bool movesPort(const QString &title)
{
    const QString pattern = OperationTitle::kMovingPort;
    return title.startsWith(pattern.left(pattern.indexOf(u'%')));
}

bool changesAutostart(const QString &title)
{
    return title == OperationTitle::kTurningColimaOn || title == OperationTitle::kTurningColimaOff;
}

} // namespace corvane
