// The icon, the menu and the settings window of the real program, with real panels, keys and pointer.
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <thread>

#include "desktop_test.h"
#include "harness/panel.h"
#include "harness/settings_manager.h"

namespace tilora::harness {
namespace {

using namespace std::chrono_literals;

/// Where a control of the settings window is, from the top-left of the window.
struct Spot {
  int x = 0;
  int y = 0;
};
constexpr Spot decrement = {552, 152};
constexpr Spot increment = {584, 152};
constexpr Spot resetButton = {139, 531};
constexpr std::array<Spot, 4> recordButtons = {{{537, 339}, {537, 381}, {537, 423}, {537, 465}}};

class InterfaceTest : public DesktopTest {
 protected:
  ManagedProcess startPanel(Panel kind) { return harness::startPanel(kind, session); }
  PixelRect icon() { return embeddedIcon(display).value_or(PixelRect{4, 4, 24, 24}); }
  std::optional<PixelRect> menu() { return openMenuArea(display); }
  /// Waits for something that no event tells.
  static testing::AssertionResult waitsFor(const std::function<bool()>& holds, const std::string& wanted) {
    const auto deadline = std::chrono::steady_clock::now() + defaultDeadline;
    while (!holds()) {
      if (std::chrono::steady_clock::now() > deadline) return testing::AssertionFailure() << "wanted: " << wanted;
      std::this_thread::sleep_for(10ms);
    }
    return testing::AssertionSuccess();
  }

  /// Clicks the icon until the menu is there: nobody tells when a panel has taken the icon.
  testing::AssertionResult openMenu() {
    for (int attempts = 0; attempts < 12; ++attempts) {
      const PixelRect place = icon();
      pointer.click(place.x + place.width / 2, place.y + place.height / 2);
      if (!display.waitUntil([&] { return menu().has_value(); }, 1500ms)) continue;
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
  /// Starts the program a second time.
  testing::AssertionResult askToShow() {
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

/// Every one with a panel that hosts the icon.
class PanelTest : public InterfaceTest {
 protected:
  void everyRowPlacesTheActiveWindow(Panel kind) {
    panel.emplace(startPanel(kind));
    App& app = open("app");
    startTilora();
    constexpr std::array placeOfRow = {std::pair(3, Place::left), std::pair(4, Place::right), std::pair(6, Place::floating),
                                       std::pair(5, Place::full)};
    for (const auto& [row, place] : placeOfRow) {
      ASSERT_TRUE(openMenu());
      EXPECT_EQ(display.activeWindow(), app.window);
      choose(row);
      EXPECT_TRUE(menuCloses());
      EXPECT_TRUE(isTiled(app.window, place)) << row;
      EXPECT_TRUE(isActive(app.window));
    }
    EXPECT_THAT(app.client.keysPressed(app.window), testing::IsEmpty());
  }
};

TEST_P(PanelTest, EveryRowPlacesTheActiveWindowFromTint2) { everyRowPlacesTheActiveWindow(Panel::tint2); }
TEST_P(PanelTest, EveryRowPlacesTheActiveWindowFromTrayer) { everyRowPlacesTheActiveWindow(Panel::trayer); }
TEST_P(PanelTest, EveryRowPlacesTheActiveWindowFromXfcePanel) { everyRowPlacesTheActiveWindow(Panel::xfce); }

TEST_P(PanelTest, TheMenuOpensUnderItsIconInsideTheVisibleFrame) {
  panel.emplace(startPanel(Panel::tint2));
  startTilora();
  ASSERT_TRUE(openMenu());
  const PixelRect area = menu().value();
  const PixelRect visible = display.visibleFrame(wholeScreen);
  EXPECT_EQ(area.width, 420);
  EXPECT_EQ(area.y, visible.y);
  EXPECT_EQ(area.x, icon().x);
  EXPECT_TRUE(visible.contains(area)) << area;
}

TEST_P(PanelTest, AClickOnARowActs) {
  panel.emplace(startPanel(Panel::trayer));
  const App& app = open("app");
  startTilora();
  ASSERT_TRUE(openMenu());
  constexpr Spot leftRow = {150, 174};
  pointer.click(menu()->x + leftRow.x, menu()->y + leftRow.y);
  EXPECT_TRUE(isTiled(app.window, Place::left));
  EXPECT_TRUE(menuCloses());
}

TEST_P(PanelTest, AClickElsewhereEscapeAndTheIconCloseTheMenuAndTheKeyboardIsBack) {
  panel.emplace(startPanel(Panel::tint2));
  App& app = open("app");
  startTilora();
  ASSERT_TRUE(openMenu());
  pointer.click(1200, 700);
  EXPECT_TRUE(menuCloses());
  ASSERT_TRUE(openMenu());
  keyboard.tap(Key::escape);
  EXPECT_TRUE(menuCloses());
  ASSERT_TRUE(openMenu());
  pointer.click(icon().x + 12, icon().y + 12);
  EXPECT_TRUE(menuCloses());
  keyboard.tap(Key::a);
  EXPECT_TRUE(comesTrue([&] { return !app.client.keysPressed(app.window).empty(); }));
  EXPECT_THAT(app.client.keysPressed(app.window), testing::ElementsAre(static_cast<int>(Key::a)));
}

TEST_P(PanelTest, TheIconComesToAPanelThatStartsLaterOrAnew) {
  startTilora();
  for (int times = 0; times < 2; ++times) {
    panel.emplace(startPanel(Panel::tint2));
    ASSERT_TRUE(openMenu()) << times;
    keyboard.tap(Key::escape);
    ASSERT_TRUE(menuCloses());
    panel->terminate();
  }
}

TEST_P(PanelTest, TheIconComesToAStatusNotifierPanelThatStartsLater) {
  session.startBus();
  startTilora();
  panel.emplace(startPanel(Panel::xfce));
  EXPECT_TRUE(openMenu());
}

TEST_P(PanelTest, TheFirstRowAndTheSettingsKeyOpenTheSettings) {
  panel.emplace(startPanel(Panel::trayer));
  open("app");
  startTilora();
  for (const Key modifier : {Key::leftSuper, Key::leftControl}) {
    ASSERT_TRUE(openMenu());
    keyboard.chord({modifier, Key::comma});
    ASSERT_TRUE(comesTrue([&] { return settings() != XCB_WINDOW_NONE && display.activeWindow() == settings(); }));
    display.close(settings());
    ASSERT_TRUE(comesTrue([&] { return settings() == XCB_WINDOW_NONE; }));
  }
  ASSERT_TRUE(openMenu());
  choose(1);
  EXPECT_TRUE(comesTrue([&] { return settings() != XCB_WINDOW_NONE && display.activeWindow() == settings(); }));
}

TEST_P(PanelTest, WithoutConsentTheMenuOffersTheWayToIt) {
  panel.emplace(startPanel(Panel::tint2));
  const App& app = open("app");
  const auto before = display.frame(app.window);
  tilora.emplace(runTilora());
  ASSERT_TRUE(comesTrue([&] { return display.text(display.activeWindow(), "_NET_WM_NAME") == "Tilora"; }));
  keyboard.tap(Key::escape);
  ASSERT_TRUE(isActive(app.window));
  ASSERT_TRUE(openMenu());
  const int tall = menu()->height;
  EXPECT_EQ(display.frame(app.window), before);
  choose(7);
  const auto page = [&] { return display.text(display.activeWindow(), "_NET_WM_NAME") == "Tilora Permission"; };
  ASSERT_TRUE(comesTrue(page));
  keyboard.tap(Key::tab);
  keyboard.tap(Key::space);
  keyboard.chord({Key::leftControl, Key::w});
  EXPECT_TRUE(isTiled(app.window, Place::full));
  ASSERT_TRUE(openMenu());
  EXPECT_LT(menu()->height, tall);
}

TEST_P(PanelTest, QuitEndsTheProgramAndShowsEveryWindow) {
  panel.emplace(startPanel(Panel::tint2));
  const App& hidden = open("hidden");
  open("active");
  startTilora();
  ASSERT_TRUE(isHidden(hidden.window));
  ASSERT_TRUE(openMenu());
  choose(7);
  EXPECT_EQ(tilora->waitForEnd(), (ProcessEnd{.status = 0, .signal = {}}));
  EXPECT_TRUE(isShown(hidden.window));
}

TEST_P(PanelTest, NothingIsKeptOfHundredsOfOpenings) {
  // So many that a leak also outgrows what loading the menu has left free.
  constexpr int openings = 400;
  panel.emplace(startPanel(Panel::tint2));
  startTiloraWithoutQuarantine();
  expectNothingIsKept(openings, [&] {
    ASSERT_TRUE(openMenu());
    keyboard.tap(Key::escape);
    ASSERT_TRUE(menuCloses());
  });
}

class SettingsTest : public InterfaceTest {};

TEST_P(SettingsTest, ASecondStartBringsTheSettingsToTheFrontAgainAndAgain) {
  const App& app = open("app");
  startTilora();
  ASSERT_TRUE(askToShow());
  const PixelRect area = display.clientArea(settings()).value();
  EXPECT_EQ(area.width, 640);
  EXPECT_EQ(area.height, 633);
  activate(app.window);
  ASSERT_TRUE(askToShow());
  display.minimise(settings());
  ASSERT_TRUE(isHidden(settings()));
  ASSERT_TRUE(askToShow());
  ASSERT_TRUE(passes(2));
  EXPECT_EQ(display.clientArea(settings())->width, 640);
  EXPECT_TRUE(isShown(settings()));
}

/// On window managers whose own panel, if they have one, takes no icons.
class NoPanelTest : public InterfaceTest {};

TEST_P(NoPanelTest, TheMenuInTheSettingsPlacesTheWindowThatTheUserWasIn) {
  open("other");
  const App& app = open("app");
  startTilora();
  // From the first control of the settings to the first of these rows; after that, the keyboard is where it was.
  int steps = 11;
  ASSERT_TRUE(askToShow());
  for (const Place place : {Place::left, Place::right, Place::full, Place::floating}) {
    ASSERT_TRUE(askForSettings());
    // It is raised once more within the first of them.
    ASSERT_TRUE(passes(2));
    for (; steps > 0; --steps) keyboard.tap(Key::tab);
    keyboard.tap(Key::enter);
    EXPECT_TRUE(isActive(app.window));
    EXPECT_TRUE(isTiled(app.window, place));
    steps = 1;
  }
}

TEST_P(SettingsTest, ItFollowsTheThemeOfTheDesktop) {
  startTilora();
  ASSERT_TRUE(askToShow());
  constexpr Spot background = {8, 8};
  const auto isDark = [&] { return colour(background)[0] < 80; };
  EXPECT_FALSE(isDark());
  std::optional<SettingsManager> manager(std::in_place, display, themeNamed("Adwaita-dark"));
  ASSERT_TRUE(waitsFor(isDark, "the settings become dark"));
  manager.reset();
  EXPECT_TRUE(waitsFor([&] { return !isDark(); }, "the settings become light"));
}

class SettingsMemoryTest : public InterfaceTest {};

TEST_P(SettingsMemoryTest, NothingIsKeptOfAHundredOpenings) {
  startTiloraWithoutQuarantine();
  expectNothingIsKept(100, [&] {
    ASSERT_TRUE(askToShow());
    display.close(settings());
    ASSERT_TRUE(comesTrue([&] { return settings() == XCB_WINDOW_NONE; }));
  });
}

class RecorderTest : public InterfaceTest {
 protected:
  testing::AssertionResult setLayout(const std::string& layout) {
    const std::size_t variant = layout.find('(');
    std::vector<std::string> arguments = {"setxkbmap", layout.substr(0, variant)};
    if (variant != std::string::npos) arguments.push_back(layout.substr(variant + 1, layout.size() - variant - 2));
    ManagedProcess process = session.start(arguments);
    if (process.waitForEnd() != ProcessEnd{.status = 0, .signal = {}}) return testing::AssertionFailure() << process.output();
    return testing::AssertionSuccess();
  }
};

TEST_P(RecorderTest, EveryShortcutIsRecordedAnewAndWorks) {
  const App& app = open("app");
  startTilora();
  ASSERT_TRUE(askToShow());
  constexpr std::array actions = {std::pair("moveLeft", Key::a), std::pair("moveRight", Key::s), std::pair("centerOrFullscreen", Key::d),
                                  std::pair("floatCenter", Key::x)};
  constexpr std::array codes = {0, 1, 2, 7};
  constexpr int controlAndOption = 0x1800;
  for (std::size_t i = 0; i < actions.size(); ++i) {
    ASSERT_TRUE(startRecording(i));
    keyboard.chord({Key::leftControl, Key::leftAlt, actions.at(i).second});
    ASSERT_TRUE(isBound(actions.at(i).first, codes.at(i), controlAndOption));
  }
  activate(app.window);
  press(Place::left);
  keyboard.chord({Key::leftControl, Key::leftAlt, Key::s});
  EXPECT_TRUE(isTiled(app.window, Place::right));
  keyboard.chord({Key::leftControl, Key::leftAlt, Key::x});
  EXPECT_TRUE(isTiled(app.window, Place::floating));
  ASSERT_TRUE(askToShow());
  click(resetButton);
  EXPECT_TRUE(isBound("moveLeft", 33, 0xA00));
  activate(app.window);
  press(Place::left);
  EXPECT_TRUE(isTiled(app.window, Place::left));
}

TEST_P(RecorderTest, AShortcutThatTiloraHoldsIsRecordedAndDoesNotFire) {
  const App& app = open("app");
  startTilora();
  ASSERT_TRUE(isTiled(app.window, Place::full));
  ASSERT_TRUE(askToShow());
  ASSERT_TRUE(startRecording(0));
  keyboard.chord({Key::leftAlt, Key::leftShift, Key::leftBracket});
  ASSERT_TRUE(isBound("moveLeft", 33, 0xA00));
  ASSERT_TRUE(passes(2));
  EXPECT_TRUE(isTiled(app.window, Place::full));
}

TEST_P(RecorderTest, AShortcutThatIsPressedInAnotherWindowFiresAndIsNotRecorded) {
  const App& app = open("app");
  startTilora();
  ASSERT_TRUE(askToShow());
  ASSERT_TRUE(startRecording(1));
  activate(app.window);
  press(Place::left);
  ASSERT_TRUE(isTiled(app.window, Place::left));
  activate(settings());
  ASSERT_TRUE(waitsFor([&] { return isOrange(faceOf(recordButtons.at(1))); }, "the row is still being recorded"));
  keyboard.chord({Key::leftControl, Key::leftAlt, Key::s});
  EXPECT_TRUE(isBound("moveRight", 1, 0x1800));
}

TEST_P(RecorderTest, ALayoutThatPrintsOtherLettersChangesNothing) {
  const App& app = open("app");
  startTilora();
  ASSERT_TRUE(askToShow());
  for (const char* layout : {"fr", "ru", "us(dvorak)"}) {
    ASSERT_TRUE(setLayout("us"));
    click(resetButton);
    ASSERT_TRUE(isBound("moveLeft", 33, 0xA00));
    ASSERT_TRUE(setLayout(layout));
    ASSERT_TRUE(startRecording(0));
    keyboard.chord({Key::leftControl, Key::leftAlt, Key::a});
    ASSERT_TRUE(isBound("moveLeft", 0, 0x1800)) << layout;
  }
  activate(app.window);
  keyboard.chord({Key::leftControl, Key::leftAlt, Key::a});
  EXPECT_TRUE(isTiled(app.window, Place::left));
  press(Place::right);
  EXPECT_TRUE(isTiled(app.window, Place::right));
}

TEST_P(RecorderTest, RecordsOptionAloneAndKeysWithoutASymbol) {
  open("app");
  startTilora();
  ASSERT_TRUE(askToShow());
  ASSERT_TRUE(startRecording(0));
  keyboard.chord({Key::leftAlt, Key::k});
  ASSERT_TRUE(isBound("moveLeft", 40, 0x800));
  ASSERT_TRUE(startRecording(1));
  keyboard.chord({Key::leftSuper, Key::f5});
  ASSERT_TRUE(isBound("moveRight", 96, 0x100));
}

TEST_P(RecorderTest, ClosingTheWindowWhileRecordingReleasesTheKeys) {
  const App& app = open("app");
  startTilora();
  ASSERT_TRUE(askToShow());
  ASSERT_TRUE(startRecording(0));
  display.close(settings());
  ASSERT_TRUE(comesTrue([&] { return settings() == XCB_WINDOW_NONE; }));
  activate(app.window);
  press(Place::right);
  EXPECT_TRUE(isTiled(app.window, Place::right));
}

TEST_P(RecorderTest, ThePaddingGoesFromNothingToEightyAndTheWindowsFollow) {
  const App& app = open("app");
  startTilora();
  ASSERT_TRUE(askToShow());
  click(increment);
  EXPECT_TRUE(paddingIs(13));
  pointer.press();
  EXPECT_TRUE(paddingIs(80));
  pointer.release();
  EXPECT_TRUE(comesTrue([&] { return display.frame(app.window) == PixelRect{80, 80, 1440, 740}; }));
  click(decrement);
  EXPECT_TRUE(paddingIs(79));
  pointer.press();
  EXPECT_TRUE(paddingIs(0));
  pointer.release();
  EXPECT_TRUE(comesTrue([&] { return display.frame(app.window) == PixelRect{0, 0, 1600, 900}; }));
}

INSTANTIATE_TEST_SUITE_P(On, PanelTest, testing::Values(WindowManagerKind::openbox), windowManagerOf);
INSTANTIATE_TEST_SUITE_P(On, SettingsTest, testing::ValuesIn(allWindowManagers), windowManagerOf);
INSTANTIATE_TEST_SUITE_P(On, SettingsMemoryTest, testing::Values(WindowManagerKind::openbox), windowManagerOf);
INSTANTIATE_TEST_SUITE_P(On, NoPanelTest,
                         testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4, WindowManagerKind::metacity,
                                         WindowManagerKind::marco, WindowManagerKind::icewm, WindowManagerKind::kwin,
                                         WindowManagerKind::mutter),
                         windowManagerOf);
INSTANTIATE_TEST_SUITE_P(On, RecorderTest, testing::Values(WindowManagerKind::openbox), windowManagerOf);

}  // namespace
}  // namespace tilora::harness
