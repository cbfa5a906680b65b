// Starting X servers.
#include "harness/server.h"

#include <unistd.h>

#include <array>
#include <stdexcept>

namespace tilora::harness {

namespace {

/// Two servers that start at the same moment may choose the same number; one of them gives up then.
constexpr int mostAttempts = 5;

/// What the server writes when it is ready, its display number; empty when it ended instead.
std::string readNumber(int descriptor) {
  std::string text;
  std::array<char, 1> next{};
  while (waitReadable(descriptor, defaultDeadline) && ::read(descriptor, next.data(), 1) == 1 && next[0] != '\n') text += next[0];
  return text;
}

}  // namespace

ServerProcess::ServerProcess(int width, int height) {
  const std::string screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
  for (int attempt = 0; attempt < mostAttempts; ++attempt) {
    Pipe number = Pipe::make();
    process_.emplace(
        ProcessOptions{.arguments = {"Xvfb", "-displayfd", "3", "-noreset", "-nolisten", "tcp", "-screen", "0", screen, "-dpi", "96"},
                       .environment = {{"PATH", "/usr/bin:/bin"}},
                       .descriptors = {{3, number.writer.number()}},
                       .log = {}});
    number.writer.close();
    const std::string text = readNumber(number.reader.number());
    if (text.empty()) continue;
    display_ = ":" + text;
    return;
  }
  throw std::runtime_error("no X server");
}

}  // namespace tilora::harness
