// Strings of Foundation and of the program.
#include "platform/macos/ns_strings.h"

#include <vector>

#include "platform/macos/utf16.h"

namespace tilora::macos {

NSString* nsString(std::string_view utf8) {
  return [[NSString alloc] initWithBytes:utf8.data() length:utf8.size() encoding:NSUTF8StringEncoding];
}

std::optional<std::string> utf8Text(NSString* string) {
  if (!string) return std::nullopt;
  // The system's own conversion answers null for half a surrogate pair, which titles cut short can end with.
  std::vector<unichar> units(string.length);
  [string getCharacters:units.data() range:NSMakeRange(0, units.size())];
  return utf8FromUtf16(units);
}

}  // namespace tilora::macos
