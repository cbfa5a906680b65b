// Comparing two traces by what they say, not by how it is written.
#pragma once

#include <istream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace tilora::replay {

/// The lines of a trace. Blank lines and lines that begin with `#` are passed over; a line that is not JSON throws. Data that is JSON is
/// read as JSON; neighbouring lines that hide or unhide applications are sorted by pid, since their order means nothing.
std::vector<nlohmann::json> readTrace(std::istream& in);

/// Where two traces first differ, in words; empty when they say the same.
std::string differenceOf(const std::vector<nlohmann::json>& expected, const std::vector<nlohmann::json>& actual);

}  // namespace tilora::replay
