// The scripts that have a trace beside them, and running one of them.
#include "golden_scripts.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "trace_comparison.h"

namespace tilora::replay {
namespace {

namespace fs = std::filesystem;

constexpr const char* scriptsFolder = TILORA_REPLAY_SCRIPTS;
constexpr const char* scriptEnding = ".script.jsonl";
constexpr const char* traceEnding = ".trace.jsonl";

std::vector<std::string> namesWith(const std::string& ending) {
  std::vector<std::string> names;
  for (const auto& entry : fs::recursive_directory_iterator(scriptsFolder)) {
    const auto name = fs::relative(entry.path(), scriptsFolder).generic_string();
    if (name.ends_with(ending)) names.push_back(name.substr(0, name.size() - ending.size()));
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string fileOf(const std::string& name, const char* ending) { return (fs::path(scriptsFolder) / (name + ending)).string(); }

}  // namespace

std::vector<std::string> scriptNames() { return namesWith(scriptEnding); }
std::vector<std::string> traceNames() { return namesWith(traceEnding); }

std::string scriptTestName(const testing::TestParamInfo<std::string>& info) {
  std::string name = info.param;
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return name;
}

std::string replayed(const std::string& name, const DesktopViewMaker& makeView) {
  std::ifstream script(fileOf(name, scriptEnding));
  std::ostringstream trace;
  std::ostringstream errors;
  EXPECT_TRUE(replayScript(script, name, trace, errors, makeView)) << errors.str();
  return trace.str();
}

std::vector<nlohmann::json> traceOf(const std::string& text) {
  std::istringstream in(text);
  return readTrace(in);
}

std::vector<nlohmann::json> expectedTrace(const std::string& name) {
  std::ifstream trace(fileOf(name, traceEnding));
  EXPECT_TRUE(trace) << "there is no " << name << traceEnding;
  auto lines = readTrace(trace);
  EXPECT_FALSE(lines.empty());
  return lines;
}

}  // namespace tilora::replay
