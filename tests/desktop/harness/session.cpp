// The environment of a test's programs, and their message bus.
#include "harness/session.h"

#include <unistd.h>

#include <array>
#include <stdexcept>
#include <utility>

namespace tilora::harness {

namespace {

/// Reads up to the first line feed.
std::string readLine(int descriptor) {
  std::string line;
  std::array<char, 1> next{};
  while (waitReadable(descriptor, defaultDeadline) && ::read(descriptor, next.data(), 1) == 1 && next[0] != '\n') line += next[0];
  return line;
}

}  // namespace

Session::Session(std::string display) : display_(std::move(display)) {
  for (const char* folder : {"config", "data", "cache", "state", "runtime", "tmp"})
    std::filesystem::create_directory(home_.path() / folder);
  std::filesystem::permissions(home_.path() / "runtime", std::filesystem::perms::owner_all);
  resetSettings();
}

void Session::resetSettings() const {
  // The first moment of the year 2100.
  home_.write("config/tilora/settings.json", R"({"lastUpdateCheck": {"type": "date", "value": 4102444800000000000}})");
}

Environment Session::environment() const {
  const std::string home = home_.path().string();
  return {{"PATH", "/usr/local/bin:/usr/bin:/bin:/usr/games:/usr/sbin:/sbin"},
          {"HOME", home},
          {"XDG_CONFIG_HOME", home + "/config"},
          {"XDG_DATA_HOME", home + "/data"},
          {"XDG_CACHE_HOME", home + "/cache"},
          {"XDG_STATE_HOME", home + "/state"},
          {"XDG_RUNTIME_DIR", home + "/runtime"},
          {"XDG_SESSION_TYPE", "x11"},
          {"XAUTHORITY", home + "/Xauthority"},
          {"TMPDIR", home + "/tmp"},
          {"LANG", "C.UTF-8"},
          {"NO_AT_BRIDGE", "1"},
          {"GSETTINGS_BACKEND", "keyfile"},
          {"LIBGL_ALWAYS_SOFTWARE", "1"},
          {"DISPLAY", display_},
          {"DBUS_SESSION_BUS_ADDRESS", busAddress_.empty() ? "unix:path=" + home + "/runtime/no-bus" : busAddress_}};
}

void Session::startBus() {
  if (bus_) return;
  Pipe address = Pipe::make();
  bus_.emplace(ProcessOptions{.arguments = {"dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=3"},
                              .environment = environment(),
                              .descriptors = {{3, address.writer.number()}},
                              .log = home_.path() / "bus.log"});
  address.writer.close();
  busAddress_ = readLine(address.reader.number());
  if (busAddress_.empty()) throw std::runtime_error("no message bus: " + bus_->output());
}

ManagedProcess Session::start(std::vector<std::string> arguments, const Environment& additions) {
  Environment variables = environment();
  for (const auto& [name, value] : additions) variables[name] = value;
  const std::filesystem::path log = home_.path() / ("program-" + std::to_string(++logs_) + ".log");
  return ManagedProcess({.arguments = std::move(arguments), .environment = std::move(variables), .descriptors = {}, .log = log});
}

}  // namespace tilora::harness
