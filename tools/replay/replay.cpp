// Replays a desktop script, line by line.
#include "replay/replay.h"

#include <chrono>
#include <limits>
#include <string_view>

#include "platform/simulated/simulated_desktop.h"
#include "replay/controller_lines.h"
#include "replay/desktop_lines.h"
#include "replay/json_text.h"
#include "replay/script_line.h"
#include "replay/trace.h"

namespace tilora::replay {
namespace {

class PlainView final : public DesktopView {
 public:
  explicit PlainView(simulated::SimulatedDesktop& desktop) : desktop_(desktop) {}

  Desktop interfaces() override { return desktop_.interfaces(); }

 private:
  simulated::SimulatedDesktop& desktop_;
};

bool isBlankOrComment(std::string_view line) {
  return line.starts_with('#') || line.find_first_not_of(" \t\r\n\v\f") == std::string_view::npos;
}

/// One desktop with its controller, from the first line to the last.
class Replay {
 public:
  Replay(std::ostream& out, const DesktopViewMaker& makeView)
      : trace_(out, desktop_.clock()), desktopLines_(desktop_), controllerLines_(desktop_, trace_, makeView) {
    desktop_.observeEffects([this](const simulated::Effect& effect) { trace_.effect(effect); });
  }

  Replay(const Replay&) = delete;
  Replay& operator=(const Replay&) = delete;

  /// What a controller that is still alive does at its end is not traced.
  ~Replay() {
    desktop_.observeEffects([](const simulated::Effect&) {});
  }

  void run(std::string_view text) {
    const ScriptLine line(text);
    const auto what = line.get<std::string>("do");
    if (what == "advance") {
      advance(line);
    } else if (!desktopLines_.run(what, line) && !controllerLines_.run(what, line)) {
      throw ScriptError("there is no line " + jsonText(std::string_view(what)));
    }
    if (controllerLines_.wasStarted()) desktopLines_.closeOwnProcess();
    desktop_.clock().runPosted();
  }

 private:
  void advance(const ScriptLine& line) {
    constexpr auto end = std::numeric_limits<std::int64_t>::max() / 2;
    const auto duration = line.get<std::int64_t>("ms");
    if (duration < 0) throw ScriptError("\"ms\" must be 0 or more");
    if (duration > end - desktop_.clock().now().count()) throw ScriptError("\"ms\" goes beyond the end of time");
    desktop_.clock().advance(std::chrono::milliseconds(duration));
  }

  simulated::SimulatedDesktop desktop_;
  Trace trace_;
  DesktopLines desktopLines_;
  ControllerLines controllerLines_;
};

}  // namespace

std::unique_ptr<DesktopView> plainView(simulated::SimulatedDesktop& desktop) { return std::make_unique<PlainView>(desktop); }

bool replayScript(std::istream& script, const std::string& name, std::ostream& trace, std::ostream& errors,
                  const DesktopViewMaker& makeView) {
  Replay replay(trace, makeView);
  std::size_t number = 0;
  const auto refuse = [&](const char* reason) {
    trace.flush();
    errors << name << ':' << number << ": " << reason << std::endl;
    return false;
  };
  for (std::string line; std::getline(script, line);) {
    ++number;
    if (isBlankOrComment(line)) continue;
    try {
      replay.run(line);
    } catch (const ScriptError& error) {
      return refuse(error.what());
    }
  }
  ++number;
  if (script.bad()) return refuse("the script cannot be read any further");
  return true;
}

}  // namespace tilora::replay
