// Starting Tilora, opening windows, and asking what the user sees.
#include "desktop_test.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace tilora::harness {

namespace {

std::string nameOf(xcb_window_t window) {
  std::ostringstream text;
  text << "window " << std::hex << window;
  return text.str();
}

}  // namespace

void DesktopTest::TearDown() {
  if (tilora && !HasFatalFailure()) {
    const auto end = tilora->waitForEnd(std::chrono::milliseconds(0));
    EXPECT_TRUE(!end || end->status == 0 || end->signal == SIGKILL) << "Tilora has ended: " << tilora->output();
  }
  if (!HasFailure()) return;
  std::cout << display.describe() << (tilora ? tilora->output() : "") << std::endl;
  if (windowManager) std::cout << windowManager->describe() << std::endl;
}

void DesktopTest::startWindowManager(WindowManagerOptions options) { windowManager.emplace(GetParam(), session, display, options); }

bool DesktopTest::runsOn(std::initializer_list<WindowManagerKind> kinds) const {
  return std::find(kinds.begin(), kinds.end(), GetParam()) != kinds.end();
}

void DesktopTest::giveConsent() const {
  session.home().write("config/tilora/consent.json", R"({"Tilora.Consent": {"type": "bool", "value": true}})");
}

ManagedProcess DesktopTest::runTilora(const Environment& additions) { return session.start({TILORA_PROGRAM}, additions); }

void DesktopTest::startTilora(const Environment& additions) {
  giveConsent();
  // The server may still have to notice that an earlier one is gone.
  ASSERT_TRUE(comesTrue([this] { return tiloraResource() == XCB_WINDOW_NONE; }));
  tilora.emplace(runTilora(additions));
  ASSERT_TRUE(tap.waitUntil([this] {
    const xcb_window_t resource = tiloraResource();
    return resource != XCB_WINDOW_NONE && tap.of(resource).requests[queryPointer] > 0;
  })) << "Tilora does not start: "
      << tilora->output();
}

xcb_window_t DesktopTest::tiloraResource() { return display.selectionOwner("_TILORA_INSTANCE"); }

testing::AssertionResult DesktopTest::passes(int count) {
  const xcb_window_t resource = tiloraResource();
  display.sync();
  tap.waitUntil([] { return true; });
  // The pass that runs now may have begun before what the test did, and the one after it is over when the next one begins.
  const int wanted = tap.of(resource).requests[queryPointer] + count + 1;
  return described(tap.waitUntil([&] { return tap.of(resource).requests[queryPointer] >= wanted; }), "Tilora makes a pass");
}

App& DesktopTest::open(const std::string& name, WindowOptions options) {
  options.title = name;
  options.instance = name;
  options.className = name;
  App& app = apps.emplace_back(App{.client = TestClient(session)});
  app.window = openWindow(app.client, options);
  return app;
}

xcb_window_t DesktopTest::openWindow(TestClient& client, const WindowOptions& options) {
  const xcb_window_t window = client.open(options);
  display.watch(window);
  const auto listed = [&] {
    const std::vector<xcb_window_t> list = display.clientList();
    return std::find(list.begin(), list.end(), window) != list.end();
  };
  EXPECT_TRUE(comesTrue(listed));
  activate(window);
  return window;
}

DesktopTest::Pair DesktopTest::openPair() {
  App& left = open("left");
  EXPECT_TRUE(isTiled(left.window, Place::full));
  press(Place::left);
  EXPECT_TRUE(isTiled(left.window, Place::left));
  App& right = open("right");
  EXPECT_TRUE(isTiled(right.window, Place::full));
  press(Place::right);
  EXPECT_TRUE(isTiled(right.window, Place::right));
  EXPECT_TRUE(isTiled(left.window, Place::left));
  EXPECT_TRUE(isActive(right.window));
  EXPECT_TRUE(passes());
  return {left, right};
}

void DesktopTest::activate(xcb_window_t window) {
  // Nobody chooses a window in the very moment in which it goes; who does finds it gone.
  EXPECT_TRUE(comesTrue([&] { return !isMarked(window) || display.iconic(window); }));
  display.activate(window);
  EXPECT_TRUE(isActive(window));
  EXPECT_TRUE(isShown(window));
}

void DesktopTest::press(Place place) {
  static const std::map<Place, Key> keys = {
      {Place::left, Key::leftBracket}, {Place::right, Key::rightBracket}, {Place::full, Key::space}, {Place::floating, Key::j}};
  keyboard.chord({Key::leftAlt, Key::leftShift, keys.at(place)});
}

testing::AssertionResult DesktopTest::described(bool holds, const std::string& wanted) {
  if (holds) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "wanted: " << wanted << "\n" << display.describe();
}

testing::AssertionResult DesktopTest::comesTrue(const std::function<bool()>& holds) {
  return described(display.waitUntil(holds), "the condition");
}

testing::AssertionResult DesktopTest::isTiled(xcb_window_t window, Place place, const PixelRect& monitor, const Steps& steps) {
  const auto tiled = [&] {
    const std::optional<PixelRect> frame = display.frame(window);
    return frame && fits(*frame, edgesOf(place, display.visibleFrame(monitor), gap), steps) && display.viewable(window) &&
           !display.iconic(window);
  };
  std::ostringstream wanted;
  const Edges edges = edgesOf(place, display.visibleFrame(monitor), gap);
  wanted << nameOf(window) << " " << verbOf(place) << " the screen: " << edges.right - edges.left << "x" << edges.bottom - edges.top << "+"
         << edges.left << "+" << edges.top;
  return described(display.waitUntil(tiled), wanted.str());
}

testing::AssertionResult DesktopTest::isShown(xcb_window_t window) {
  return described(display.waitUntil([&] { return display.viewable(window) && !display.iconic(window); }), nameOf(window) + " is shown");
}

testing::AssertionResult DesktopTest::isHidden(xcb_window_t window) {
  return described(display.waitUntil([&] { return display.iconic(window); }), nameOf(window) + " is hidden");
}

testing::AssertionResult DesktopTest::isActive(xcb_window_t window) {
  // A toolkit may give the focus to a child of its window.
  const auto hasFocus = [&] {
    const xcb_window_t focused = display.focusedWindow();
    return focused == window || (focused > XCB_INPUT_FOCUS_POINTER_ROOT && display.outermost(focused) == display.outermost(window));
  };
  return described(display.waitUntil([&] { return display.activeWindow() == window && hasFocus(); }), nameOf(window) + " is active");
}

bool DesktopTest::isSupported(const std::string& atom) {
  const std::vector<std::string> supported = display.atoms(display.root(), "_NET_SUPPORTED");
  return std::find(supported.begin(), supported.end(), atom) != supported.end();
}

bool DesktopTest::hasChanged(xcb_window_t window, std::string_view property) {
  const xcb_atom_t atom = display.atom(property);
  const std::vector<WindowEvent>& events = display.events();
  return std::any_of(events.begin(), events.end(), [&](const WindowEvent& event) {
    return event.window == window && event.kind == WindowEvent::Kind::property && event.atom == atom;
  });
}

int DesktopTest::count(xcb_window_t window, WindowEvent::Kind kind) {
  const std::vector<WindowEvent>& events = display.events();
  return static_cast<int>(
      std::count_if(events.begin(), events.end(), [&](const WindowEvent& event) { return event.window == window && event.kind == kind; }));
}

void DesktopTest::recordFromNow() {
  display.clearEvents();
  areas.clear();
  for (const xcb_window_t window : display.clientList()) areas[window] = display.outermostArea(window).value_or(PixelRect{});
}

int DesktopTest::changesOfArea(xcb_window_t window) {
  const xcb_window_t outermost = display.outermost(window);
  PixelRect last = areas[window];
  int changes = 0;
  for (const WindowEvent& event : display.events()) {
    if (event.window != outermost || event.kind != WindowEvent::Kind::configured || event.synthetic) continue;
    if (last != event.geometry) ++changes;
    last = event.geometry;
  }
  return changes;
}

int DesktopTest::typed(App& app, Key key) {
  const std::vector<int> keys = app.client.keysPressed(app.window);
  return static_cast<int>(std::count(keys.begin(), keys.end(), static_cast<int>(key)));
}

}  // namespace tilora::harness
