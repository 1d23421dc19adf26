#include "platform/login_item.h"

#import <Foundation/Foundation.h>
#import <ServiceManagement/ServiceManagement.h>

namespace corvane {

namespace {

/// The login item that the system keeps for the main application itself.
class MainApplicationItem final : public LoginItem {
public:
    [[nodiscard]] Status status() const override
    {
        switch (SMAppService.mainAppService.status) {
        case SMAppServiceStatusNotRegistered:
            return Status::NotRegistered;
        case SMAppServiceStatusEnabled:
            return Status::Enabled;
        case SMAppServiceStatusRequiresApproval:
            return Status::RequiresApproval;
        case SMAppServiceStatusNotFound:
            return Status::NotFound;
        }
        return Status::NotFound;
    }

    std::expected<void, QString> setEnabled(bool enabled) override
    {
        NSError *error = nil;
        SMAppService *service = SMAppService.mainAppService;
        const BOOL accepted =
            enabled ? [service registerAndReturnError:&error] : [service unregisterAndReturnError:&error];
        const QString reason = accepted ? QString() : QString::fromNSString(error.localizedDescription);
        return outcome(enabled, accepted ? std::nullopt : std::optional(reason), status());
    }
};

} // namespace

std::unique_ptr<LoginItem> systemLoginItem() { return std::make_unique<MainApplicationItem>(); }

} // namespace corvane
