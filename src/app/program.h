// The resident process on the desktop of this session. Each system has its own; the build picks it.
#pragma once

#include <string>

namespace tilora::app {

/// Runs Tilora until it is asked to end, and answers the exit status: 0 after a clean end and when a copy runs already, 1 when there is no
/// desktop or it went away. Looks for a new release under the address `updateSite`. To be called once, with the arguments of `main`.
int runProgram(int argc, char** argv, const std::string& updateSite);

}  // namespace tilora::app
