#include "platform/macos/login/main_app_login_item.h"

#include "platform/macos/foundation/strings.h"

#import <ServiceManagement/ServiceManagement.h>

namespace amperly {

LoginItemStatus MainAppLoginItem::status() const
{
    switch (SMAppService.mainAppService.status) {
    case SMAppServiceStatusNotRegistered:
        return LoginItemStatus::NotRegistered;
    case SMAppServiceStatusEnabled:
        return LoginItemStatus::Enabled;
    case SMAppServiceStatusRequiresApproval:
        return LoginItemStatus::RequiresApproval;
    case SMAppServiceStatusNotFound:
        return LoginItemStatus::NotFound;
    }
    return LoginItemStatus::NotFound; // what a later system may add
}

LoginItem::Failure MainAppLoginItem::registerItem()
{
    NSError* error = nil;
    if ([SMAppService.mainAppService registerAndReturnError:&error])
        return std::nullopt;
    return stdString(error.localizedDescription);
}

LoginItem::Failure MainAppLoginItem::unregisterItem()
{
    NSError* error = nil;
    if ([SMAppService.mainAppService unregisterAndReturnError:&error])
        return std::nullopt;
    return stdString(error.localizedDescription);
}

void MainAppLoginItem::openSystemSettings()
{
    [SMAppService openSystemSettingsLoginItems];
}

} // namespace amperly
