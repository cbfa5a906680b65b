// Each script under scripts/ gives the trace that stands beside it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "replay/replay.h"
#include "trace_comparison.h"

namespace tilora::replay {
namespace {

namespace fs = std::filesystem;

constexpr const char* scriptsFolder = TILORA_REPLAY_SCRIPTS;
constexpr const char* scriptEnding = ".script.jsonl";
constexpr const char* traceEnding = ".trace.jsonl";

/// Every script without its ending, relative to the folder, sorted: "layout/a_left_window" for instance.
std::vector<std::string> scriptNames() {
  std::vector<std::string> names;
  for (const auto& entry : fs::recursive_directory_iterator(scriptsFolder)) {
    const auto name = fs::relative(entry.path(), scriptsFolder).generic_string();
    if (name.ends_with(scriptEnding)) names.push_back(name.substr(0, name.size() - std::string(scriptEnding).size()));
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string testName(const testing::TestParamInfo<std::string>& info) {
  std::string name = info.param;
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return name;
}

std::string fileOf(const std::string& name, const char* ending) { return (fs::path(scriptsFolder) / (name + ending)).string(); }

class Golden : public testing::TestWithParam<std::string> {};

std::string replayed(const std::string& name) {
  std::ifstream script(fileOf(name, scriptEnding));
  std::ostringstream trace;
  std::ostringstream errors;
  EXPECT_TRUE(replayScript(script, name, trace, errors)) << errors.str();
  return trace.str();
}

std::vector<nlohmann::json> traceOf(const std::string& text) {
  std::istringstream in(text);
  return readTrace(in);
}

TEST_P(Golden, AScriptGivesTheTraceBesideItEachTime) {
  std::ifstream traceFile(fileOf(GetParam(), traceEnding));
  ASSERT_TRUE(traceFile) << "there is no " << GetParam() << traceEnding;
  const auto expected = readTrace(traceFile);
  ASSERT_FALSE(expected.empty());

  const auto first = replayed(GetParam());
  const auto second = replayed(GetParam());

  EXPECT_EQ(differenceOf(expected, traceOf(first)), "");
  EXPECT_EQ(first, second);
}

INSTANTIATE_TEST_SUITE_P(Scripts, Golden, testing::ValuesIn(scriptNames()), testName);

TEST(GoldenFiles, EveryTraceHasAScript) {
  for (const auto& entry : fs::recursive_directory_iterator(scriptsFolder)) {
    const auto name = entry.path().string();
    if (!name.ends_with(traceEnding)) continue;
    EXPECT_TRUE(fs::exists(name.substr(0, name.size() - std::string(traceEnding).size()) + scriptEnding)) << name;
  }
}

TEST(TraceComparison, NeighbouringHidesMayComeInAnyOrder) {
  EXPECT_EQ(differenceOf(traceOf("{\"call\":\"hide\",\"pid\":1}\n{\"call\":\"unhide\",\"pid\":2}\n"),
                         traceOf("{\"call\":\"unhide\",\"pid\":2}\n{\"call\":\"hide\",\"pid\":1}\n")),
            "");
}

TEST(TraceComparison, OtherLinesKeepTheirOrder) {
  EXPECT_NE(differenceOf(traceOf("{\"call\":\"hide\",\"pid\":1}\n{\"call\":\"activateSelf\"}\n"),
                         traceOf("{\"call\":\"activateSelf\"}\n{\"call\":\"hide\",\"pid\":1}\n")),
            "");
}

TEST(TraceComparison, StoredDataIsComparedAsJson) {
  EXPECT_EQ(differenceOf(traceOf(R"({"value":{"data":"{\"a\":1,\"b\":2}"}})"), traceOf(R"({"value":{"data":"{\"b\":2, \"a\":1.0}"}})")),
            "");
  EXPECT_NE(differenceOf(traceOf(R"({"value":{"data":"{\"a\":1}"}})"), traceOf(R"({"value":{"data":"{\"a\":2}"}})")), "");
}

TEST(TraceComparison, AMissingLineIsADifference) {
  EXPECT_NE(differenceOf(traceOf("{\"ms\":0}\n{\"ms\":1}\n"), traceOf("{\"ms\":0}\n")), "");
  EXPECT_NE(differenceOf(traceOf("{\"ms\":0}\n"), traceOf("{\"ms\":0}\n{\"ms\":1}\n")), "");
}

}  // namespace
}  // namespace tilora::replay
