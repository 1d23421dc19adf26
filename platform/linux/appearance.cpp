#include "platform/appearance.h"

#include "platform/system_colors.h"

#include <QGuiApplication>
#include <QPalette>

namespace corvane {

namespace {

/// What the toolkit reports where the desktop names no accent colour.
constexpr QRgb kToolkitDefault = 0xff308cc6;

/// A desktop whose theme says no more than its colours.
class LinuxAppearance final : public Appearance {
public:
    [[nodiscard]] QColor accent() const override
    {
        const QColor color = QGuiApplication::palette().color(QPalette::Active, QPalette::Highlight);
        return color.rgb() == kToolkitDefault ? platform::systemColor(platform::SystemColor::Accent) : color;
    }

    [[nodiscard]] bool reducesMotion() const override { return false; }
    [[nodiscard]] bool increasesContrast() const override { return false; }
};

} // namespace

std::unique_ptr<Appearance> systemAppearance() { return std::make_unique<LinuxAppearance>(); }

} // namespace corvane
