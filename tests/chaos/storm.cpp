// What can happen in a storm, and how often.
#include "storm.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <numeric>
#include <sstream>
#include <thread>
#include <utility>

#include "lies.h"

namespace tilora::chaos {
namespace {

using harness::Key;
using harness::WindowOptions;

constexpr std::size_t fewApplications = 4;
constexpr std::size_t mostApplications = 9;
constexpr std::size_t mostWindows = 30;
constexpr std::size_t longestTrace = 60;
constexpr int lastDesktop = 2;

/// The kinds of windows that honest applications open.
const std::vector<std::pair<std::string, WindowOptions>>& honestWindows() {
  static const std::vector<std::pair<std::string, WindowOptions>> kinds = {
      {"plain", {}},
      {"plain", {}},
      {"plain", {}},
      {"large", {.geometry = {0, 0, 1590, 890}}},
      {"undecorated", {.undecorated = true}},
      {"with shadows", {.shadows = harness::Extents{26, 26, 23, 29}}},
      {"in steps", {.baseWidth = 11, .baseHeight = 7, .widthIncrement = 9, .heightIncrement = 18}},
      {"of one size", {.minWidth = 400, .minHeight = 300, .maxWidth = 400, .maxHeight = 300}},
      {"utility", {.type = "UTILITY"}},
      {"off the taskbar", {.states = {"SKIP_TASKBAR"}}},
      {"of another host", {.declaresProcess = false, .machine = "elsewhere"}},
      {"without a type", {.type = ""}},
  };
  return kinds;
}

/// Windows whose hints contradict themselves, or who refuse every size.
const std::vector<std::pair<std::string, WindowOptions>>& lyingWindows() {
  static const std::vector<std::pair<std::string, WindowOptions>> kinds = {
      {"refusing every size", {.stubborn = true}},
      {"refusing every frame", {.positioned = true, .stubborn = true, .immovable = true}},
      {"of impossible size", {.minWidth = 900, .minHeight = 700, .maxWidth = 100, .maxHeight = 80}},
      {"of enormous steps", {.widthIncrement = 5000, .heightIncrement = 5000}},
      {"of enormous size", {.minWidth = 6000, .minHeight = 6000}},
      {"of negative size", {.minWidth = -5, .minHeight = -5, .maxWidth = -1, .maxHeight = -1}},
      {"of no application", {.instance = "", .className = "", .declaresProcess = false}},
      {"of another process", {.processId = 1}},
  };
  return kinds;
}

std::string hexadecimal(xcb_window_t window) {
  std::ostringstream text;
  text << std::hex << window;
  return text.str();
}

}  // namespace

const std::vector<Storm::Choice>& Storm::choices() {
  static const std::vector<Choice> all = {
      {"open", 16, &Storm::open},
      {"open many", 1, &Storm::openMany},
      {"close", 5, &Storm::close},
      {"destroy", 3, &Storm::destroy},
      {"withdraw", 1, &Storm::withdraw},
      {"maximise", 5, &Storm::maximise},
      {"fullscreen", 2, &Storm::fullscreen},
      {"minimise", 5, &Storm::minimise},
      {"activate", 14, &Storm::activate},
      {"move", 6, &Storm::move},
      {"retitle", 4, &Storm::retitle},
      {"lie", 8, &Storm::lie},
      {"drag", 4, &Storm::drag},
      {"flood", 1, &Storm::flood},
      {"freeze", 2, &Storm::freeze},
      {"resume", 2, &Storm::resume},
      {"kill an application", 2, &Storm::killApplication},
      {"shortcut", 14, &Storm::shortcut},
      {"switch desktop", 4, &Storm::switchDesktop},
      {"move to desktop", 3, &Storm::moveToDesktop},
      {"show desktop", 1, &Storm::showDesktop},
      {"change monitors", 1, &Storm::changeMonitors},
      {"replace the window manager", 1, &Storm::replaceWindowManager},
      {"kill the window manager", 1, &Storm::killWindowManager},
      {"kill Tilora", 2, &Storm::killTilora},
      {"end Tilora", 1, &Storm::endTilora},
  };
  return all;
}

const Storm::Choice& Storm::draw() {
  const std::vector<Choice>& all = choices();
  const int sum = std::accumulate(all.begin(), all.end(), 0, [](int before, const Choice& choice) { return before + choice.weight; });
  int drawn = chance_.between(0, sum - 1);
  const auto found = std::find_if(all.begin(), all.end(), [&](const Choice& choice) { return (drawn -= choice.weight) < 0; });
  return *found;
}

void Storm::note(const std::string& what) {
  trace_.push_back(what);
  if (trace_.size() > longestTrace) trace_.pop_front();
}

void Storm::rage(int actions) {
  constexpr int longestPause = 40;
  constexpr int fewWindows = 12;
  note("open");
  while (population_.windows(true).size() < fewWindows) open();
  for (int count = 0; count < actions; ++count) {
    counts_.clientsEnded += population_.forgetEnded();
    const Choice& choice = draw();
    note(choice.name);
    (this->*choice.action)();
    ++counts_.actions;
    // So that the programs come to different points in between.
    if (chance_.oneIn(2)) std::this_thread::sleep_for(std::chrono::milliseconds(chance_.between(0, longestPause)));
  }
}

Population::Reference Storm::anyWindow() {
  auto windows = population_.windows(false);
  if (windows.empty()) return {};
  const auto reference = chance_.pick(windows);
  trace_.back() += " " + hexadecimal(reference.window->id) + " " + reference.window->kind;
  return reference;
}

Application& Storm::anyApplication() {
  std::vector<Application*> awake;
  for (Application& application : population_.applications()) {
    if (!application.frozen) awake.push_back(&application);
  }
  if (awake.size() < fewApplications || (population_.applications().size() < mostApplications && chance_.oneIn(4))) {
    return population_.add(desk_.session(), "app" + std::to_string(++named_));
  }
  return *chance_.pick(awake);
}

void Storm::openIn(Application& application, const std::string& kind, WindowOptions options) {
  if (options.title == WindowOptions{}.title) options.title = application.name + " " + std::to_string(counts_.windowsOpened);
  if (options.className == WindowOptions{}.className) options.instance = options.className = application.name;
  const xcb_window_t id = application.client.open(options);
  const bool mayClose = askedToClose_.contains(id);
  application.windows.push_back({.id = id, .kind = kind, .maybeClosed = mayClose, .wasAskedToClose = mayClose});
  desk_.display().watch(id);
  ++counts_.windowsOpened;
  trace_.back() += " " + hexadecimal(id) + " " + kind;
}

void Storm::open() {
  if (population_.windows(true).size() >= mostWindows) return close();
  Application& application = anyApplication();
  if (!application.windows.empty() && chance_.oneIn(5)) {
    return openIn(application, "dialog", {.type = "DIALOG", .transientFor = application.windows.front().id});
  }
  const bool lies = chance_.oneIn(5);
  const auto& [kind, options] = chance_.pick(lies ? lyingWindows() : honestWindows());
  if (lies) ++counts_.lies["window " + kind];
  openIn(application, kind, options);
  application.windows.back().lies = lies;
}

void Storm::openMany() {
  for (int count = 0; count < 12; ++count) open();
}

void Storm::close() {
  const auto [application, window] = anyWindow();
  if (window == nullptr) return;
  desk_.display().close(window->id);
  askedToClose_.insert(window->id);
  window->maybeClosed = window->wasAskedToClose = true;
}

void Storm::destroy() {
  const auto reference = anyWindow();
  if (reference.window == nullptr) return;
  reference.application->client.destroy(reference.window->id);
  population_.forget(reference);
}

void Storm::withdraw() {
  const auto [application, window] = anyWindow();
  if (window == nullptr || window->maybeClosed) return;
  application->client.withdraw(window->id);
  window->withdrawn = true;
}

void Storm::maximise() {
  if (const auto [application, window] = anyWindow(); window != nullptr) {
    desk_.display().changeState(window->id, !chance_.oneIn(3), "_NET_WM_STATE_MAXIMIZED_HORZ", "_NET_WM_STATE_MAXIMIZED_VERT");
  }
}

void Storm::fullscreen() {
  if (const auto [application, window] = anyWindow(); window != nullptr) {
    desk_.display().changeState(window->id, chance_.oneIn(2), "_NET_WM_STATE_FULLSCREEN");
  }
}

void Storm::minimise() {
  if (const auto [application, window] = anyWindow(); window != nullptr) desk_.display().minimise(window->id);
}

void Storm::activate() {
  if (const auto [application, window] = anyWindow(); window != nullptr) desk_.display().activate(window->id);
}

void Storm::move() {
  const auto [application, window] = anyWindow();
  if (window == nullptr || window->maybeClosed) return;
  application->client.configure(
      window->id, {chance_.between(-300, 1700), chance_.between(-200, 1000), chance_.between(1, 1800), chance_.between(1, 1000)});
}

void Storm::retitle() {
  const auto [application, window] = anyWindow();
  if (window == nullptr || window->maybeClosed) return;
  application->client.setTitle(window->id, "title " + std::to_string(chance_.between(0, 1'000'000)));
}

void Storm::lie() {
  const auto [application, window] = anyWindow();
  if (window == nullptr) return;
  const Lie& lie = chance_.pick(lies());
  const std::string& property = chance_.pick(lie.properties);
  trace_.back() += ": " + lie.name + " in " + property;
  window->lies = true;
  ++counts_.lies[lie.name];
  harness::Display& display = desk_.display();
  xcb_change_property(display.xcb(), XCB_PROP_MODE_REPLACE, window->id, display.atom(property), display.atom(lie.type),
                      static_cast<std::uint8_t>(lie.format),
                      static_cast<std::uint32_t>(lie.bytes.size() * 8 / static_cast<unsigned>(lie.format)), lie.bytes.data());
  display.sync();
}

void Storm::drag() {
  const auto [application, window] = anyWindow();
  if (window == nullptr) return;
  ++counts_.drags;
  const auto frame = desk_.display().frame(window->id);
  if (!frame) return;
  const bool byTitle = chance_.oneIn(2);
  const Key modifier = chance_.oneIn(2) ? Key::leftAlt : Key::leftSuper;
  if (!byTitle) desk_.keyboard().press(modifier);
  int x = frame->x + frame->width / 2, y = frame->y + (byTitle ? 8 : frame->height / 2);
  // There may be a button to close there, of any window that is in front.
  for (const auto& other : population_.windows(true)) {
    const auto area = desk_.display().frame(other.window->id);
    if (area && area->overlaps({x, y, 1, 1})) other.window->wasAskedToClose = true;
  }
  desk_.pointer().moveTo(x, y);
  desk_.pointer().press();
  for (int step = 0; step < 6; ++step) {
    std::this_thread::sleep_for(std::chrono::milliseconds(chance_.between(5, 60)));
    desk_.pointer().moveTo(x += chance_.between(-80, 80), y += chance_.between(-60, 60));
  }
  desk_.pointer().release();
  if (!byTitle) desk_.keyboard().release(modifier);
}

/// Ten thousand changes in a second. Of a title that is kept somewhere every time it changes, there would be much.
void Storm::flood() {
  const auto [application, window] = anyWindow();
  if (window == nullptr) return;
  constexpr int batches = 40, batch = 250;
  constexpr std::size_t longTitle = 1000;
  constexpr auto pause = std::chrono::milliseconds(25);
  static const std::array<const char*, 4> properties = {"_NET_WM_NAME", "WM_NAME", "WM_NORMAL_HINTS", "WM_WINDOW_ROLE"};
  harness::Display& display = desk_.display();
  for (int part = 0; part < batches; ++part) {
    const auto next = std::chrono::steady_clock::now() + pause;
    for (std::uint32_t count = 0; count < batch; ++count) {
      const std::string value(count % properties.size() == 0 ? longTitle : 4, static_cast<char>('a' + count % 26));
      xcb_change_property(display.xcb(), XCB_PROP_MODE_REPLACE, window->id, display.atom(properties.at(count % properties.size())),
                          XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(value.size()), value.data());
    }
    display.sync();
    counts_.propertyChanges += batch;
    std::this_thread::sleep_until(next);
  }
  window->lies = true;
}

void Storm::freeze() {
  Application& application = anyApplication();
  ++counts_.clientsFrozen;
  application.client.suspend();
  application.frozen = true;
}

void Storm::resume() {
  for (Application& application : population_.applications()) {
    if (!std::exchange(application.frozen, false)) continue;
    application.client.resume();
    return;
  }
}

void Storm::killApplication() {
  Application& application = anyApplication();
  ++counts_.clientsKilled;
  application.client.process().signal(SIGKILL);
  application.client.process().waitForEnd();
  population_.forget(application);
}

void Storm::shortcut() {
  static const std::array<Key, 5> keys = {Key::leftBracket, Key::rightBracket, Key::space, Key::j, Key::leftBracket};
  for (int count = chance_.between(1, 3); count > 0; --count) {
    ++counts_.shortcuts;
    desk_.keyboard().chord({Key::leftAlt, Key::leftShift, chance_.pick(keys)});
  }
}

void Storm::switchDesktop() { desk_.display().showDesktop(static_cast<std::uint32_t>(chance_.between(0, lastDesktop))); }

void Storm::moveToDesktop() {
  constexpr std::uint32_t allDesktops = 0xffffffffU;
  const auto [application, window] = anyWindow();
  if (window == nullptr) return;
  desk_.display().moveToDesktop(window->id, chance_.oneIn(5) ? allDesktops : static_cast<std::uint32_t>(chance_.between(0, lastDesktop)));
}

void Storm::showDesktop() { desk_.display().sendRootMessage(desk_.display().root(), "_NET_SHOWING_DESKTOP", {chance_.oneIn(2) ? 1U : 0U}); }

void Storm::changeMonitors() { desk_.changeMonitors(); }

void Storm::replaceWindowManager() {
  static const std::vector<harness::WindowManagerKind> all(harness::allWindowManagers.begin(), harness::allWindowManagers.end());
  const auto kind = chance_.oneIn(2) ? desk_.windowManager() : chance_.pick(all);
  trace_.back() += " with " + harness::nameOf(kind);
  desk_.replaceWindowManager(kind);
}

void Storm::killWindowManager() {
  desk_.killWindowManager();
  if (chance_.oneIn(2)) desk_.ensureWindowManager();
}

void Storm::killTilora() {
  if (!killsTilora_) return;
  desk_.killTilora();
  if (chance_.oneIn(2)) desk_.startTilora();
}

void Storm::endTilora() {
  if (!killsTilora_) return;
  desk_.endTilora();
  if (chance_.oneIn(2)) desk_.startTilora();
}

}  // namespace tilora::chaos
