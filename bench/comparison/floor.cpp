// The bare client: what it is told to send.
#include <algorithm>

#include "contestants.h"
#include "platform/x11/window_manager_traits.h"
#include "scene.h"

namespace tilora::bench {
namespace {

class Floor : public Contestant {
 public:
  Floor(Desk& desk, std::filesystem::path program) : desk_(desk), program_(std::move(program)) { desk_.openCrowd(); }

  Turns prepare(Action action) override {
    process_.reset();
    const auto& windows = desk_.windows();
    const Places places = placesOn(desk_.display().visibleFrame(desk_.display().rootGeometry()));
    std::vector<std::string> plan;
    Turns turns;
    switch (action) {
      case Action::move:
        show({windows[0]});
        plan = {frame(toTheRight, windows[0], places.right), frame(toTheLeft, windows[0], places.left)};
        turns = {toTheRight, toTheLeft};
        break;
      case Action::restore:
        show({windows[0], windows[1]});
        plan = {frame(fill, windows[0], places.full), request(fill, "hide", windows[1]), frame(toTheLeft, windows[0], places.left),
                frame(toTheLeft, windows[1], places.right)};
        add(plan, restored(toTheLeft, windows[1], windows[0]));
        turns = {fill, toTheLeft};
        break;
      case Action::exchange:
        show({windows[0], windows[1]});
        plan = {frame(toTheRight, windows[0], places.right), frame(toTheRight, windows[2], places.left)};
        add(plan, restored(toTheRight, windows[2], windows[0]));
        plan.push_back(request(toTheRight, "hide", windows[1]));
        add(plan, {frame(toTheLeft, windows[0], places.left), frame(toTheLeft, windows[1], places.right)});
        add(plan, restored(toTheLeft, windows[1], windows[0]));
        plan.push_back(request(toTheLeft, "hide", windows[2]));
        turns = {toTheRight, toTheLeft};
        break;
    }
    start(plan);
    desk_.pressUntilItWorks(turns.there, action);
    desk_.pressUntilItWorks(turns.back, action);
    // A pair comes back on the key that makes one.
    if (action == Action::restore) return desk_.pressUntilItWorks(turns.there, action), Turns{turns.back, turns.there, false};
    return turns;
  }

  std::vector<pid_t> processes() const override { return {process_->pid()}; }

 private:
  static std::string request(const Chord& chord, const std::string& kind, xcb_window_t window) {
    return std::to_string(static_cast<int>(chord.key)) + " " + kind + " " + std::to_string(window);
  }

  std::string frame(const Chord& chord, xcb_window_t window, const harness::PixelRect& visible) {
    const auto extents = desk_.display().extents(window, "_NET_FRAME_EXTENTS");
    std::string text = request(chord, "frame", window);
    for (const int number : {visible.x + extents.left, visible.y + extents.top, visible.width - extents.left - extents.right,
                             visible.height - extents.top - extents.bottom}) {
      text += " " + std::to_string(number);
    }
    return text;
  }

  /// Brings `window` back and leaves the keyboard with `active`.
  std::vector<std::string> restored(const Chord& chord, xcb_window_t window, xcb_window_t active) {
    const auto traits = x11::traitsOf(desk_.display().windowManagerName());
    if (traits.restore == x11::RestoreMethod::map) return {request(chord, "map", window)};
    return {request(chord, "activate", window), request(chord, "activate", active)};
  }

  static void add(std::vector<std::string>& plan, const std::vector<std::string>& more) {
    plan.insert(plan.end(), more.begin(), more.end());
  }

  /// Leaves just these windows shown, the first of them active.
  void show(const std::vector<xcb_window_t>& shown) {
    harness::Display& display = desk_.display();
    for (const xcb_window_t window : desk_.windows()) {
      const bool isShown = std::find(shown.begin(), shown.end(), window) != shown.end();
      if (isShown) {
        display.activate(window);
      } else {
        display.minimise(window);
      }
    }
    desk_.expectShown(shown);
    display.activate(shown.front());
    desk_.expect("a window is active", [&] { return display.activeWindow() == shown.front(); });
  }

  void start(const std::vector<std::string>& plan) {
    desk_.expectFree(tiloraKeys);
    std::vector<std::string> arguments = {program_.string()};
    add(arguments, plan);
    process_ = desk_.start(arguments);
  }

  Desk& desk_;
  std::filesystem::path program_;
  std::optional<harness::ManagedProcess> process_;
};

}  // namespace

std::unique_ptr<Contestant> startFloor(Desk& desk, const std::filesystem::path& program) { return std::make_unique<Floor>(desk, program); }

}  // namespace tilora::bench
