// Asking the accessibility interface, and through it the user.
#include "platform/macos/trust.h"

#include <ApplicationServices/ApplicationServices.h>

#include "platform/macos/cf_ref.h"

namespace tilora::macos {

bool AxTrust::isProcessTrusted() { return AXIsProcessTrusted() != 0; }

bool AxTrust::isProcessTrusted(bool prompt) {
  const void* key = kAXTrustedCheckOptionPrompt;
  const void* value = prompt ? kCFBooleanTrue : kCFBooleanFalse;
  const auto options = CfRef<CFDictionaryRef>::adopt(
      CFDictionaryCreate(kCFAllocatorDefault, &key, &value, 1, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
  return AXIsProcessTrustedWithOptions(options.get()) != 0;
}

}  // namespace tilora::macos
