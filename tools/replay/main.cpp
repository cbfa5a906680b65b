// tilora-replay: prints what the window manager does on the desktop that a script describes.
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

#include "replay/replay.h"

namespace {

constexpr int badScript = 2;
constexpr int badOutput = 1;

/// A fatal error of the engine ends the process at once; the trace up to it is what one wants to see then.
void flushTraceBeforeAborting(int /*signal*/) { std::cout.flush(); }

int replayFile(const std::string& name) {
  if (name == "-") return tilora::replay::replayScript(std::cin, name, std::cout, std::cerr) ? EXIT_SUCCESS : badScript;
  std::ifstream script(name, std::ios::binary);
  if (!script) {
    std::cerr << name << ":0: the script cannot be opened" << std::endl;
    return badScript;
  }
  return tilora::replay::replayScript(script, name, std::cout, std::cerr) ? EXIT_SUCCESS : badScript;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 2) {
    std::cerr << "usage: tilora-replay [FILE]" << std::endl;
    return badScript;
  }
  std::ios::sync_with_stdio(false);
  std::signal(SIGABRT, flushTraceBeforeAborting);
  const int status = replayFile(argc == 2 ? argv[1] : "-");
  std::cout.flush();
  if (!std::cout) {
    std::cerr << "tilora-replay: the trace cannot be written" << std::endl;
    return badOutput;
  }
  return status;
}
