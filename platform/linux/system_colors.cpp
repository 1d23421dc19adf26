#include "platform/system_colors.h"

namespace corvane::platform {

// What a Mac shows for these names in its light look.
QColor systemColor(SystemColor color)
{
    switch (color) {
    case SystemColor::Green:
        return QColor(0x28, 0xcd, 0x41);
    case SystemColor::Orange:
        return QColor(0xff, 0x95, 0x00);
    case SystemColor::Red:
        return QColor(0xff, 0x3b, 0x30);
    case SystemColor::Accent:
        return QColor(0x00, 0x7a, 0xff);
    case SystemColor::Gray:
        break;
    }
    return QColor(0x8e, 0x8e, 0x93);
}

} // namespace corvane::platform
