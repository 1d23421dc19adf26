#include "platform/status_item.h"

#include <QMenu>

#import <AppKit/AppKit.h>

namespace corvane {

namespace {

/// Where macOS remembers the place that the user gave the item.
NSString *const kAutosaveName = @"CorvaneStatusItem";
constexpr NSSize kSize = {16, 16};

/// Draws into the current context at the scale of the screen it belongs to.
void draw(const StatusItem::Picture &picture, NSRect area)
{
    CGContextRef context = NSGraphicsContext.currentContext.CGContext;
    const double scale = CGContextConvertSizeToDeviceSpace(context, CGSizeMake(1, 1)).width;
    CGImageRef image = picture(scale).toCGImage();
    if (!image) return;
    CGContextDrawImage(context, area, image);
    CGImageRelease(image);
}

/// A native status item. It shows a Qt menu, but without Qt's own tray icon.
class MacStatusItem final : public StatusItem {
public:
    MacStatusItem()
        : m_item([NSStatusBar.systemStatusBar statusItemWithLength:NSSquareStatusItemLength])
    {
        m_item.autosaveName = kAutosaveName;
    }

    ~MacStatusItem() override { [NSStatusBar.systemStatusBar removeStatusItem:m_item]; }

    void setPicture(const Picture &picture) override
    {
        const Picture kept = picture;
        NSImage *image = [NSImage imageWithSize:kSize
                                        flipped:NO
                                 drawingHandler:^BOOL(NSRect area) {
                                   draw(kept, area);
                                   return YES;
                                 }];
        // A template would take the colour of the menu bar's text, and the colour is the message.
        [image setTemplate:NO];
        m_item.button.image = image;
    }

    void setSpokenName(const QString &name) override
    {
        m_item.button.accessibilityLabel = name.toNSString();
        m_item.button.toolTip = name.toNSString();
    }

    void setMenu(QMenu *menu) override { m_item.menu = menu ? menu->toNSMenu() : nil; }

private:
    NSStatusItem *m_item;
};

} // namespace

std::unique_ptr<StatusItem> systemStatusItem() { return std::make_unique<MacStatusItem>(); }

} // namespace corvane
