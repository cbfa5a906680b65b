// The scripts that have a trace beside them, and running one of them.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "replay/replay.h"

namespace tilora::replay {

/// Every script without its ending, relative to their folder, sorted: "layout/a_left_window" for instance.
std::vector<std::string> scriptNames();
/// Every trace, named likewise.
std::vector<std::string> traceNames();
/// The name as that of a test.
std::string scriptTestName(const testing::TestParamInfo<std::string>& info);

/// The trace that a script gives; one that cannot be read fails the test.
std::string replayed(const std::string& name, const DesktopViewMaker& makeView = plainView);
/// The lines of that trace.
std::vector<nlohmann::json> traceOf(const std::string& text);
/// The lines of the trace that stands beside a script; where there is none, the test fails.
std::vector<nlohmann::json> expectedTrace(const std::string& name);

}  // namespace tilora::replay
