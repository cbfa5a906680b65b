// Each script under scripts/ gives the trace that stands beside it.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "golden_scripts.h"
#include "trace_comparison.h"

namespace tilora::replay {
namespace {

class Golden : public testing::TestWithParam<std::string> {};

TEST_P(Golden, AScriptGivesTheTraceBesideItEachTime) {
  const auto first = replayed(GetParam());
  const auto second = replayed(GetParam());

  EXPECT_EQ(differenceOf(expectedTrace(GetParam()), traceOf(first)), "");
  EXPECT_EQ(first, second);
}

INSTANTIATE_TEST_SUITE_P(Scripts, Golden, testing::ValuesIn(scriptNames()), scriptTestName);

TEST(GoldenFiles, EveryTraceHasAScript) {
  const auto scripts = scriptNames();
  for (const auto& trace : traceNames()) EXPECT_TRUE(std::count(scripts.begin(), scripts.end(), trace)) << trace;
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
