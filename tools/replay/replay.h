// Replays a desktop script against the real controller.
#pragma once

#include <istream>
#include <ostream>
#include <string>

namespace tilora::replay {

/// Reads the script line by line from `script`, which is called `name` in an error, and writes the trace to `trace`. True when the whole
/// script ran; else the line "NAME:LINE: what is wrong" went to `errors`, and the trace of the lines before it is written. The same script
/// always gives the same trace.
bool replayScript(std::istream& script, const std::string& name, std::ostream& trace, std::ostream& errors);

}  // namespace tilora::replay
