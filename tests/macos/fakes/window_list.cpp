// The window server's list over the world of the fake system.
#include <CoreGraphics/CoreGraphics.h>

#include "fakes/fake_system.h"

namespace tilora::macos::fake {
namespace {

using Entries = std::vector<std::pair<CFTypeRef, CFTypeRef>>;

CFTypeRef dictionaryOf(const Rect& rect) {
  Entries entries;
  const auto put = [&](const char* key, double value) { entries.emplace_back(constantStringForTests(key), make<CfNumber>(value)); };
  put("X", rect.x);
  put("Y", rect.y);
  put("Width", rect.width);
  put("Height", rect.height);
  return make<CfDictionary>(std::move(entries));
}

CFTypeRef dictionaryOf(const WindowServerEntry& entry) {
  Entries entries;
  if (entry.ownerPid) entries.emplace_back(kCGWindowOwnerPID, make<CfNumber>(std::int64_t{*entry.ownerPid}));
  if (entry.bounds) entries.emplace_back(kCGWindowBounds, dictionaryOf(*entry.bounds));
  return make<CfDictionary>(std::move(entries));
}

bool readNumber(CFDictionaryRef dictionary, const char* key, CGFloat& number) {
  const auto value = CFDictionaryGetValue(dictionary, constantStringForTests(key));
  return value && CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberFloat64Type, &number);
}

}  // namespace
}  // namespace tilora::macos::fake

using namespace tilora::macos::fake;

extern "C" {

const CFStringRef kCGWindowOwnerPID = constantStringForTests("kCGWindowOwnerPID");
const CFStringRef kCGWindowBounds = constantStringForTests("kCGWindowBounds");

CFArrayRef CGWindowListCopyWindowInfo(CGWindowListOption option, CGWindowID window) {
  auto& system = FakeSystem::current();
  if (system.windowList) return system.windowList();
  if (option != kCGWindowListOptionIncludingWindow) crash("the window list was asked for more than one window");
  std::vector<CFTypeRef> list;
  for (const auto& entry : system.world().interfaces().windowServer.entries(window)) list.push_back(dictionaryOf(entry));
  return static_cast<CFArrayRef>(make<CfArray>(std::move(list)));
}

bool CGRectMakeWithDictionaryRepresentation(CFDictionaryRef dictionary, CGRect* rect) {
  return readNumber(dictionary, "X", rect->origin.x) && readNumber(dictionary, "Y", rect->origin.y) &&
         readNumber(dictionary, "Width", rect->size.width) && readNumber(dictionary, "Height", rect->size.height);
}

}  // extern "C"
