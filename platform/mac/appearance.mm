#include "platform/appearance.h"

#include "platform/system_colors.h"

#import <AppKit/AppKit.h>

namespace corvane {

namespace {

/// System Settings: Appearance, and Display under Accessibility.
class MacAppearance final : public Appearance {
public:
    MacAppearance()
    {
        watch(NSNotificationCenter.defaultCenter, NSSystemColorsDidChangeNotification, m_colors);
        watch(NSWorkspace.sharedWorkspace.notificationCenter,
              NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification, m_display);
    }

    ~MacAppearance() override
    {
        [NSNotificationCenter.defaultCenter removeObserver:m_colors];
        [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:m_display];
    }

    [[nodiscard]] QColor accent() const override
    {
        // The accent colour has a light and a dark shade; which one it is depends on who is drawing.
        __block QColor color;
        [NSApp.effectiveAppearance performAsCurrentDrawingAppearance:^{
          color = platform::systemColor(platform::SystemColor::Accent);
        }];
        return color;
    }

    [[nodiscard]] bool reducesMotion() const override
    {
        return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion;
    }

    [[nodiscard]] bool increasesContrast() const override
    {
        return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldIncreaseContrast;
    }

private:
    void watch(NSNotificationCenter *center, NSNotificationName name, id<NSObject> __strong &observer)
    {
        observer = [center addObserverForName:name
                                       object:nil
                                        queue:NSOperationQueue.mainQueue
                                   usingBlock:^(NSNotification *) {
                                     Q_EMIT changed();
                                   }];
    }

    id<NSObject> m_colors = nil;
    id<NSObject> m_display = nil;
};

} // namespace

std::unique_ptr<Appearance> systemAppearance() { return std::make_unique<MacAppearance>(); }

} // namespace corvane
