#include "ui/dot.h"

#include "app/light.h"
#include "platform/system_colors.h"

#include <QPainter>

#include <cmath>

namespace corvane {

namespace {

constexpr double kSize = 16;
constexpr double kInset = 2;

using platform::SystemColor;

SystemColor colorOf(Light light)
{
    switch (light) {
    case Light::Green:
        return SystemColor::Green;
    case Light::Orange:
        return SystemColor::Orange;
    case Light::Red:
        return SystemColor::Red;
    case Light::Gray:
        break;
    }
    return SystemColor::Gray;
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
    painter.setBrush(platform::systemColor(colorOf(lightOf(icon))));
    painter.drawEllipse(QRectF(kInset, kInset, kSize - 2 * kInset, kSize - 2 * kInset));
    return image;
}

} // namespace corvane
