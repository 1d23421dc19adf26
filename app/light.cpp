#include "app/light.h"

namespace corvane {

Light lightOf(MenuIcon icon)
{
    switch (icon) {
    case MenuIcon::Active:
        return Light::Green;
    case MenuIcon::NotUsed:
        return Light::Orange;
    case MenuIcon::NotAnswering:
        return Light::Red;
    case MenuIcon::Stopped:
    case MenuIcon::Unknown:
        break;
    }
    return Light::Gray;
}

} // namespace corvane
