#include "tests/mac/played/diary.h"
#import "tests/mac/played/foundation.h"
#include "tests/mac/played/mac.h"

#import <AppKit/AppKit.h>

using namespace corvane::played;

bool Mac::hidden = false;
QList<Mac::Window> Mac::windows;

@interface PlayedWindow : NSWindow {
@public
    const Mac::Window *window;
}
@end
@implementation NSWindow
- (BOOL)isVisible
{
    return static_cast<PlayedWindow *>(self)->window->visible;
}
- (BOOL)canBecomeMainWindow
{
    return static_cast<PlayedWindow *>(self)->window->canBeMain;
}
- (void)orderFrontRegardless
{
    Diary::note(QStringLiteral("in front: ") + static_cast<PlayedWindow *>(self)->window->name);
}
@end
@implementation PlayedWindow
@end

extern "C" {
__kindof NSApplication *NSApp = nil;
}

@implementation NSApplication
+ (void)load
{
    NSApp = [NSApplication alloc];
}
- (BOOL)isHidden
{
    return Mac::hidden;
}
- (void)unhide:(id)sender
{
    Diary::note(QStringLiteral("unhide"));
    Mac::hidden = false;
}
- (void)activate
{
    Diary::note(QStringLiteral("activate"));
}
- (void)activateIgnoringOtherApps:(BOOL)flag
{
    Diary::note(flag ? QStringLiteral("activate") : QStringLiteral("ask to be active"));
}
- (NSArray *)windows
{
    QList<id> windows;
    for (const Mac::Window &window : Mac::windows) {
        PlayedWindow *played = [PlayedWindow alloc];
        played->window = &window;
        windows << played;
    }
    return [NSArray arrayWithObjects:windows.data() count:static_cast<NSUInteger>(windows.size())];
}
@end
