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

constexpr const char* outputServerSettings = R"(
Section "ServerFlags"
  Option "AutoAddDevices" "false"
  Option "AutoEnableDevices" "false"
  Option "DontVTSwitch" "true"
EndSection
Section "Device"
  Identifier "device"
  Driver "dummy"
  VideoRam 64000
EndSection
Section "Screen"
  Identifier "screen"
  Device "device"
  DefaultDepth 24
EndSection
)";

std::string outputName(std::size_t output) { return "DUMMY" + std::to_string(output); }

/// The settings of an output that prefers a mode of just this size.
std::string outputSettings(const std::string& name, const PixelRect& area) {
  const std::string width = " " + std::to_string(area.width), height = " " + std::to_string(area.height);
  // The dummy driver takes any timing; a pixel clock of 60 MHz is inside its range for every size.
  return "Section \"Monitor\"\n  Identifier \"" + name + "\"\n  HorizSync 5.0-1000.0\n  VertRefresh 5.0-200.0\n  Modeline \"" + name +
         "\" 60" + width + width + width + width + height + height + height + height + "\n  Option \"PreferredMode\" \"" + name +
         "\"\nEndSection\n";
}

std::vector<std::string> memoryServer(int width, int height) {
  const std::string screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
  return {"Xvfb", "-displayfd", "3", "-noreset", "-nolisten", "tcp", "-screen", "0", screen, "-dpi", "96"};
}

std::vector<std::string> outputServer(const TemporaryDirectory& files, const std::vector<PixelRect>& outputs) {
  std::string text = outputServerSettings;
  for (std::size_t output = 0; output < outputs.size(); ++output) text += outputSettings(outputName(output), outputs[output]);
  const std::string settings = files.write("xorg.conf", text).string();
  // The program itself: what is in PATH may let only the user at the console start it.
  return {"/usr/lib/xorg/Xorg", "-displayfd", "3",           "-noreset", "-nolisten", "tcp", "-config", settings,
          "-logfile",           "/dev/null",  "-novtswitch", "-sharevts"};
}

void runXrandr(const std::string& display, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {"xrandr", "--display", display});
  ManagedProcess process({.arguments = arguments, .environment = {{"PATH", "/usr/bin:/bin"}}, .descriptors = {}, .log = {}});
  process.waitForEnd();
}

}  // namespace

ServerProcess::ServerProcess(int width, int height) { start(memoryServer(width, height)); }

ServerProcess::ServerProcess(const std::vector<PixelRect>& outputs) : outputs_(outputs) {
  start(outputServer(files_, outputs));
  plugIn(0);
}

void ServerProcess::start(const std::vector<std::string>& arguments) {
  for (int attempt = 0; attempt < mostAttempts; ++attempt) {
    Pipe number = Pipe::make();
    process_.emplace(ProcessOptions{.arguments = arguments,
                                    .environment = {{"PATH", "/usr/bin:/bin"}},
                                    .descriptors = {{3, number.writer.number()}},
                                    .log = files_.path() / "server.log"});
    number.writer.close();
    const std::string text = readNumber(number.reader.number());
    if (text.empty()) continue;
    display_ = ":" + text;
    return;
  }
  throw std::runtime_error("no X server: " + process_->output());
}

void ServerProcess::plugIn(std::size_t output) {
  const PixelRect& area = outputs_.at(output);
  const std::string name = outputName(output), mode = name + "-plugged";
  // The driver takes an output for connected while it has a picture, and gives it its modes only then.
  const std::string width = std::to_string(area.width), height = std::to_string(area.height);
  runXrandr(display_, {"--newmode", mode, "60", width, width, width, width, height, height, height, height});
  runXrandr(display_, {"--addmode", name, mode});
  std::vector<std::string> arguments = {"--output", name, "--mode", mode, "--pos", std::to_string(area.x) + "x" + std::to_string(area.y)};
  if (output == 0) arguments.emplace_back("--primary");
  runXrandr(display_, arguments);
  // The server takes notice of the change when it is asked.
  runXrandr(display_, {"--query"});
}

void ServerProcess::unplug(std::size_t output) {
  runXrandr(display_, {"--output", outputName(output), "--off"});
  runXrandr(display_, {"--query"});
}

}  // namespace tilora::harness
