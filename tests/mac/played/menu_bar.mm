#include "tests/mac/played/diary.h"
#import "tests/mac/played/foundation.h"
#include "tests/mac/played/mac.h"

#include <QPainter>

#import <AppKit/AppKit.h>

using namespace corvane::played;

/// A picture that is being drawn to, on a screen of some scale.
struct CGContext {
    double scale;
    QImage pixels;
};
struct CGImage {
    QImage pixels;
};

namespace {

CGContext *current = nullptr;
NSStatusItem *item = nil;

} // namespace

@interface PlayedImage : NSImage {
@public
    BOOL (^handler)(NSRect);
    NSSize size;
}
@end
@implementation PlayedImage
@end
@implementation NSImage
+ (NSImage *)imageWithSize:(NSSize)size flipped:(BOOL)flipped drawingHandler:(BOOL (^)(NSRect))handler
{
    Diary::note(QStringLiteral("image %1x%2 flipped=%3").arg(size.width).arg(size.height).arg(flipped));
    PlayedImage *image = [PlayedImage alloc];
    image->handler = (BOOL(^)(NSRect))kept((__bridge void *)handler);
    image->size = size;
    return image;
}
- (void)setTemplate:(BOOL)isTemplate
{
    Diary::note(QStringLiteral("template=%1").arg(isTemplate));
}
@end

@implementation NSGraphicsContext
+ (NSGraphicsContext *)currentContext
{
    return current ? [NSGraphicsContext alloc] : nil;
}
- (CGContextRef)CGContext
{
    return current;
}
@end

@implementation NSResponder
@end
@implementation NSView
- (void)setToolTip:(NSString *)tip
{
    Diary::note(QStringLiteral("tool tip ") + text(tip));
}
- (void)setAccessibilityLabel:(NSString *)label
{
    Diary::note(QStringLiteral("spoken ") + text(label));
}
@end
@implementation NSControl
@end
@interface PlayedButton : NSStatusBarButton {
@public
    NSImage *shown;
}
@end
@implementation NSButton
- (void)setImage:(NSImage *)image
{
    Diary::note(QStringLiteral("shown"));
    static_cast<PlayedButton *>(static_cast<id>(self))->shown = image;
}
- (NSImage *)image
{
    return static_cast<PlayedButton *>(static_cast<id>(self))->shown;
}
@end
@implementation NSStatusBarButton
@end
@implementation PlayedButton
@end

@implementation NSMenu
@end
@implementation NSStatusItem
- (NSStatusBarButton *)button
{
    static PlayedButton *button = [PlayedButton alloc];
    return button;
}
- (void)setAutosaveName:(NSString *)name
{
    Diary::note(QStringLiteral("place remembered as ") + text(name));
}
- (void)setMenu:(NSMenu *)menu
{
    Diary::note(menu ? QStringLiteral("menu") : QStringLiteral("no menu"));
}
@end
@implementation NSStatusBar
+ (NSStatusBar *)systemStatusBar
{
    static NSStatusBar *bar = [NSStatusBar alloc];
    return bar;
}
- (NSStatusItem *)statusItemWithLength:(CGFloat)length
{
    Diary::note(QStringLiteral("item of length %1").arg(length));
    return item = [NSStatusItem alloc];
}
- (void)removeStatusItem:(NSStatusItem *)removed
{
    Diary::note(removed == item ? QStringLiteral("removed") : QStringLiteral("removed another"));
}
@end

extern "C" {

CGSize CGContextConvertSizeToDeviceSpace(CGContextRef context, CGSize size)
{
    return {size.width * context->scale, size.height * context->scale};
}

void CGContextDrawImage(CGContextRef context, CGRect area, CGImageRef image)
{
    QPainter painter(&context->pixels);
    const double scale = context->scale;
    painter.drawImage(
        QRectF(area.origin.x * scale, area.origin.y * scale, area.size.width * scale, area.size.height * scale),
        image->pixels);
}

void CGImageRelease(CGImageRef image) { delete image; }

} // extern "C"

CGImageRef corvane_played_image(const QImage &image) { return new CGImage{image}; }

QImage Mac::drawn(double scale)
{
    auto *image = static_cast<PlayedImage *>(item.button.image);
    CGContext context{
        scale, QImage(qRound(image->size.width * scale), qRound(image->size.height * scale), QImage::Format_ARGB32)};
    context.pixels.fill(Qt::transparent);
    current = &context;
    NSRect area = {{0, 0}, image->size};
    const bool drew = image->handler(area);
    current = nullptr;
    return drew ? context.pixels : QImage();
}
