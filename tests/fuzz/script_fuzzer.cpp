// What holds of any text that tilora-replay may be given, in the form that libFuzzer calls.
#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "checks.h"
#include "replay/replay.h"
#include "replay/script_line.h"

namespace {

using Json = nlohmann::json;
using namespace tilora;
using fuzz::isUtf8;
using fuzz::require;
using replay::ScriptError;
using replay::ScriptLine;

constexpr double farAway = 1e9;
constexpr double longestRun = 2000;

using Reader = void (*)(const ScriptLine& line, const char* name);

template <class Value>
void readAs(const ScriptLine& line, const char* name) {
  line.get<Value>(name);
}

constexpr std::array<Reader, 19> readers = {
    readAs<bool>,
    readAs<std::int32_t>,
    readAs<std::uint32_t>,
    readAs<std::int64_t>,
    readAs<std::uint64_t>,
    readAs<replay::Bits64>,
    readAs<double>,
    readAs<std::string>,
    readAs<Rect>,
    readAs<AttributeValue>,
    readAs<SettingValue>,
    readAs<simulated::Settability>,
    readAs<simulated::ByAttribute<simulated::Settability>>,
    readAs<simulated::ByAttribute<std::optional<AttributeValue>>>,
    readAs<WindowServerEntry>,
    readAs<ActivationPolicy>,
    readAs<WorkspaceEvent>,
    readAs<ShortcutAction>,
    readAs<LoginItemStatus>,
};

/// Whatever a line is, reading it ends with a value or with a sentence, also when a member has a type that nobody expects there. Which type
/// that is depends on the line.
void checkReading(const std::string& text) {
  try {
    const ScriptLine line(text);
    std::size_t reader = text.size();
    const auto members = Json::parse(text);
    for (const auto& [name, value] : members.items()) readers.at(reader++ % readers.size())(line, name.c_str());
  } catch (const ScriptError& error) {
    require(std::string_view(error.what()).find('\n') == std::string_view::npos);
  }
}

bool isNegativeNumber(const Json& value) { return value.is_number() && value.get<double>() < 0; }

/// Whether nothing in there makes the engine end the process, as numbers do that the desktop cannot have.
bool isHarmless(const Json& value) {
  if (value.is_number()) return std::abs(value.get<double>()) <= farAway;
  if (!value.is_structured()) return true;
  if (value.is_object()) {
    if (value.contains("AXWindowNumber") && isNegativeNumber(value["AXWindowNumber"])) return false;
    if (value.contains("name") && value["name"] == "AXWindowNumber" && value.contains("value") && isNegativeNumber(value["value"]))
      return false;
  }
  return std::all_of(value.begin(), value.end(), isHarmless);
}

/// Whether a replay comes to its end in good time.
bool isRunnable(const std::vector<std::string>& lines) {
  double duration = 0;
  for (const auto& line : lines) {
    const auto object = Json::parse(line, nullptr, false);
    if (object.is_discarded()) continue;
    if (!isHarmless(object)) return false;
    if (object.is_object() && object.contains("ms") && object["ms"].is_number()) duration += std::max(object["ms"].get<double>(), 0.0);
  }
  return duration <= longestRun;
}

std::vector<std::string> linesOf(const std::string& script) {
  std::vector<std::string> lines;
  std::istringstream in(script);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

struct Outcome {
  bool ran = false;
  std::string trace;
  std::string errors;

  bool operator==(const Outcome&) const = default;
};

Outcome replayed(const std::string& script) {
  std::istringstream in(script);
  std::ostringstream trace;
  std::ostringstream errors;
  const bool ran = replay::replayScript(in, "script", trace, errors);
  return {ran, trace.str(), errors.str()};
}

/// "script:LINE: what is wrong", on one line, of a line that is there.
void checkError(const std::string& error, std::size_t lines) {
  constexpr std::string_view beginning = "script:";
  require(isUtf8(error) && error.starts_with(beginning) && error.find('\n') == error.size() - 1);
  const auto line = std::strtoul(error.c_str() + beginning.size(), nullptr, 10);
  require(line >= 1 && line <= lines);
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming): the name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string script(data, data + size);
  const auto lines = linesOf(script);
  for (const auto& line : lines) checkReading(line);
  if (!isRunnable(lines)) return 0;
  const auto outcome = replayed(script);
  require(outcome.ran == outcome.errors.empty());
  if (!outcome.ran) checkError(outcome.errors, lines.size());
  for (const auto& line : linesOf(outcome.trace)) require(isUtf8(line) && Json::parse(line, nullptr, false).is_object());
  require(replayed(script) == outcome);
  return 0;
}
