// What every test of the windows of the real program starts from: the menu under its icon and the settings window.
#pragma once

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>
#include <vector>

#include "desktop_test.h"
#include "harness/panel.h"

namespace tilora::harness {

/// Where a control of the settings window is, from the top-left of the window.
struct Spot {
  int x = 0;
  int y = 0;
};
inline constexpr Spot decrement = {552, 152};
inline constexpr Spot increment = {584, 152};
inline constexpr Spot loginSwitch = {577, 195};
inline constexpr Spot loginItemsLink = {126, 230};
/// In the symbol of the line that says why the switch turned back.
inline constexpr Spot loginError = {47, 257};
inline constexpr Spot resetButton = {139, 531};
inline constexpr std::array<Spot, 4> recordButtons = {{{537, 339}, {537, 381}, {537, 423}, {537, 465}}};

/// The same in the menu of a user who has consented.
inline constexpr std::array<Spot, 6> rows = {{{150, 68}, {150, 121}, {150, 174}, {150, 227}, {150, 280}, {150, 340}}};
inline constexpr Spot quitButton = {365, 404};

class InterfaceTest : public DesktopTest {
 protected:
  using DesktopTest::DesktopTest;
  /// Returns when it is there: a click on the desktop where it is going to be would take the focus from the active window.
  ManagedProcess startPanel(Panel kind, int monitor = 1) {
    const PixelRect everything = display.rootGeometry();
    EXPECT_TRUE(comesTrue([&] { return display.visibleFrame(everything) == everything; }));
    ManagedProcess started = harness::startPanel(kind, session, monitor);
    EXPECT_TRUE(comesTrue([&] { return display.visibleFrame(everything) != everything; }));
    return started;
  }
  PixelRect icon() { return embeddedIcon(display).value_or(PixelRect{4, 4, 24, 24}); }
  std::optional<PixelRect> menu() { return openMenuArea(display); }
  /// Waits for something that no event tells.
  static testing::AssertionResult waitsFor(const std::function<bool()>& holds, const std::string& wanted) {
    const auto deadline = std::chrono::steady_clock::now() + defaultDeadline;
    while (!holds()) {
      if (std::chrono::steady_clock::now() > deadline) return testing::AssertionFailure() << "wanted: " << wanted;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return testing::AssertionSuccess();
  }

  /// Clicks the icon until the menu is there: nobody tells when a panel has taken the icon.
  testing::AssertionResult openMenu() {
    for (int attempts = 0; attempts < 12; ++attempts) {
      const PixelRect place = icon();
      pointer.click(place.x + place.width / 2, place.y + place.height / 2);
      if (!display.waitUntil([&] { return menu().has_value(); }, std::chrono::milliseconds(1500))) continue;
      return waitsFor([&] { return inputIsGrabbed(); }, "the menu takes the keyboard and the pointer");
    }
    return testing::AssertionFailure() << "the menu does not open\n" << tilora->output();
  }
  /// Whether somebody has the keyboard and the pointer to himself. Asked with a time that is yet to come: that is refused when nobody has
  /// them, so that asking takes nothing.
  bool inputIsGrabbed() {
    constexpr xcb_timestamp_t minutes = 600'000;
    const xcb_timestamp_t later = display.serverTime() + minutes;
    const auto keyboardCookie = xcb_grab_keyboard(display.xcb(), 0, display.root(), later, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const auto pointerCookie = xcb_grab_pointer(display.xcb(), 0, display.root(), 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                                XCB_WINDOW_NONE, XCB_CURSOR_NONE, later);
    xcb_grab_keyboard_reply_t* ofKeyboard = xcb_grab_keyboard_reply(display.xcb(), keyboardCookie, nullptr);
    xcb_grab_pointer_reply_t* ofPointer = xcb_grab_pointer_reply(display.xcb(), pointerCookie, nullptr);
    const auto isTaken = [](const auto* reply) { return reply != nullptr && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED; };
    const bool grabbed = isTaken(ofKeyboard) && isTaken(ofPointer);
    std::free(ofKeyboard);
    std::free(ofPointer);
    return grabbed;
  }
  testing::AssertionResult menuCloses() {
    return comesTrue([&] { return !menu(); });
  }
  /// Goes down to a row, from 1 on, and presses Return.
  void choose(int row) {
    for (int i = 0; i < row; ++i) keyboard.tap(Key::downArrow);
    keyboard.tap(Key::enter);
  }

  xcb_window_t settings() {
    for (const xcb_window_t window : display.clientList()) {
      if (display.text(window, "_NET_WM_NAME") == "Tilora Settings") return window;
    }
    return XCB_WINDOW_NONE;
  }
  /// Starts the program a second time, and waits until the settings have come to the front for the last time.
  testing::AssertionResult askToShow() {
    const testing::AssertionResult shown = askToDraw();
    return shown ? passes(2) : shown;
  }
  /// The same, but they may come to the front again within the next fifth of a second.
  testing::AssertionResult askToDraw() {
    const testing::AssertionResult active = askForSettings();
    return active ? waitsFor([&] { return isBlue(faceOf(recordButtons.at(0))); }, "the settings are drawn") : active;
  }
  /// The same, wherever the settings are scrolled to.
  testing::AssertionResult askForSettings() {
    ManagedProcess second = runTilora();
    if (second.waitForEnd() != ProcessEnd{.status = 0, .signal = {}}) return testing::AssertionFailure() << second.output();
    const auto isActive = [&] {
      return settings() != XCB_WINDOW_NONE && display.activeWindow() == settings() && display.viewable(settings());
    };
    return comesTrue(isActive);
  }
  /// A place on the face of a record button beside its title.
  static Spot faceOf(const Spot& button) { return {button.x - 52, button.y}; }
  /// The colour of a pixel of the settings window: blue, green and red.
  std::array<int, 3> colour(const Spot& spot) {
    const auto cookie = xcb_get_image(display.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, settings(), static_cast<std::int16_t>(spot.x),
                                      static_cast<std::int16_t>(spot.y), 1, 1, ~0U);
    xcb_get_image_reply_t* reply = xcb_get_image_reply(display.xcb(), cookie, nullptr);
    std::array<int, 3> bytes = {};
    if (reply != nullptr) std::copy_n(xcb_get_image_data(reply), bytes.size(), bytes.begin());
    std::free(reply);
    return bytes;
  }
  /// What the screen shows.
  std::vector<std::uint8_t> picture(const PixelRect& area) {
    const auto cookie = xcb_get_image(display.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, display.root(), static_cast<std::int16_t>(area.x),
                                      static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
                                      static_cast<std::uint16_t>(area.height), ~0U);
    xcb_get_image_reply_t* reply = xcb_get_image_reply(display.xcb(), cookie, nullptr);
    std::vector<std::uint8_t> bytes;
    if (reply != nullptr) bytes.assign(xcb_get_image_data(reply), xcb_get_image_data(reply) + xcb_get_image_data_length(reply));
    std::free(reply);
    return bytes;
  }
  bool isBlue(const Spot& spot) { return colour(spot)[0] > colour(spot)[2] + 50; }
  bool isOrange(const Spot& spot) { return colour(spot)[2] > colour(spot)[0] + 50; }
  testing::AssertionResult startRecording(std::size_t row) {
    click(recordButtons.at(row));
    return waitsFor([&] { return isOrange(faceOf(recordButtons.at(row))); }, "the row is being recorded");
  }
  void click(const Spot& spot) {
    const PixelRect area = display.clientArea(settings()).value();
    pointer.click(area.x + spot.x, area.y + spot.y);
  }

  nlohmann::json stored(const std::string& key) {
    std::ifstream file(session.home().path() / "config/tilora/settings.json");
    if (!file) return {};
    const auto all = nlohmann::json::parse(file, nullptr, false);
    return all.is_object() && all.contains(key) ? all.at(key).at("value") : nlohmann::json();
  }
  /// Waits for the disk.
  testing::AssertionResult comesToBeStored(const std::string& key, const std::function<bool(const nlohmann::json&)>& holds) {
    const testing::AssertionResult result = waitsFor([&] { return holds(stored(key)); }, key);
    return result ? result : testing::AssertionFailure() << key << " is " << stored(key);
  }
  testing::AssertionResult isBound(const std::string& action, int keyCode, int modifiers) {
    return comesToBeStored("Tilora.ShortcutBindings", [&](const nlohmann::json& bindings) {
      if (!bindings.is_string()) return false;
      const auto all = nlohmann::json::parse(bindings.get<std::string>());
      return all.at(action) == nlohmann::json{{"keyCode", keyCode}, {"modifiers", modifiers}};
    });
  }
  testing::AssertionResult paddingIs(double padding) {
    return comesToBeStored("Tilora.WindowPadding", [&](const nlohmann::json& value) { return value == padding; });
  }
  /// The memory that the program has made for itself, in kB: neither files nor what it shares with others.
  long ownMemory() {
    std::ifstream rollup("/proc/" + std::to_string(tilora->pid()) + "/smaps_rollup");
    std::string word;
    while (rollup >> word) {
      if (word == "Pss_Anon:" && rollup >> word) return std::stol(word);
    }
    return -1;
  }

  /// Starts Tilora so that `ownMemory` shows what it frees: AddressSanitizer, where it is built in, would keep 256 MB of that.
  void startTiloraWithoutQuarantine() {
    const char* const others = std::getenv("ASAN_OPTIONS");
    startTilora({{"ASAN_OPTIONS",
                  (others == nullptr ? "" : others + std::string(":")) + "quarantine_size_mb=0:thread_local_quarantine_size_kb=0"}});
  }
  /// Opens and closes a window many times and asks what that has left behind.
  void expectNothingIsKept(int openings, const std::function<void()>& openAndClose) {
    // In kB for each opening: less than a row of the menu or of the settings takes.
    constexpr long leastKept = 3;
    const auto repeat = [&](int times) {
      for (int i = 0; i < times && !HasFatalFailure(); ++i) openAndClose();
    };
    repeat(10);
    const long before = ownMemory();
    ASSERT_GT(before, 0);
    repeat(openings);
    const long kept = ownMemory() - before;
    RecordProperty("keptKilobytes", std::to_string(kept));
    EXPECT_LT(kept, openings * leastKept) << before;
  }

  std::optional<ManagedProcess> panel;
};

}  // namespace tilora::harness
