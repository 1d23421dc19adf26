#include "ui/dot.h"

#include "platform/system_colors.h"

#include <QPainter>

#include <cmath>

namespace corvane {

namespace {

constexpr double kSize = 16;
constexpr double kInset = 2;

using platform::SystemColor;

SystemColor colorOf(MenuIcon icon)
{
    switch (icon) {
    case MenuIcon::Active:
        return SystemColor::Green;
    case MenuIcon::NotUsed:
        return SystemColor::Orange;
    case MenuIcon::NotAnswering:
        return SystemColor::Red;
    case MenuIcon::Stopped:
    case MenuIcon::Unknown:
        return SystemColor::Gray;
    }
    Q_UNREACHABLE();
}

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
    painter.setBrush(platform::systemColor(colorOf(icon)));
    painter.drawEllipse(QRectF(kInset, kInset, kSize - 2 * kInset, kSize - 2 * kInset));
    return image;
}

} // namespace corvane
