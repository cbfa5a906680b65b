// Service management: what the macOS desktop uses of its public interface, declared from its documentation.
#pragma once

#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

typedef enum SMAppServiceStatus : NSInteger {
  SMAppServiceStatusNotRegistered = 0,
  SMAppServiceStatusEnabled = 1,
  SMAppServiceStatusRequiresApproval = 2,
  SMAppServiceStatusNotFound = 3,
} SMAppServiceStatus;

API_AVAILABLE(macos(13.0))
@interface SMAppService : NSObject
@property(class, readonly) SMAppService* mainAppService;
@property(readonly) SMAppServiceStatus status;
- (BOOL)registerAndReturnError:(NSError* _Nullable* _Nullable)error;
- (BOOL)unregisterAndReturnError:(NSError* _Nullable* _Nullable)error;
@end

#pragma clang assume_nonnull end
