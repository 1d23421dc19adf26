/* The declarations of AppKit that Corvane uses. Written by hand from Apple's documentation; the comment above a group
   names the header that has it on a Mac. */
#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

/* NSColorSpace.h */
@interface NSColorSpace : NSObject
@property(class, strong, readonly) NSColorSpace *sRGBColorSpace API_AVAILABLE(macos(10.5));
@end

/* NSAppearance.h */
@interface NSAppearance : NSObject
- (void)performAsCurrentDrawingAppearance:(void(NS_NOESCAPE ^)(void))block API_AVAILABLE(macos(11.0));
@end

/* NSColor.h */
@interface NSColor : NSObject
@property(class, strong, readonly) NSColor *systemRedColor API_AVAILABLE(macos(10.10));
@property(class, strong, readonly) NSColor *systemGreenColor API_AVAILABLE(macos(10.10));
@property(class, strong, readonly) NSColor *systemOrangeColor API_AVAILABLE(macos(10.10));
@property(class, strong, readonly) NSColor *systemGrayColor API_AVAILABLE(macos(10.10));
@property(class, strong, readonly) NSColor *controlAccentColor API_AVAILABLE(macos(10.14));
@property(readonly) CGFloat redComponent;
@property(readonly) CGFloat greenComponent;
@property(readonly) CGFloat blueComponent;
@property(readonly) CGFloat alphaComponent;
- (nullable NSColor *)colorUsingColorSpace:(NSColorSpace *)space;
@end

/* NSGraphicsContext.h */
@interface NSGraphicsContext : NSObject
@property(class, nullable, strong) NSGraphicsContext *currentContext;
@property(readonly) CGContextRef CGContext API_AVAILABLE(macos(10.10));
@end

/* NSImage.h. The property named "template" cannot be declared in Objective-C++; its setter can. */
@interface NSImage : NSObject
+ (NSImage *)imageWithSize:(NSSize)size
                   flipped:(BOOL)flipped
            drawingHandler:(BOOL (^)(NSRect area))handler API_AVAILABLE(macos(10.8));
- (void)setTemplate:(BOOL)isTemplate;
@end

/* NSResponder.h, NSView.h */
@interface NSResponder : NSObject
@end
@interface NSView : NSResponder
@property(nullable, copy) NSString *toolTip;
@end

/* NSAccessibilityProtocols.h */
@interface NSView (NSAccessibility)
@property(nullable, copy) NSString *accessibilityLabel API_AVAILABLE(macos(10.10));
@end

/* NSAccessibility.h, NSAccessibilityConstants.h */
typedef NSString *NSAccessibilityNotificationName;
typedef NSString *NSAccessibilityNotificationUserInfoKey;
typedef NS_ENUM(NSInteger, NSAccessibilityPriorityLevel) {
    NSAccessibilityPriorityLow = 10,
    NSAccessibilityPriorityMedium = 50,
    NSAccessibilityPriorityHigh = 90
} API_AVAILABLE(macos(10.9));
#ifdef __cplusplus
extern "C" {
#endif
extern const NSAccessibilityNotificationName
    NSAccessibilityAnnouncementRequestedNotification API_AVAILABLE(macos(10.7));
extern const NSAccessibilityNotificationUserInfoKey NSAccessibilityAnnouncementKey API_AVAILABLE(macos(10.7));
extern const NSAccessibilityNotificationUserInfoKey NSAccessibilityPriorityKey API_AVAILABLE(macos(10.9));
void NSAccessibilityPostNotificationWithUserInfo(
    id element, NSAccessibilityNotificationName notification,
    NSDictionary<NSAccessibilityNotificationUserInfoKey, id> *_Nullable userInfo) API_AVAILABLE(macos(10.7));
#ifdef __cplusplus
}
#endif

/* NSButton.h, NSStatusBarButton.h */
@interface NSControl : NSView
@end
@interface NSButton : NSControl
@property(nullable, strong) NSImage *image;
@end
API_AVAILABLE(macos(10.10))
@interface NSStatusBarButton : NSButton
@end

/* NSMenu.h */
@interface NSMenu : NSObject
@end

/* NSStatusItem.h */
typedef NSString *NSStatusItemAutosaveName;
@interface NSStatusItem : NSObject
@property(nullable, readonly, strong) NSStatusBarButton *button API_AVAILABLE(macos(10.10));
@property(nullable, strong) NSMenu *menu;
@property(null_resettable, copy) NSStatusItemAutosaveName autosaveName API_AVAILABLE(macos(10.12));
@end

/* NSStatusBar.h */
static const CGFloat NSSquareStatusItemLength = -2.0;
@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar *systemStatusBar;
- (NSStatusItem *)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem *)item;
@end

/* NSPasteboard.h */
typedef NSString *NSPasteboardType;
#ifdef __cplusplus
extern "C" {
#endif
extern const NSPasteboardType NSPasteboardTypeString API_AVAILABLE(macos(10.6));
#ifdef __cplusplus
}
#endif
@interface NSPasteboard : NSObject
@property(class, readonly, strong) NSPasteboard *generalPasteboard;
- (NSInteger)clearContents;
- (BOOL)setString:(NSString *)string forType:(NSPasteboardType)dataType;
@end

/* NSWindow.h */
@interface NSWindow : NSResponder
@property(getter=isVisible, readonly) BOOL visible;
@property(readonly) BOOL canBecomeMainWindow;
- (void)orderFrontRegardless;
@end

/* NSApplication.h */
@interface NSApplication : NSResponder
@property(getter=isHidden, readonly) BOOL hidden;
@property(readonly, copy) NSArray<NSWindow *> *windows;
@property(nullable, readonly, weak) NSWindow *mainWindow;
@property(readonly, strong) NSAppearance *effectiveAppearance API_AVAILABLE(macos(10.14));
- (void)unhide:(nullable id)sender;
- (void)orderFrontStandardAboutPanel:(nullable id)sender;
- (void)activateIgnoringOtherApps:(BOOL)flag API_DEPRECATED_WITH_REPLACEMENT("activate", macos(10.0, 14.0));
- (void)activate API_AVAILABLE(macos(14.0));
@end
#ifdef __cplusplus
extern "C" {
#endif
extern __kindof NSApplication *_Null_unspecified NSApp;

/* NSColor.h */
extern NSNotificationName NSSystemColorsDidChangeNotification;

/* NSWorkspace.h, NSAccessibility.h */
extern NSNotificationName NSWorkspaceDidWakeNotification;
extern NSNotificationName NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification API_AVAILABLE(macos(10.10));
#ifdef __cplusplus
}
#endif
@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace *sharedWorkspace;
@property(readonly, strong) NSNotificationCenter *notificationCenter;
@property(readonly) BOOL accessibilityDisplayShouldIncreaseContrast API_AVAILABLE(macos(10.10));
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion API_AVAILABLE(macos(10.12));
- (BOOL)openURL:(NSURL *)url;
- (nullable NSURL *)URLForApplicationWithBundleIdentifier:(NSString *)bundleIdentifier API_AVAILABLE(macos(10.6));
@end

NS_ASSUME_NONNULL_END
