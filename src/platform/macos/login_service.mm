// The program's own login item, through SMAppService.
#include "platform/macos/login_service.h"

#import <ServiceManagement/ServiceManagement.h>

#include "platform/macos/ns_strings.h"

namespace tilora::macos {
namespace {

std::string wordsOf(NSError* error) { return utf8Text(error.localizedDescription).value_or(""); }

}  // namespace

LoginItemStatus LoginService::status() {
  switch (SMAppService.mainAppService.status) {
    case SMAppServiceStatusNotRegistered:
      return LoginItemStatus::notRegistered;
    case SMAppServiceStatusEnabled:
      return LoginItemStatus::enabled;
    case SMAppServiceStatusRequiresApproval:
      return LoginItemStatus::requiresApproval;
    case SMAppServiceStatusNotFound:
      break;
  }
  return LoginItemStatus::notFound;
}

std::optional<std::string> LoginService::registerItem() {
  NSError* error = nil;
  if ([SMAppService.mainAppService registerAndReturnError:&error]) return std::nullopt;
  return wordsOf(error);
}

std::optional<std::string> LoginService::unregisterItem() {
  NSError* error = nil;
  if ([SMAppService.mainAppService unregisterAndReturnError:&error]) return std::nullopt;
  return wordsOf(error);
}

}  // namespace tilora::macos
