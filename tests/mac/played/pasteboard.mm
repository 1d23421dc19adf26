#include "tests/mac/played/diary.h"
#import "tests/mac/played/foundation.h"

#import <AppKit/AppKit.h>

using namespace corvane::played;

@implementation NSPasteboard
+ (NSPasteboard *)generalPasteboard
{
    static NSPasteboard *board = [NSPasteboard alloc];
    return board;
}
- (NSInteger)clearContents
{
    Diary::note(QStringLiteral("clear"));
    return 1;
}
- (BOOL)setString:(NSString *)string forType:(NSPasteboardType)dataType
{
    Diary::note(QStringLiteral("%1: %2").arg(text(dataType), text(string)));
    return YES;
}
@end

extern "C" {
const NSPasteboardType NSPasteboardTypeString = @"text";
}
