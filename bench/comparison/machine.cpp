// The processor, the system and the packages.
#include "machine.h"

#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <ctime>
#include <fstream>
#include <sstream>

#include "harness/process.h"

namespace tilora::bench {
namespace {

/// What stands behind `mark` in the first line that begins with `start`.
std::string lookUp(const char* path, const std::string& start, const std::string& mark) {
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    const auto place = line.find(mark);
    if (line.starts_with(start) && place != std::string::npos) return line.substr(place + mark.size());
  }
  return "unknown";
}

std::string withoutQuotes(std::string text) {
  std::erase(text, '"');
  return text;
}

std::string versionOf(const std::string& package) {
  const harness::TemporaryDirectory files;
  harness::ManagedProcess process({.arguments = {"dpkg-query", "-W", "-f", "${Version}", package},
                                   .environment = {{"PATH", "/usr/bin:/bin"}},
                                   .descriptors = {},
                                   .log = files.path() / "version"});
  const auto end = process.waitForEnd();
  return end && end->status == 0 ? process.output() : "not installed";
}

}  // namespace

std::string nowAndLoad() {
  const std::time_t now = std::time(nullptr);
  std::tm utc{};
  gmtime_r(&now, &utc);
  std::array<char, 32> date{};
  std::strftime(date.data(), date.size(), "%Y-%m-%d %H:%M UTC", &utc);
  std::ifstream file("/proc/loadavg");
  std::string load;
  file >> load;
  return std::string(date.data()) + ", load " + load;
}

ProcessorTicks processorTicks() {
  constexpr int column = 7;
  std::ifstream file("/proc/stat");
  std::string name;
  file >> name;
  ProcessorTicks ticks;
  double value = 0;
  // What stands behind that column is part of the first ones.
  for (int i = 0; i <= column && file >> value; ++i) {
    ticks.all += value;
    if (i == column) ticks.stolen = value;
  }
  return ticks;
}

void noteMachine(Run& run) {
  utsname system{};
  uname(&system);
  const long memory = sysconf(_SC_PHYS_PAGES) / 1024 * (sysconf(_SC_PAGESIZE) / 1024);
  run.note("processor", lookUp("/proc/cpuinfo", "model name", ": ") + ", " + std::to_string(sysconf(_SC_NPROCESSORS_ONLN)) + " cores, " +
                            std::to_string(memory) + " MB of memory" +
                            (lookUp("/proc/cpuinfo", "flags", ": ").find(" hypervisor") == std::string::npos ? "" : ", a virtual machine"));
  run.note("system", withoutQuotes(lookUp("/etc/os-release", "PRETTY_NAME", "=")) + ", " + system.sysname + " " + system.release);
  std::string versions;
  for (const char* package : {"xvfb", "openbox", "xfwm4", "metacity", "marco", "icewm", "fluxbox", "jwm", "kwin-x11", "mutter", "i3-wm",
                              "bspwm", "sxhkd", "herbstluftwm", "dwm", "awesome", "wmctrl", "xdotool"}) {
    versions += std::string(versions.empty() ? "" : ", ") + package + " " + versionOf(package);
  }
  run.note("versions", versions);
}

}  // namespace tilora::bench
