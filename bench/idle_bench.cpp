// What Tilora costs while nobody touches the desktop: 50 windows on Openbox, for as many seconds as the argument says, 60 without one.
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <list>
#include <stdexcept>
#include <string>

#include "harness/display.h"
#include "harness/server.h"
#include "harness/session.h"
#include "harness/test_client.h"
#include "harness/window_manager.h"
#include "harness/wire_tap.h"
#include "usage.h"

namespace {

using namespace tilora::harness;
using std::chrono::seconds;
using tilora::bench::memoryOf;
using tilora::bench::Usage;
using tilora::bench::usageOf;

constexpr int applications = 10;
constexpr int windowsEach = 5;
constexpr int queryPointer = 38;

/// The desktop that is measured. Every part ends with it.
struct CrowdedDesktop {
  ServerProcess server;
  Session session{server.display()};
  Display display{server.display()};
  WindowManager windowManager{WindowManagerKind::openbox, session, display};
  std::list<TestClient> clients;

  CrowdedDesktop() {
    session.home().write("config/tilora/consent.json", R"({"Tilora.Consent": {"type": "bool", "value": true}})");
    for (int application = 0; application < applications; ++application) openApplication("app" + std::to_string(application));
  }

  void openApplication(const std::string& name) {
    TestClient& client = clients.emplace_back(session);
    for (int window = 0; window < windowsEach; ++window) {
      client.open({.title = name + " " + std::to_string(window), .instance = name, .className = name});
    }
  }

  std::size_t shownWindows() {
    std::size_t count = 0;
    for (const xcb_window_t window : display.clientList()) count += display.iconic(window) ? 0 : 1;
    return count;
  }

  /// Starts Tilora and returns once it has hidden all windows but one.
  ManagedProcess startTilora() {
    const auto isOpen = [this] { return display.clientList().size() == std::size_t{applications} * windowsEach; };
    if (!display.waitUntil(isOpen, seconds(30))) throw std::runtime_error("the windows do not open");
    ManagedProcess tilora = session.start({TILORA_PROGRAM});
    if (!display.waitUntil([this] { return shownWindows() == 1; }, seconds(30))) throw std::runtime_error(display.describe());
    return tilora;
  }

  /// Nothing is done to the desktop meanwhile.
  void leaveAlone(seconds time) {
    display.waitUntil([] { return false; }, time);
  }
};

void report(const char* name, const Usage& before, const Usage& after, seconds time) {
  const auto elapsed = static_cast<double>(time.count());
  std::printf("%-10s %8.3f %% of a core %8.2f waits a second\n", name, (after.processorTime - before.processorTime) / elapsed / 1e7,
              static_cast<double>(after.waits - before.waits) / elapsed);
}

void measureUsage(seconds time) {
  CrowdedDesktop desktop;
  const ManagedProcess tilora = desktop.startTilora();
  desktop.leaveAlone(seconds(3));
  struct Measured {
    const char* name = nullptr;
    pid_t process = -1;
    Usage before;
  };
  std::array<Measured, 3> all = {{{"Tilora", tilora.pid(), {}},
                                  {"X server", desktop.server.process().pid(), {}},
                                  {"Openbox", desktop.windowManager.process().pid(), {}}}};
  for (Measured& one : all) one.before = usageOf(one.process);
  desktop.leaveAlone(time);
  for (const Measured& one : all) report(one.name, one.before, usageOf(one.process), time);
  std::printf("Tilora's memory: %ld kB, proportional %ld kB\n", memoryOf(tilora.pid(), "Rss:"), memoryOf(tilora.pid(), "Pss:"));
}

/// In a run of its own, for the server has more to do when it tells what clients say.
void countTraffic() {
  CrowdedDesktop desktop;
  WireTap tap(desktop.server.display());
  const ManagedProcess tilora = desktop.startTilora();
  desktop.leaveAlone(seconds(3));
  const xcb_window_t resource = desktop.display.selectionOwner("_TILORA_INSTANCE");
  const auto passes = [&] { return tap.of(resource).requests[queryPointer]; };
  const int first = passes();
  const auto trafficAfter = [&](int count) {
    if (!tap.waitUntil([&] { return passes() >= first + count; }, seconds(60))) throw std::runtime_error("Tilora makes no passes");
    return tap.of(resource);
  };
  constexpr int warmUp = 20;
  constexpr int counted = 100;
  const Traffic before = trafficAfter(warmUp);
  const auto start = std::chrono::steady_clock::now();
  const Traffic after = trafficAfter(warmUp + counted);
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  std::printf("On the wire, a pass: %.2f requests, %.2f replies; %.2f passes a second\n",
              static_cast<double>(after.allRequests() - before.allRequests()) / counted,
              static_cast<double>(after.replies - before.replies) / counted, counted / elapsed.count());
}

}  // namespace

int main(int argc, char** argv) {
  const seconds time(argc > 1 ? std::atoi(argv[1]) : 60);
  try {
    measureUsage(time);
    countTraffic();
  } catch (const std::exception& exception) {
    std::fprintf(stderr, "idle_bench: %s\n", exception.what());
    return 1;
  }
  return 0;
}
