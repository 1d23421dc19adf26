#include "ui/accent.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr double kReadable = 4.6;
/// The luminance at which a colour has a contrast of 3 with the darkest light surface, with the lightest dark one, and
/// with white.
constexpr double kOnLight = 0.185;
constexpr double kOnDark = 0.2;
constexpr double kBehindWhite = 0.295;

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor darkened(QColor color, double luminanceWanted)
{
    for (int step = 0; step < 100 && luminance(color) > luminanceWanted; ++step)
        color = color.darker(102);
    return color;
}

/// Mixed with white: a strong colour has no lighter shade that is as strong.
QColor lightened(const QColor &color, double luminanceWanted)
{
    QColor mixed = color;
    for (float white = 0; white < 1 && luminance(mixed) < luminanceWanted; white += 0.02F)
        mixed = QColor::fromRgbF(color.redF() * (1 - white) + white, color.greenF() * (1 - white) + white,
                                 color.blueF() * (1 - white) + white);
    return mixed;
}

} // namespace

double contrast(const QColor &one, const QColor &other)
{
    const double first = luminance(one);
    const double second = luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor accentFill(const QColor &accent) { return darkened(accent, 1.05 / kReadable - 0.05); }

QColor accentMark(const QColor &accent, bool dark)
{
    return dark ? lightened(accent, kOnDark) : darkened(accent, kOnLight);
}

QColor accentTrack(const QColor &accent, bool dark) { return darkened(accentMark(accent, dark), kBehindWhite); }

} // namespace corvane
