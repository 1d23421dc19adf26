#include "ui/dot.h"

#include "platform/system_colors.h"

#include <QPainter>

#include <array>
#include <cmath>

namespace corvane {

namespace {

constexpr double kSize = 16;
constexpr double kInset = 2;

using platform::SystemColor;

/// By the number of the state.
constexpr std::array<SystemColor, 5> kColors{SystemColor::Green, SystemColor::Orange, SystemColor::Red,
                                             SystemColor::Gray, SystemColor::Gray};

} // namespace

QImage dot(MenuIcon icon, double scale)
{
    const int pixels = static_cast<int>(std::ceil(kSize * scale));
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(platform::systemColor(kColors.at(static_cast<std::size_t>(icon))));
    painter.drawEllipse(QRectF(kInset, kInset, kSize - 2 * kInset, kSize - 2 * kInset));
    return image;
}

} // namespace corvane
