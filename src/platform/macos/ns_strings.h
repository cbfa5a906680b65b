// Strings of Foundation and of the program. For Objective-C++ only.
#pragma once

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

namespace tilora::macos {

/// Nil when `utf8` is not valid UTF-8.
NSString* nsString(std::string_view utf8);

/// Valid UTF-8, whatever characters the string has; nothing for nil.
std::optional<std::string> utf8Text(NSString* string);

}  // namespace tilora::macos
