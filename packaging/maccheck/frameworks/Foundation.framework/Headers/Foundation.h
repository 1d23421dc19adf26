/* The declarations of Foundation that Corvane uses. Written by hand from Apple's documentation; the comment above a
   group names the header that has it on a Mac. */
#pragma once

#import <CoreFoundation/CoreFoundation.h>
#import <CoreGraphics/CoreGraphics.h>
#import <dispatch/dispatch.h>
#import <objc/NSObject.h>
#import <os/availability.h>

/* NSObjCRuntime.h */
#ifndef NS_ENUM
#define NS_ENUM(type, name)                                                                                            \
    enum name : type name;                                                                                             \
    enum name : type
#define NS_OPTIONS(type, name)                                                                                         \
    enum name : type name;                                                                                             \
    enum __attribute__((flag_enum)) name : type
#endif
#define NS_NOESCAPE __attribute__((noescape))
#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")

NS_ASSUME_NONNULL_BEGIN

/* NSEnumerator.h */
typedef struct {
    unsigned long state;
    id __unsafe_unretained _Nullable *_Nullable itemsPtr;
    unsigned long *_Nullable mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;
@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)length;
@end

/* NSGeometry.h */
typedef CGRect NSRect;
typedef CGSize NSSize;

/* NSObject.h */
@protocol NSCopying
@end

/* NSString.h */
@interface NSString : NSObject <NSCopying>
@end

/* NSArray.h */
@interface NSArray<__covariant ObjectType> : NSObject <NSFastEnumeration>
@property(nullable, nonatomic, readonly) ObjectType firstObject;
+ (instancetype)arrayWithObjects:(const ObjectType _Nonnull[_Nullable])objects count:(NSUInteger)count;
@end

/* NSDictionary.h, NSValue.h */
@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject
+ (instancetype)dictionaryWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                              forKeys:(const KeyType<NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)count;
@end
@interface NSNumber : NSObject
+ (NSNumber *)numberWithInteger:(NSInteger)value;
@end

/* NSError.h */
@interface NSError : NSObject
@property(readonly, copy) NSString *localizedDescription;
@end

/* NSURL.h */
@interface NSURL : NSObject
@property(nullable, readonly, copy) NSString *path;
@end

/* NSPathUtilities.h */
typedef NS_ENUM(NSUInteger, NSSearchPathDirectory) { NSApplicationSupportDirectory = 14 };
typedef NS_OPTIONS(NSUInteger, NSSearchPathDomainMask) { NSUserDomainMask = 1 };

/* NSFileManager.h */
@interface NSFileManager : NSObject
@property(class, readonly, strong) NSFileManager *defaultManager;
- (NSArray<NSURL *> *)URLsForDirectory:(NSSearchPathDirectory)directory
                             inDomains:(NSSearchPathDomainMask)mask API_AVAILABLE(macos(10.6));
@end

/* NSProcessInfo.h */
typedef struct {
    NSInteger majorVersion;
    NSInteger minorVersion;
    NSInteger patchVersion;
} NSOperatingSystemVersion;
@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo *processInfo;
@property(readonly) NSOperatingSystemVersion operatingSystemVersion API_AVAILABLE(macos(10.10));
@end
typedef NS_OPTIONS(uint64_t, NSActivityOptions) {
    NSActivityIdleSystemSleepDisabled = (1ULL << 20),
    NSActivityUserInitiated = (0x00FFFFFFULL | NSActivityIdleSystemSleepDisabled),
    NSActivityUserInitiatedAllowingIdleSystemSleep = (NSActivityUserInitiated & ~NSActivityIdleSystemSleepDisabled),
} API_AVAILABLE(macos(10.9));
@interface NSProcessInfo (NSProcessInfoActivity)
- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options
                                  reason:(NSString *)reason API_AVAILABLE(macos(10.9));
- (void)endActivity:(id<NSObject>)activity API_AVAILABLE(macos(10.9));
@end

/* AppleEvents.h, AERegistry.h */
typedef FourCharCode AEKeyword;
typedef FourCharCode AEEventClass;
typedef FourCharCode AEEventID;
enum { kCoreEventClass = 'aevt' };
enum { kAEQuitApplication = 'quit' };
enum { kAEQuitReason = 'why?' };
enum { kAEReallyLogOut = 'rlgo', kAEShutDown = 'shut', kAERestart = 'rest' };

/* NSAppleEventDescriptor.h */
@interface NSAppleEventDescriptor : NSObject
@property(readonly) OSType typeCodeValue;
@property(readonly) AEEventClass eventClass;
@property(readonly) AEEventID eventID;
- (nullable NSAppleEventDescriptor *)attributeDescriptorForKeyword:(AEKeyword)keyword;
@end

/* NSAppleEventManager.h */
@interface NSAppleEventManager : NSObject
+ (NSAppleEventManager *)sharedAppleEventManager;
@property(nullable, readonly, retain) NSAppleEventDescriptor *currentAppleEvent;
@end

/* NSOperation.h */
@interface NSOperationQueue : NSObject
@property(class, readonly, strong) NSOperationQueue *mainQueue API_AVAILABLE(macos(10.6));
@end

/* NSNotification.h */
typedef NSString *NSNotificationName;
@interface NSNotification : NSObject
@end
@interface NSNotificationCenter : NSObject
@property(class, readonly, strong) NSNotificationCenter *defaultCenter;
- (void)removeObserver:(id)observer;
- (id<NSObject>)addObserverForName:(nullable NSNotificationName)name
                            object:(nullable id)object
                             queue:(nullable NSOperationQueue *)queue
                        usingBlock:(void (^)(NSNotification *notification))block API_AVAILABLE(macos(10.6));
@end

NS_ASSUME_NONNULL_END
