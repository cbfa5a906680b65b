// What is asked of a desktop after a storm.
#include "calm.h"

#include <algorithm>
#include <iostream>
#include <sstream>
#include <thread>
#include <utility>

#include "harness/place.h"
#include "lies.h"

namespace tilora::chaos {
namespace {

using harness::Key;
using harness::Place;

/// How long a window may take to come back on a machine that is busy.
constexpr auto patience = std::chrono::seconds(10);
/// How long Tilora may take for a pass.
constexpr auto longestStandstill = std::chrono::seconds(30);
constexpr int mostAttempts = 5;
constexpr int mostMappings = 3;
/// How often in one calm a window manager may end by itself before another one takes its place.
constexpr int mostRevivals = 3;
/// More windows lost after one storm tell nothing new.
constexpr int enoughLost = 3;
/// With what Tilora marks a window that it has hidden.
constexpr const char* mark = "_TILORA_HIDDEN";
/// How much more than after its first storm a life may hold, in memory of its own.
constexpr std::size_t mostGrowthInKilobytes = 1024;
constexpr std::size_t mostMoreDescriptors = 2;

bool isListed(harness::Display& display, xcb_window_t window) {
  const auto list = display.clientList();
  return std::find(list.begin(), list.end(), window) != list.end();
}

/// Fluxbox forgets to take _NET_WM_STATE_HIDDEN away that another manager has left, WM_STATE tells the truth then; Xfwm4 forgets both when
/// it shows and focuses the dialog of a parent that is iconic.
bool isShown(harness::Display& display, xcb_window_t window) {
  constexpr std::uint32_t normalState = 1;
  if (!display.viewable(window)) return false;
  const auto state = display.cardinals(window, "WM_STATE");
  return !display.iconic(window) || (!state.empty() && state.front() == normalState) || display.focusedWindow() == window;
}

}  // namespace

void Calm::inspect(bool endsTilora) {
  revivals_ = 0;
  letGo();
  desk_.expectTiloraRuns();
  desk_.startTilora();
  expectWorkGoesOn();
  settleClosed();
  mapDropped();
  expectAllCanBeBroughtBack("with Tilora");
  expectSettingsAreWhole();
  retitleOften();
  expectHoldingsStay();
  desk_.expectTiloraRuns();
  desk_.expectTiloraIsSilent();
  desk_.expectNoUnexpectedErrors();
  if (endsTilora) {
    expectCleanEnd();
    expectAllCanBeBroughtBack("after a clean end");
    desk_.startTilora();
  }
  closeKeepers();
  desk_.display().clearEvents();
  stormyLife_ = desk_.tiloraLives();
}

void Calm::letGo() {
  for (const int button : {1, 2, 3}) desk_.pointer().release(button);
  for (const Key key : {Key::leftAlt, Key::leftShift, Key::leftSuper, Key::leftControl}) desk_.keyboard().release(key);
  for (Application& application : population_.applications()) {
    if (std::exchange(application.frozen, false)) application.client.resume();
  }
  counts_.clientsEnded += population_.forgetEnded();
  desk_.ensureWindowManager();
  reviveWindowManager();
  desk_.display().sendRootMessage(desk_.display().root(), "_NET_SHOWING_DESKTOP", {0});
  for (const auto& [application, window] : population_.windows(true)) {
    window->remapped = std::exchange(window->withdrawn, false);
    if (window->remapped) application->client.map(window->id);
  }
}

/// A window manager that died of a lie, or of the size that it has given to a window for one, would die of it again.
void Calm::cureLies() {
  harness::Display& display = desk_.display();
  for (const auto& [application, window] : population_.windows(true)) {
    if (!std::exchange(window->lies, false) || !display.clientArea(window->id)) continue;
    for (const Lie& lie : lies()) {
      for (const std::string& property : lie.properties) xcb_delete_property(display.xcb(), window->id, display.atom(property));
    }
    application->client.setTitle(window->id, "cured");
    application->client.configure(window->id, harness::WindowOptions{}.geometry);
  }
  display.sync();
}

/// Starts the window manager if it has ended by itself, without what it may have died of; another one if that does not help, or not for
/// long.
void Calm::reviveWindowManager() {
  if (desk_.managerRuns()) return;
  cureLies();
  desk_.ensureWindowManager();
  if (!desk_.managerRuns() || ++revivals_ > mostRevivals) takeAnotherWindowManager();
}

/// There are desktops of which one dies whenever it starts: Mutter for example, when it does not know the mode of a monitor.
void Calm::takeAnotherWindowManager() {
  const auto kind = desk_.windowManager();
  desk_.replaceWindowManager(kind == harness::WindowManagerKind::openbox ? harness::WindowManagerKind::xfwm4
                                                                         : harness::WindowManagerKind::openbox);
}

void Calm::waitForAPass() {
  if (desk_.makesAPass(patience)) return;
  // There is none without a window manager, and one that was started anew may end again.
  for (int attempt = 0; attempt < mostAttempts; ++attempt) {
    reviveWindowManager();
    mapDropped();
    if (desk_.makesAPass(longestStandstill)) return;
    if (desk_.managerRuns()) break;
  }
  desk_.fault("Tilora stands still, " + desk_.describeManager());
}

void Calm::expectWorkGoesOn() {
  for (int attempt = 0; attempt < mostAttempts; ++attempt) {
    const std::string name = "keeper" + std::to_string(++keepers_);
    if (opensAndTiles(name)) return;
    // Is it the window manager that stands still? Without it nobody can tell.
    cureLies();
    desk_.restartWindowManager();
  }
  std::ostringstream text;
  harness::Display& display = desk_.display();
  text << "no window is tiled any more, showing desktop " << (display.cardinals(display.root(), "_NET_SHOWING_DESKTOP") == std::vector{1U})
       << ", focus " << std::hex << display.focusedWindow() << std::dec;
  for (const harness::Monitor& monitor : display.monitors()) {
    text << ", monitor " << monitor.geometry << " free " << display.visibleFrame(monitor.geometry);
  }
  desk_.fault(text.str() + ": " + display.describe());
}

std::optional<xcb_window_t> Calm::openKeeper(const std::string& name) {
  harness::Display& display = desk_.display();
  Application& application = population_.add(desk_.session(), name);
  const xcb_window_t window = application.client.open({.title = name, .instance = name, .className = name});
  application.windows.push_back({.id = window, .kind = "keeper"});
  ++counts_.windowsOpened;
  display.watch(window);
  const auto isActive = [&] { return display.activeWindow() == window && display.viewable(window); };
  if (!display.waitUntil([&] { return isListed(display, window); }, patience)) return std::nullopt;
  display.activate(window);
  if (!display.waitUntil(isActive, patience)) return std::nullopt;
  return window;
}

bool Calm::opensAndTiles(const std::string& name) {
  harness::Display& display = desk_.display();
  const auto opened = openKeeper(name);
  if (!opened) return false;
  const xcb_window_t window = *opened;
  const bool left = keepers_ % 2 == 0;
  for (int attempt = 0; attempt < mostAttempts; ++attempt) {
    desk_.keyboard().chord({Key::leftAlt, Key::leftShift, left ? Key::leftBracket : Key::rightBracket});
    const auto isTiled = [&] {
      const auto frame = display.frame(window);
      const auto monitors = display.monitors();
      return frame && std::any_of(monitors.begin(), monitors.end(), [&](const harness::Monitor& monitor) {
               const auto wanted = harness::edgesOf(left ? Place::left : Place::right, display.visibleFrame(monitor.geometry));
               return harness::fits(*frame, wanted, {});
             });
    };
    if (!display.waitUntil(isTiled, std::chrono::seconds(2))) {
      display.activate(window);
      continue;
    }
    placements_[name] = left ? "left" : "right";
    return true;
  }
  return false;
}

/// Whatever a storm does, nobody gives them another place from now on.
void Calm::closeKeepers() {
  std::vector<Application*> keepers;
  for (Application& application : population_.applications()) {
    if (application.name.starts_with("keeper")) keepers.push_back(&application);
  }
  for (Application* keeper : keepers) population_.forget(*keeper);
}

/// A window that was asked to close and is still there is expected to stay.
void Calm::settleClosed() {
  harness::Display& display = desk_.display();
  for (const auto& reference : population_.windows(true)) {
    if (!reference.window->maybeClosed) continue;
    if (!display.waitUntil([&] { return !display.clientArea(reference.window->id); }, std::chrono::milliseconds(200))) {
      reference.window->maybeClosed = false;
    } else {
      population_.forget(reference);
    }
  }
}

/// Tilora never unmaps a window. A window manager does when it ends, and one that ends has no more ears for new windows.
void Calm::mapDropped() {
  const bool isNew = std::exchange(managerChanges_, counts_.managerChanges()) != counts_.managerChanges();
  harness::Display& display = desk_.display();
  for (const auto& [application, window] : population_.windows(true)) {
    const auto id = window->id;
    if (!isNew && !window->remapped) continue;
    for (int attempt = 0; attempt < mostMappings; ++attempt) {
      if (!display.clientArea(id) || display.waitUntil([&] { return isListed(display, id); }, std::chrono::seconds(2))) break;
      ++counts_.dropped;
      application->client.withdraw(id);
      application->client.map(id);
    }
  }
}

bool Calm::comesBack(const Population::Reference& reference) {
  harness::Display& display = desk_.display();
  const xcb_window_t window = reference.window->id;
  const auto isSettled = [&] { return isListed(display, window) || !desk_.managerRuns(); };
  if (!display.waitUntil(isSettled, patience) || !isListed(display, window)) {
    // JWM shows some windows without managing them.
    const auto area = display.clientArea(window);
    const bool isSeen = area && display.viewable(window) && display.rootGeometry().overlaps(*area);
    if (isSeen) ++counts_.unmanaged;
    return isSeen;
  }
  const auto desktop = display.cardinals(window, "_NET_WM_DESKTOP");
  if (!desktop.empty() && desktop.front() != 0xffffffffU && desktop.front() != display.currentDesktop()) {
    // A taskbar shows the window's desktop first.
    display.showDesktop(desktop.front());
    display.waitUntil([&] { return display.currentDesktop() == desktop.front(); }, patience);
  }
  for (int attempt = 0; attempt < mostAttempts; ++attempt) {
    display.activate(window);
    if (display.waitUntil([&] { return isShown(display, window); }, patience / mostAttempts)) return true;
    if (!desk_.managerRuns()) return false;
  }
  return false;
}

/// The window manager may have ended since the storm, or stand still.
bool Calm::comesBackWithAManagerThatWorks(const Population::Reference& reference) {
  for (int attempt = 0; attempt < mostAttempts; ++attempt) {
    const int before = counts_.managerChanges();
    reviveWindowManager();
    if (!openKeeper("keeper" + std::to_string(++keepers_))) {
      cureLies();
      desk_.restartWindowManager();
    }
    if (counts_.managerChanges() == before) return false;
    mapDropped();
    if (comesBack(reference)) return true;
  }
  return false;
}

/// Whether the window manager does not bring the window back without Tilora either, but does so once it has been started anew, or another
/// one does because this one dies of the desktop whenever it starts.
bool Calm::isForgottenByItsManager(const Population::Reference& reference) {
  const bool withTilora = desk_.tiloraRuns();
  // Not ended: at a clean end Tilora shows windows and may go to other desktops for that, which mends a manager (JWM) that takes a window
  // for mapped that is not.
  if (withTilora) desk_.killTilora();
  const bool comesBackWithout = withTilora && comesBack(reference) && desk_.managerRuns();
  if (!comesBackWithout) {
    std::clog << "not brought back by " << desk_.describeManager() << ": " << describe(reference) << std::endl;
    cureLies();
    desk_.restartWindowManager();
    mapDropped();
  }
  if (withTilora) desk_.startTilora();
  if (comesBackWithout) return false;
  if (comesBack(reference)) return true;
  if (desk_.managerRuns()) return false;
  takeAnotherWindowManager();
  mapDropped();
  return comesBack(reference);
}

/// Whether the window is gone, and not by itself: it was asked to close, or its application has ended.
bool Calm::hasBeenEnded(const Population::Reference& reference) {
  if (desk_.display().clientArea(reference.window->id)) return false;
  return reference.window->wasAskedToClose || !reference.application->client.process().running();
}

void Calm::expectAllCanBeBroughtBack(const std::string& when) {
  waitForAPass();
  int count = 0;
  const int lostBefore = counts_.lost;
  for (const auto& reference : population_.windows(true)) {
    desk_.expectServerRuns();
    if (counts_.lost - lostBefore >= enoughLost) return;
    // So that Tilora hides again what it was made to show.
    if (++count % 3 == 0) waitForAPass();
    bool isBack = comesBack(reference);
    if (hasBeenEnded(reference)) continue;
    isBack = isBack || comesBackWithAManagerThatWorks(reference);
    if (hasBeenEnded(reference)) continue;
    if (isBack) {
      ++counts_.windowsActivated;
      continue;
    }
    const std::string before = describe(reference);
    if (isForgottenByItsManager(reference)) {
      ++counts_.forgotten;
      continue;
    }
    if (desk_.serverEnds()) desk_.expectServerRuns();
    ++counts_.lost;
    std::cout << "LOST " << when << " on " << harness::nameOf(desk_.windowManager()) << ", " << desk_.describeManager() << ": " << before
              << "; now " << describe(reference) << std::endl;
    population_.forget(reference);
  }
}

std::vector<Population::Reference> Calm::hiddenHere() {
  harness::Display& display = desk_.display();
  std::vector<Population::Reference> hidden;
  for (const auto& reference : population_.windows(true)) {
    const auto id = reference.window->id;
    const auto desktop = display.cardinals(id, "_NET_WM_DESKTOP");
    const bool isHere = desktop.empty() || desktop.front() == display.currentDesktop();
    if (isHere && display.hasProperty(id, mark) && display.iconic(id)) hidden.push_back(reference);
  }
  return hidden;
}

/// What Tilora has hidden on this desktop is shown again by nobody but itself, and nothing is marked any more: so it is also with what a
/// killed one had hidden.
void Calm::expectCleanEnd() {
  harness::Display& display = desk_.display();
  // Beside a window with a place the others are hidden.
  expectWorkGoesOn();
  waitForAPass();
  const auto hidden = hiddenHere();
  if (chance_.oneIn(2)) {
    desk_.killTilora();
    desk_.startTilora();
    waitForAPass();
    counts_.hiddenTakenOver += static_cast<int>(hidden.size());
  }
  desk_.endTilora();
  for (const auto& reference : hidden) {
    const auto id = reference.window->id;
    if (display.waitUntil([&] { return isShown(display, id); }, patience) || hasBeenEnded(reference)) continue;
    desk_.fault("hidden after a clean end: " + describe(reference));
    break;
  }
  for (const auto& reference : population_.windows(true)) {
    if (display.hasProperty(reference.window->id, mark)) desk_.fault("marked after a clean end: " + describe(reference));
  }
  counts_.hiddenShownAtEnd += static_cast<int>(hidden.size());
}

std::string Calm::describe(const Population::Reference& reference) {
  harness::Display& display = desk_.display();
  const xcb_window_t window = reference.window->id;
  std::ostringstream text;
  text << std::hex << window << std::dec << " " << reference.window->kind << " of " << reference.application->name;
  if (!display.clientArea(window)) {
    return text.str() + " does not exist" + (reference.application->client.process().running() ? ", its application runs" : "");
  }
  text << (isListed(display, window) ? " listed" : " not listed") << (display.viewable(window) ? " viewable" : " not viewable");
  if (display.outermost(window) == window) text << " without a frame";
  for (const std::string& state : display.atoms(window, "_NET_WM_STATE")) text << " " << state;
  for (const char* name : {"WM_STATE", "_TILORA_HIDDEN", "_NET_WM_DESKTOP", "WM_TRANSIENT_FOR"}) {
    const auto values = display.cardinals(window, name);
    if (!values.empty()) text << " " << name << "=" << values.front();
  }
  if (const auto frame = display.frame(window)) text << " frame " << *frame;
  return text.str();
}

void Calm::expectSettingsAreWhole() {
  const auto holdsAll = [this] {
    const auto stored = desk_.storedPlacements();
    return stored && std::all_of(placements_.begin(), placements_.end(), [&](const auto& placement) {
             return std::any_of(stored->begin(), stored->end(), [&](const auto& entry) {
               return entry.first.find(placement.first) != std::string::npos && entry.second == placement.second;
             });
           });
  };
  // The file is written behind the back of the main thread.
  if (!desk_.display().waitUntil(holdsAll, patience)) {
    desk_.fault("the settings do not hold the placements");
    placements_.clear();
  }
  counts_.placementsKept += static_cast<int>(placements_.size());
}

/// Slowly enough for Tilora to take notice each time: what it kept of each title would come to more than it may grow by.
void Calm::retitleOften() {
  constexpr int changes = 500;
  constexpr std::size_t length = 2000;
  constexpr auto pause = std::chrono::milliseconds(2);
  const auto windows = population_.windows(true);
  if (windows.empty()) return;
  harness::Display& display = desk_.display();
  const xcb_window_t window = windows.back().window->id;
  for (int number = 0; number < changes; ++number) {
    const std::string title(length, static_cast<char>('a' + number % 26));
    xcb_change_property(display.xcb(), XCB_PROP_MODE_REPLACE, window, display.atom("_NET_WM_NAME"), display.atom("UTF8_STRING"), 8,
                        static_cast<std::uint32_t>(title.size()), title.data());
    display.sync();
    std::this_thread::sleep_for(pause);
  }
  counts_.titles += changes;
  // Fluxbox takes ever longer over a long one.
  windows.back().application->client.setTitle(window, "calm");
  waitForAPass();
}

void Calm::expectHoldingsStay() {
  const auto now = desk_.tiloraHoldings();
  if (!now) return;
  counts_.mostKilobytes = std::max(counts_.mostKilobytes, now->residentKilobytes);
  counts_.mostDescriptors = std::max(counts_.mostDescriptors, now->descriptors);
  if (desk_.tiloraLives() != stormyLife_) return;
  if (std::exchange(measuredLife_, desk_.tiloraLives()) != desk_.tiloraLives()) {
    first_ = *now;
    return;
  }
  if (now->descriptors > first_.descriptors + mostMoreDescriptors) {
    desk_.fault("descriptors have grown from " + std::to_string(first_.descriptors) + " to " + std::to_string(now->descriptors));
  }
  if (now->ownKilobytes > first_.ownKilobytes + mostGrowthInKilobytes) {
    desk_.fault("memory has grown from " + std::to_string(first_.ownKilobytes) + " to " + std::to_string(now->ownKilobytes) + " kB");
  }
}

}  // namespace tilora::chaos
