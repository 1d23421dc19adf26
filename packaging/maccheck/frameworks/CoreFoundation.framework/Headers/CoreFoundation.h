/* The declarations of Core Foundation that Corvane and Qt's headers use. Written by hand from Apple's documentation;
   the comment above a group names the header that has it on a Mac. */
#pragma once

#include <MacTypes.h>
#include <os/availability.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __OBJC__
#define CORVANE_BRIDGED(type) __attribute__((objc_bridge(type)))
#define CORVANE_BRIDGED_MUTABLE(type) __attribute__((objc_bridge_mutable(type)))
#else
#define CORVANE_BRIDGED(type)
#define CORVANE_BRIDGED_MUTABLE(type)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* CFBase.h */
typedef const CORVANE_BRIDGED(id) void *CFTypeRef;
typedef signed long CFIndex;
typedef unsigned long CFTypeID;
typedef unsigned long CFHashCode;
typedef const struct __CFAllocator *CFAllocatorRef;
typedef const struct CORVANE_BRIDGED(NSString) __CFString *CFStringRef;
extern const CFAllocatorRef kCFAllocatorDefault;
CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);

/* CFNumber.h */
typedef const struct CORVANE_BRIDGED(NSNumber) __CFBoolean *CFBooleanRef;
extern const CFBooleanRef kCFBooleanTrue;
extern const CFBooleanRef kCFBooleanFalse;
CFTypeID CFBooleanGetTypeID(void);
Boolean CFBooleanGetValue(CFBooleanRef boolean);
enum CFNumberType : CFIndex { kCFNumberIntType = 9, kCFNumberLongLongType = 11 };
typedef enum CFNumberType CFNumberType;
typedef const struct CORVANE_BRIDGED(NSNumber) __CFNumber *CFNumberRef;
CFTypeID CFNumberGetTypeID(void);
CFNumberRef CFNumberCreate(CFAllocatorRef allocator, CFNumberType type, const void *value);
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void *value);

/* CFString.h */
CFTypeID CFStringGetTypeID(void);
#define CFSTR(text) ((CFStringRef)__builtin___CFStringMakeConstantString("" text ""))

/* CFArray.h */
typedef const struct CORVANE_BRIDGED(NSArray) __CFArray *CFArrayRef;

/* CFData.h */
typedef const struct CORVANE_BRIDGED(NSData) __CFData *CFDataRef;
CFTypeID CFDataGetTypeID(void);
CFIndex CFDataGetLength(CFDataRef data);
const UInt8 *CFDataGetBytePtr(CFDataRef data);

/* CFURL.h */
typedef const struct CORVANE_BRIDGED(NSURL) __CFURL *CFURLRef;

/* CFDictionary.h */
typedef const struct CORVANE_BRIDGED(NSDictionary) __CFDictionary *CFDictionaryRef;
typedef struct CORVANE_BRIDGED_MUTABLE(NSMutableDictionary) __CFDictionary *CFMutableDictionaryRef;
typedef const void *(*CFDictionaryRetainCallBack)(CFAllocatorRef allocator, const void *value);
typedef void (*CFDictionaryReleaseCallBack)(CFAllocatorRef allocator, const void *value);
typedef CFStringRef (*CFDictionaryCopyDescriptionCallBack)(const void *value);
typedef Boolean (*CFDictionaryEqualCallBack)(const void *one, const void *other);
typedef CFHashCode (*CFDictionaryHashCallBack)(const void *value);
typedef struct {
    CFIndex version;
    CFDictionaryRetainCallBack retain;
    CFDictionaryReleaseCallBack release;
    CFDictionaryCopyDescriptionCallBack copyDescription;
    CFDictionaryEqualCallBack equal;
    CFDictionaryHashCallBack hash;
} CFDictionaryKeyCallBacks;
typedef struct {
    CFIndex version;
    CFDictionaryRetainCallBack retain;
    CFDictionaryReleaseCallBack release;
    CFDictionaryCopyDescriptionCallBack copyDescription;
    CFDictionaryEqualCallBack equal;
} CFDictionaryValueCallBacks;
extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;
CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef allocator, CFIndex capacity,
                                                 const CFDictionaryKeyCallBacks *keys,
                                                 const CFDictionaryValueCallBacks *values);
void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void *key, const void *value);

/* CFPreferences.h */
typedef const void *CFPropertyListRef;
extern const CFStringRef kCFPreferencesCurrentApplication;
extern const CFStringRef kCFPreferencesCurrentUser;
extern const CFStringRef kCFPreferencesAnyHost;
CFPropertyListRef CFPreferencesCopyValue(CFStringRef key, CFStringRef application, CFStringRef user, CFStringRef host);
void CFPreferencesSetValue(CFStringRef key, CFPropertyListRef value, CFStringRef application, CFStringRef user,
                           CFStringRef host);
Boolean CFPreferencesSynchronize(CFStringRef application, CFStringRef user, CFStringRef host);

#ifdef __cplusplus
}
#endif
