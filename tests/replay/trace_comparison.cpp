// Comparing two traces.
#include "trace_comparison.h"

#include <algorithm>

namespace tilora::replay {
namespace {

using Json = nlohmann::json;

void readStoredData(Json& line) {
  if (!line.is_object() || !line.contains("value")) return;
  auto& value = line["value"];
  if (!value.is_object() || !value.contains("data")) return;
  auto content = Json::parse(value["data"].get<std::string>(), nullptr, false);
  if (!content.is_discarded()) value["data"] = std::move(content);
}

bool showsOrHidesAnApplication(const Json& line) {
  const auto call = line.value("call", "");
  return call == "hide" || call == "unhide";
}

void sortRunsByPid(std::vector<Json>& lines) {
  for (auto begin = lines.begin(); begin != lines.end();) {
    const auto end = std::find_if_not(begin, lines.end(), showsOrHidesAnApplication);
    std::stable_sort(begin, end, [](const Json& a, const Json& b) { return a["pid"] < b["pid"]; });
    begin = std::find_if(end, lines.end(), showsOrHidesAnApplication);
  }
}

std::string lineAt(const std::vector<Json>& lines, std::size_t index) {
  return index < lines.size() ? lines[index].dump() : "the end of the trace";
}

}  // namespace

std::vector<Json> readTrace(std::istream& in) {
  std::vector<Json> lines;
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line.starts_with('#')) continue;
    lines.push_back(Json::parse(line));
    readStoredData(lines.back());
  }
  sortRunsByPid(lines);
  return lines;
}

std::string differenceOf(const std::vector<Json>& expected, const std::vector<Json>& actual) {
  if (expected == actual) return {};
  const auto [first, second] = std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
  const auto index = static_cast<std::size_t>(first - expected.begin());
  return "line " + std::to_string(index + 1) + " of the trace\n  should be " + lineAt(expected, index) + "\n  but is    " +
         lineAt(actual, index);
}

}  // namespace tilora::replay
