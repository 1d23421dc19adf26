#include "platform/announcer.h"

#import <AppKit/AppKit.h>

namespace corvane {

namespace {

/// VoiceOver, asked by the system's own notification. The toolkit has an event for it only since its version 6.8.
class MacAnnouncer final : public Announcer {
public:
    void announce(const QString &sentence) override
    {
        NSDictionary *words = @{
            NSAccessibilityAnnouncementKey : sentence.toNSString(),
            NSAccessibilityPriorityKey : @(NSAccessibilityPriorityHigh),
        };
        id speaker = NSApp.mainWindow ? (id)NSApp.mainWindow : (id)NSApp;
        NSAccessibilityPostNotificationWithUserInfo(speaker, NSAccessibilityAnnouncementRequestedNotification, words);
    }
};

} // namespace

std::unique_ptr<Announcer> systemAnnouncer() { return std::make_unique<MacAnnouncer>(); }

} // namespace corvane
