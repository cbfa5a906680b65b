// Reading the entries of the window server's list.
#include "platform/macos/window_list.h"

#include <CoreGraphics/CoreGraphics.h>

#include "platform/macos/cf_ref.h"
#include "platform/macos/cf_values.h"

namespace tilora::macos {
namespace {

std::optional<ProcessId> ownerPid(CFDictionaryRef entry) {
  const auto number = asNumber(CFDictionaryGetValue(entry, kCGWindowOwnerPID));
  if (!number) return std::nullopt;
  ProcessId pid = 0;
  CFNumberGetValue(number, kCFNumberSInt32Type, &pid);
  return pid;
}

std::optional<Rect> bounds(CFDictionaryRef entry) {
  const auto dictionary = asDictionary(CFDictionaryGetValue(entry, kCGWindowBounds));
  CGRect rect{};
  if (!dictionary || !CGRectMakeWithDictionaryRepresentation(dictionary, &rect)) return std::nullopt;
  return Rect{rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

}  // namespace

std::vector<WindowServerEntry> WindowList::entries(std::uint32_t windowNumber) {
  const auto list = CfRef<CFArrayRef>::adopt(CGWindowListCopyWindowInfo(kCGWindowListOptionIncludingWindow, windowNumber));
  if (!list) return {};
  std::vector<WindowServerEntry> entries;
  for (CFIndex index = 0, count = CFArrayGetCount(list.get()); index < count; ++index) {
    const auto entry = asDictionary(CFArrayGetValueAtIndex(list.get(), index));
    if (entry) entries.push_back({ownerPid(entry), bounds(entry)});
  }
  return entries;
}

}  // namespace tilora::macos
