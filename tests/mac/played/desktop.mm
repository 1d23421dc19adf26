#include "tests/mac/played/diary.h"
#import "tests/mac/played/foundation.h"
#include "tests/mac/played/mac.h"

#import <AppKit/AppKit.h>
#import <ServiceManagement/ServiceManagement.h>

using namespace corvane::played;

long Mac::loginItemStatus = SMAppServiceStatusNotRegistered;
long Mac::statusAfter = SMAppServiceStatusNotRegistered;
QString Mac::loginItemRefusal;
bool Mac::opens = true;
QString Mac::installed;

@implementation SMAppService
+ (SMAppService *)mainAppService
{
    static SMAppService *service = [SMAppService alloc];
    return service;
}
- (SMAppServiceStatus)status
{
    return static_cast<SMAppServiceStatus>(Mac::loginItemStatus);
}
- (BOOL)change:(const char *)verb error:(NSError **)failure
{
    Diary::note(QString::fromLatin1(verb));
    Mac::loginItemStatus = Mac::statusAfter;
    if (Mac::loginItemRefusal.isEmpty()) return YES;
    *failure = error(Mac::loginItemRefusal);
    return NO;
}
- (BOOL)registerAndReturnError:(NSError **)failure
{
    return [self change:"register" error:failure];
}
- (BOOL)unregisterAndReturnError:(NSError **)failure
{
    return [self change:"unregister" error:failure];
}
@end

@implementation NSWorkspace
+ (NSWorkspace *)sharedWorkspace
{
    static NSWorkspace *workspace = [NSWorkspace alloc];
    return workspace;
}
- (NSNotificationCenter *)notificationCenter
{
    static NSNotificationCenter *center = [NSNotificationCenter alloc];
    return center;
}
- (BOOL)openURL:(NSURL *)address
{
    Diary::note(QStringLiteral("open ") + text(address));
    return Mac::opens;
}
- (NSURL *)URLForApplicationWithBundleIdentifier:(NSString *)bundleIdentifier
{
    return text(bundleIdentifier) == Mac::installed ? url(QStringLiteral("file:///Applications/It.app")) : nil;
}
@end
