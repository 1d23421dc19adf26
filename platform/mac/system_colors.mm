#include "platform/system_colors.h"

#import <AppKit/AppKit.h>

namespace corvane::platform {

namespace {

NSColor *named(SystemColor color)
{
    switch (color) {
    case SystemColor::Green:
        return NSColor.systemGreenColor;
    case SystemColor::Orange:
        return NSColor.systemOrangeColor;
    case SystemColor::Red:
        return NSColor.systemRedColor;
    case SystemColor::Gray:
        return NSColor.systemGrayColor;
    case SystemColor::Accent:
        return NSColor.controlAccentColor;
    }
    return NSColor.systemGrayColor;
}

} // namespace

QColor systemColor(SystemColor color)
{
    NSColor *rgb = [named(color) colorUsingColorSpace:NSColorSpace.sRGBColorSpace];
    return QColor::fromRgbF(static_cast<float>(rgb.redComponent), static_cast<float>(rgb.greenComponent),
                            static_cast<float>(rgb.blueComponent), static_cast<float>(rgb.alphaComponent));
}

} // namespace corvane::platform
