#include "tests/mac/played/diary.h"
#import "tests/mac/played/foundation.h"
#include "tests/mac/played/mac.h"
#include "tests/mac/played/objects.h"

#import <AppKit/AppKit.h>
#import <SystemConfiguration/SystemConfiguration.h>

#include <map>

using namespace corvane::played;

QByteArray Mac::eventId;
QByteArray Mac::quitReason;
int Mac::activities = 0;
bool Mac::storeOpens = true;

namespace {

OSType code(const QByteArray &letters)
{
    OSType code = 0;
    for (const char letter : letters)
        code = code << 8 | static_cast<unsigned char>(letter);
    return code;
}

/// A token and what is to be called for it.
struct Observer {
    QString name;
    void (^block)(NSNotification *);
};
std::map<id, Observer> observed;

SCDynamicStoreCallBack networkCallback = nullptr;
void *networkInfo = nullptr;
bool networkQueued = false;

} // namespace

@implementation NSProcessInfo
+ (NSProcessInfo *)processInfo
{
    static NSProcessInfo *info = [NSProcessInfo alloc];
    return info;
}
- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString *)reason
{
    ++Mac::activities;
    Diary::note(QStringLiteral("beginActivity %1").arg(options, 0, 16));
    Diary::note(text(reason));
    return [NSObject alloc];
}
- (void)endActivity:(id<NSObject>)activity
{
    --Mac::activities;
}
@end

@interface PlayedValue : NSAppleEventDescriptor {
@public
    OSType value;
}
@end
@implementation PlayedValue
- (OSType)typeCodeValue
{
    return value;
}
@end
@implementation NSAppleEventDescriptor
- (OSType)typeCodeValue
{
    return 0;
}
- (AEEventClass)eventClass
{
    return kCoreEventClass;
}
- (AEEventID)eventID
{
    return code(Mac::eventId);
}
- (NSAppleEventDescriptor *)attributeDescriptorForKeyword:(AEKeyword)keyword
{
    if (keyword != kAEQuitReason || Mac::quitReason.isEmpty()) return nil;
    PlayedValue *reason = [PlayedValue alloc];
    reason->value = code(Mac::quitReason);
    return reason;
}
@end
@implementation NSAppleEventManager
+ (NSAppleEventManager *)sharedAppleEventManager
{
    static NSAppleEventManager *manager = [NSAppleEventManager alloc];
    return manager;
}
- (NSAppleEventDescriptor *)currentAppleEvent
{
    return Mac::eventId.isEmpty() ? nil : [NSAppleEventDescriptor alloc];
}
@end

@implementation NSOperationQueue
+ (NSOperationQueue *)mainQueue
{
    static NSOperationQueue *queue = [NSOperationQueue alloc];
    return queue;
}
@end
@implementation NSNotification
@end
@implementation NSNotificationCenter
- (id<NSObject>)addObserverForName:(NSNotificationName)name
                            object:(id)object
                             queue:(NSOperationQueue *)queue
                        usingBlock:(void (^)(NSNotification *))block
{
    const bool onMain = queue == [NSOperationQueue mainQueue];
    Diary::note(
        QStringLiteral("observe %1%2").arg(text(name), onMain ? QStringLiteral(" on the main queue") : QString()));
    id token = [NSObject alloc];
    observed[token] = {text(name), (__bridge void (^)(NSNotification *))kept((__bridge void *)block)};
    return token;
}
- (void)removeObserver:(id)observer
{
    observed.erase(observer);
}
@end

extern "C" {

NSNotificationName NSWorkspaceDidWakeNotification = @"did wake";

dispatch_queue_t dispatch_get_main_queue() { return reinterpret_cast<dispatch_queue_t>(&networkQueued); }

SCDynamicStoreRef SCDynamicStoreCreate(CFAllocatorRef, CFStringRef name, SCDynamicStoreCallBack callout,
                                       SCDynamicStoreContext *context)
{
    if (!Mac::storeOpens) return nullptr;
    Diary::note(QStringLiteral("store ") + described(name));
    networkCallback = callout;
    networkInfo = context->info;
    return reinterpret_cast<SCDynamicStoreRef>(made(PlayedObject::Dictionary));
}

Boolean SCDynamicStoreSetNotificationKeys(SCDynamicStoreRef, CFArrayRef keys, CFArrayRef patterns)
{
    NSArray *names = (__bridge NSArray *)keys;
    for (int index = 0; index < count(names); ++index)
        Diary::note(QStringLiteral("key ") + text(static_cast<NSString *>(at(names, index))));
    return patterns == nullptr;
}

Boolean SCDynamicStoreSetDispatchQueue(SCDynamicStoreRef, dispatch_queue_t queue)
{
    networkQueued = queue == dispatch_get_main_queue();
    return 1;
}

} // extern "C"

namespace corvane::played {

void Mac::wakeUp()
{
    for (const auto &[token, observer] : observed) {
        if (observer.name == QLatin1String("did wake")) observer.block([NSNotification alloc]);
    }
}

void Mac::changeNetwork()
{
    if (networkQueued) networkCallback(nullptr, nullptr, networkInfo);
}

int Mac::observers() { return static_cast<int>(observed.size()) + (networkQueued ? 1 : 0); }

} // namespace corvane::played
