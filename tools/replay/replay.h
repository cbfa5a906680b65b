// Replays a desktop script against the real controller.
#pragma once

#include <functional>
#include <istream>
#include <memory>
#include <ostream>
#include <string>

#include "platform/simulated/simulated_desktop.h"

namespace tilora::replay {

/// What the controller gets to see of the simulated desktop, made when it starts and gone after it.
class DesktopView {
 public:
  virtual ~DesktopView() = default;

  virtual Desktop interfaces() = 0;
};

using DesktopViewMaker = std::function<std::unique_ptr<DesktopView>(simulated::SimulatedDesktop& desktop)>;

/// The desktop's own interfaces.
std::unique_ptr<DesktopView> plainView(simulated::SimulatedDesktop& desktop);

/// Reads the script line by line from `script`, which is called `name` in an error, and writes the trace to `trace`. True when the whole
/// script ran; else the line "NAME:LINE: what is wrong" went to `errors`, and the trace of the lines before it is written. The same script
/// always gives the same trace. `makeView` puts something between the desktop and the controller.
bool replayScript(std::istream& script, const std::string& name, std::ostream& trace, std::ostream& errors,
                  const DesktopViewMaker& makeView = plainView);

}  // namespace tilora::replay
