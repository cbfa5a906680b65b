// A desktop with many windows, and the two things whose cost is compared on it: a pass, and the reads alone that a pass cannot do without.
#pragma once

#include <cstddef>
#include <memory>

#include "platform/simulated/simulated_desktop.h"
#include "tiling/placement_memory.h"

namespace tilora::bench {

/// How much there is on a desktop.
struct Crowd {
  std::size_t windows = 0;
  std::size_t windowsPerApplication = 1;
  std::size_t screens = 2;
  /// Stored choices, and how many of them each application has. They begin with the first application and go beyond the last.
  std::size_t preferences = 50;
  std::size_t preferencesPerApplication = 1;
};

/// Screens full of standard windows with titles of their own, one in five of them with an identifier; the first window has the focus.
class CrowdedDesktop {
 public:
  explicit CrowdedDesktop(const Crowd& crowd);

  /// One pass of the engine.
  void pass();
  /// Reads, and throws away, each attribute that a pass needs to know of each window: nine a window, and whether it is hidden for those of
  /// shown applications. Answers how many windows there were.
  std::size_t bareReads();

 private:
  std::unique_ptr<simulated::SimulatedDesktop> simulated_;
  Desktop desktop_;
  PlacementMemory memory_;
};

}  // namespace tilora::bench
