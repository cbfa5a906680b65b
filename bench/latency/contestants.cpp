// The list of contestants.
#include "contestants.h"

namespace tilora::latency {

std::string tiloraOn(harness::WindowManagerKind kind) { return "Tilora on " + harness::nameOf(kind); }

std::string floorOn(harness::WindowManagerKind kind) { return "bare client on " + harness::nameOf(kind); }

std::vector<std::string> contestantNames() {
  std::vector<std::string> names;
  for (const auto kind : harness::allWindowManagers) {
    names.push_back(tiloraOn(kind));
    names.push_back(floorOn(kind));
  }
  for (const Tiler& tiler : tilers()) names.emplace_back(tiler.name);
  return names;
}

}  // namespace tilora::latency
