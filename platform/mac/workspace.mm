#include "platform/workspace.h"

#include <QClipboard>
#include <QGuiApplication>

#import <AppKit/AppKit.h>

namespace corvane {

namespace {

/// What clipboard managers agreed on for passwords.
const NSPasteboardType kConcealed = @"org.nspasteboard.ConcealedType";

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

    void copySecretToClipboard(const QString &secret) override
    {
        NSPasteboard *board = NSPasteboard.generalPasteboard;
        [board clearContents];
        [board setString:secret.toNSString() forType:NSPasteboardTypeString];
        [board setString:@"" forType:kConcealed];
    }

    void activate() override
    {
        if (NSApp.hidden) [NSApp unhide:nil];
        insistOnActivation();
        showInFront();
    }

private:
    // The newer way to activate is a request that the system may decline without a word.
    static void insistOnActivation()
    {
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
        [NSApp activateIgnoringOtherApps:YES];
#pragma clang diagnostic pop
    }

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
