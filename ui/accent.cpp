#include "ui/accent.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr double kReadable = 4.6;
/// What the toolkit reports where the desktop names no accent colour.
constexpr QRgb kToolkitDefault = 0xff308cc6;
constexpr QRgb kBlue = 0xff007aff;

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

} // namespace

double contrast(const QColor &one, const QColor &other)
{
    const double first = luminance(one);
    const double second = luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor accentColor(const QPalette &palette)
{
    const QColor color = palette.color(QPalette::Active, QPalette::Highlight);
    return color.rgb() == kToolkitDefault ? QColor(kBlue) : color;
}

QColor accentFill(const QPalette &palette)
{
    QColor color = accentColor(palette);
    for (int step = 0; step < 40 && contrast(color, Qt::white) < kReadable; ++step)
        color = color.darker(104);
    return color;
}

} // namespace corvane
