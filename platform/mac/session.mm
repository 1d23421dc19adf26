#include "platform/session.h"

#import <Foundation/Foundation.h>
#include <unistd.h>

namespace corvane::platform {

// The system's log-out sends every application the same event as the Dock's Quit, and says only in an attribute why.
bool sessionIsEnding()
{
    NSAppleEventDescriptor *event = [NSAppleEventManager sharedAppleEventManager].currentAppleEvent;
    if (event.eventClass != kCoreEventClass || event.eventID != kAEQuitApplication) return false;
    const OSType reason = [event attributeDescriptorForKeyword:kAEQuitReason].typeCodeValue;
    return reason == kAEReallyLogOut || reason == kAERestart || reason == kAEShutDown;
}

void leaveAtOnce() { _exit(0); }

} // namespace corvane::platform
