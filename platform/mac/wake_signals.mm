#include "platform/wake_signals.h"

#import <AppKit/AppKit.h>
#import <SystemConfiguration/SystemConfiguration.h>

namespace corvane {

namespace {

/// The system's notifications of waking and of changed addresses, routers and DNS servers.
class MacWakeSignals final : public WakeSignals {
public:
    MacWakeSignals()
    {
        watchSleep();
        watchNetwork();
    }

    ~MacWakeSignals() override
    {
        [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:m_wakeObserver];
        if (!m_store) return;
        SCDynamicStoreSetDispatchQueue(m_store, nullptr);
        CFRelease(m_store);
    }

private:
    void watchSleep()
    {
        m_wakeObserver =
            [NSWorkspace.sharedWorkspace.notificationCenter addObserverForName:NSWorkspaceDidWakeNotification
                                                                        object:nil
                                                                         queue:NSOperationQueue.mainQueue
                                                                    usingBlock:^(NSNotification *) {
                                                                      noticeChange();
                                                                    }];
    }

    void watchNetwork()
    {
        SCDynamicStoreContext context{};
        context.info = this;
        m_store =
            SCDynamicStoreCreate(kCFAllocatorDefault, CFSTR("Corvane"), &MacWakeSignals::onNetworkChange, &context);
        if (!m_store) return;
        NSArray<NSString *> *keys =
            @[ @"State:/Network/Global/IPv4", @"State:/Network/Global/IPv6", @"State:/Network/Global/DNS" ];
        SCDynamicStoreSetNotificationKeys(m_store, (__bridge CFArrayRef)keys, nullptr);
        SCDynamicStoreSetDispatchQueue(m_store, dispatch_get_main_queue());
    }

    static void onNetworkChange(SCDynamicStoreRef, CFArrayRef, void *self)
    {
        static_cast<MacWakeSignals *>(self)->noticeChange();
    }

    id<NSObject> m_wakeObserver = nil;
    SCDynamicStoreRef m_store = nullptr;
};

} // namespace

std::unique_ptr<WakeSignals> systemWakeSignals() { return std::make_unique<MacWakeSignals>(); }

} // namespace corvane
