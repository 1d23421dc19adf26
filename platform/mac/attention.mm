#include "platform/attention.h"

#import <Foundation/Foundation.h>

namespace corvane::platform {

namespace {

/// An activity that the system knows of; while it lasts, timers keep their time.
class Activity {
public:
    Activity()
        : m_token([NSProcessInfo.processInfo beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                                                               reason:@"Watches whether Pi-hole answers"])
    {}
    ~Activity() { [NSProcessInfo.processInfo endActivity:m_token]; }
    Activity(const Activity &) = delete;
    Activity &operator=(const Activity &) = delete;

private:
    id<NSObject> m_token;
};

} // namespace

std::shared_ptr<void> keepWatching() { return std::make_shared<Activity>(); }

} // namespace corvane::platform
