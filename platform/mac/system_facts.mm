#include "platform/system_facts.h"

#import <Foundation/Foundation.h>
#include <sys/sysctl.h>

namespace corvane::platform {

OsVersion osVersion()
{
    const NSOperatingSystemVersion version = NSProcessInfo.processInfo.operatingSystemVersion;
    return {static_cast<int>(version.majorVersion), static_cast<int>(version.minorVersion)};
}

std::optional<int> hasArm64()
{
    int value = 0;
    std::size_t size = sizeof value;
    if (sysctlbyname("hw.optional.arm64", &value, &size, nullptr, 0) != 0) return std::nullopt;
    return value;
}

std::optional<QString> applicationSupportDir()
{
    NSArray<NSURL *> *folders = [NSFileManager.defaultManager URLsForDirectory:NSApplicationSupportDirectory
                                                                     inDomains:NSUserDomainMask];
    NSString *path = folders.firstObject.path;
    return path ? std::optional(QString::fromNSString(path)) : std::nullopt;
}

} // namespace corvane::platform
