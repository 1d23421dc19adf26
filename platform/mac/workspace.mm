#include "platform/workspace.h"

#include <QClipboard>
#include <QGuiApplication>

#import <AppKit/AppKit.h>

namespace corvane {

namespace {

/// The Mac's desktop, asked through AppKit.
class MacWorkspace final : public Workspace {
public:
    bool open(const QUrl &address) override
    {
        NSURL *url = address.toNSURL();
        return url && [NSWorkspace.sharedWorkspace openURL:url];
    }

    [[nodiscard]] bool hasApplication(const QString &bundleId) const override
    {
        return [NSWorkspace.sharedWorkspace URLForApplicationWithBundleIdentifier:bundleId.toNSString()] != nil;
    }

    void copyToClipboard(const QString &text) override { QGuiApplication::clipboard()->setText(text); }

    void activate() override
    {
        if (NSApp.hidden) [NSApp unhide:nil];
        if (@available(macOS 14.0, *)) {
            [NSApp activate];
        } else {
            [NSApp activateIgnoringOtherApps:YES];
        }
        showInFront();
    }

private:
    // Since macOS 14 activation is a request that another application may outlast; the windows come forward all the
    // same.
    static void showInFront()
    {
        for (NSWindow *window in NSApp.windows) {
            if (window.visible && window.canBecomeMainWindow) [window orderFrontRegardless];
        }
    }
};

} // namespace

std::unique_ptr<Workspace> systemWorkspace() { return std::make_unique<MacWorkspace>(); }

} // namespace corvane
