// Text as people write it: white space, lower case and containment after the rules of Unicode. Text is UTF-8; what is not is repaired.
#pragma once

#include <string>
#include <string_view>

namespace tilora {

/// `text` without the Unicode white space and newlines at both ends.
std::string_view trimmed(std::string_view text);

/// `text` in lower case, by the rules that hold for no language in particular.
std::string lowerCased(std::string_view text);
/// Appends that to `result`.
void appendLowerCased(std::string& result, std::string_view text);

/// Whether `part` occurs in `text`, without regard to case.
bool containsIgnoringCase(std::string_view text, std::string_view part);

}  // namespace tilora
