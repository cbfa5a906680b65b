// Starting X servers.
#include "harness/server.h"

#include <unistd.h>

#include <array>
#include <stdexcept>

namespace tilora::harness {

ServerProcess::ServerProcess(int width, int height) {
  Pipe number = Pipe::make();
  const std::string screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
  process_.emplace(
      ProcessOptions{.arguments = {"Xvfb", "-displayfd", "3", "-noreset", "-nolisten", "tcp", "-screen", "0", screen, "-dpi", "96"},
                     .environment = {{"PATH", "/usr/bin:/bin"}},
                     .descriptors = {{3, number.writer.number()}},
                     .log = {}});
  number.writer.close();
  std::string text;
  std::array<char, 1> next{};
  while (waitReadable(number.reader.number(), defaultDeadline) && ::read(number.reader.number(), next.data(), 1) == 1 && next[0] != '\n')
    text += next[0];
  if (text.empty()) throw std::runtime_error("no X server");
  display_ = ":" + text;
}

}  // namespace tilora::harness
