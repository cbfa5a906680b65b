// Runs passes, or their bare reads, so that callgrind can count the instructions of `measured` alone.
// Usage: pass_instructions pass|reads WINDOWS WINDOWS_PER_APPLICATION TIMES
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "crowded_desktop.h"

namespace {

/// Called once; its name is what collecting is switched on by. It must stay a function of its own.
[[gnu::noinline]] void measured(tilora::bench::CrowdedDesktop& desktop, bool readsOnly, std::size_t times) {
  for (std::size_t i = 0; i < times; ++i) {
    if (readsOnly) {
      desktop.bareReads();
    } else {
      desktop.pass();
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view what = argc == 5 ? argv[1] : "";
  if (what != "pass" && what != "reads") {
    std::cerr << "usage: pass_instructions pass|reads WINDOWS WINDOWS_PER_APPLICATION TIMES\n";
    return 2;
  }
  tilora::bench::CrowdedDesktop desktop(std::strtoul(argv[2], nullptr, 10), std::strtoul(argv[3], nullptr, 10));
  measured(desktop, what == "reads", std::strtoul(argv[4], nullptr, 10));
  return 0;
}
