/* The declarations of Service Management that Corvane uses. Written by hand from Apple's documentation; the comment
   above a group names the header that has it on a Mac. */
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

/* SMAppService.h */
typedef NS_ENUM(NSInteger, SMAppServiceStatus) {
    SMAppServiceStatusNotRegistered,
    SMAppServiceStatusEnabled,
    SMAppServiceStatusRequiresApproval,
    SMAppServiceStatusNotFound
} API_AVAILABLE(macos(13.0));
API_AVAILABLE(macos(13.0))
@interface SMAppService : NSObject
@property(class, readonly, strong) SMAppService *mainAppService;
@property(readonly) SMAppServiceStatus status;
- (BOOL)registerAndReturnError:(NSError *_Nullable *_Nullable)error;
- (BOOL)unregisterAndReturnError:(NSError *_Nullable *_Nullable)error;
@end

NS_ASSUME_NONNULL_END
