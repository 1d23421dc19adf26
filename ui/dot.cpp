#include "ui/dot.h"

#include <QPainter>

#include <array>
#include <cmath>

namespace corvane {

namespace {

constexpr double kSize = 16;
constexpr double kInset = 2;

/// By the number of the state: the system's green, orange, red, gray and gray again.
constexpr std::array<QRgb, 5> kColors{0xff28cd41, 0xffff9500, 0xffff3b30, 0xff8e8e93, 0xff8e8e93};

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
    painter.setBrush(QColor(kColors.at(static_cast<std::size_t>(icon))));
    painter.drawEllipse(QRectF(kInset, kInset, kSize - 2 * kInset, kSize - 2 * kInset));
    return image;
}

} // namespace corvane
