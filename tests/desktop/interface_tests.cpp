// The icon, the menu and the settings window of the real program, with real panels, keys and pointer.
#include <gmock/gmock.h>

#include "harness/settings_manager.h"
#include "interface_test.h"

namespace tilora::harness {
namespace {

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

TEST_P(PanelTest, AClickOnEachRowActs) {
  panel.emplace(startPanel(Panel::trayer));
  const App& app = open("app");
  startTilora();
  const auto clickRow = [&](std::size_t row) {
    const std::optional<PixelRect> area = menu();
    pointer.click(area->x + rows.at(row).x, area->y + rows.at(row).y);
    EXPECT_TRUE(menuCloses()) << row;
  };
  for (const auto& [row, place] :
       {std::pair(2U, Place::left), std::pair(3U, Place::right), std::pair(5U, Place::floating), std::pair(4U, Place::full)}) {
    ASSERT_TRUE(openMenu());
    clickRow(row);
    EXPECT_TRUE(isTiled(app.window, place)) << row;
    EXPECT_TRUE(isActive(app.window));
  }
  ASSERT_TRUE(openMenu());
  clickRow(1);
  EXPECT_TRUE(isTiled(app.window, Place::full));
  ASSERT_TRUE(openMenu());
  clickRow(0);
  EXPECT_TRUE(comesTrue([&] { return settings() != XCB_WINDOW_NONE && display.activeWindow() == settings(); }));
  ASSERT_TRUE(openMenu());
  pointer.click(menu()->x + quitButton.x, menu()->y + quitButton.y);
  EXPECT_EQ(tilora->waitForEnd(), (ProcessEnd{.status = 0, .signal = {}}));
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

TEST_P(PanelTest, TheIconComesToAStatusNotifierPanelThatStartsLaterOrAnew) {
  session.startBus();
  startTilora();
  for (int times = 0; times < 2; ++times) {
    panel.emplace(startPanel(Panel::xfce));
    ASSERT_TRUE(openMenu()) << times;
    keyboard.tap(Key::escape);
    ASSERT_TRUE(menuCloses());
    panel->terminate();
  }
}

TEST_P(PanelTest, TheIconFollowsTheConsentThatItsMiddleButtonLeadsTo) {
  panel.emplace(startPanel(Panel::tint2));
  tilora.emplace(runTilora());
  ASSERT_TRUE(comesTrue([&] { return display.text(display.activeWindow(), "_NET_WM_NAME") == "Tilora"; }));
  ASSERT_TRUE(comesTrue([&] { return embeddedIcon(display).has_value(); }));
  const PixelRect place = icon();
  // A panel shows an empty place first.
  const auto empty = picture({place.right() + 40, place.y, place.width, place.height});
  ASSERT_TRUE(waitsFor([&] { return picture(place) != empty; }, "the icon is drawn"));
  const auto warning = picture(place);
  keyboard.tap(Key::enter);
  ASSERT_TRUE(waitsFor([&] { return picture(place) != warning && picture(place) != empty; }, "the icon says that it may"));
  constexpr int middleButton = 2;
  pointer.click(place.x + place.width / 2, place.y + place.height / 2, middleButton);
  ASSERT_TRUE(comesTrue([&] { return display.text(display.activeWindow(), "_NET_WM_NAME") == "Tilora Permission"; }));
  keyboard.tap(Key::tab);
  keyboard.tap(Key::space);
  EXPECT_TRUE(waitsFor([&] { return picture(place) == warning; }, "the icon says that it may not"));
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
  EXPECT_TRUE(comesTrue([&] { return menu() && menu()->height < tall; }));
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

class MonitorsTest : public InterfaceTest {
 protected:
  MonitorsTest() : InterfaceTest({left, right}) {}
  void SetUp() override {
    server.plugIn(1);
    startWindowManager();
  }

  static constexpr PixelRect left = {0, 0, 900, 900};
  static constexpr PixelRect right = {900, 0, 700, 900};
};

TEST_P(MonitorsTest, TheMenuOpensOnTheScreenOfItsIcon) {
  for (const int number : {1, 2}) {
    const PixelRect monitor = number == 1 ? left : right;
    panel.emplace(startPanel(Panel::tint2, number));
    startTilora();
    ASSERT_TRUE(waitsFor([&] { return embeddedIcon(display) && monitor.contains(icon()); }, "the icon is on that monitor"));
    ASSERT_TRUE(openMenu());
    EXPECT_TRUE(display.visibleFrame(monitor).contains(menu().value())) << menu().value();
    EXPECT_EQ(menu()->x, icon().x);
    tilora->terminate();
    panel->terminate();
  }
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
    ASSERT_TRUE(askToDraw());
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
  // A key that only begins an accented letter there.
  ASSERT_TRUE(setLayout("fr"));
  ASSERT_TRUE(startRecording(3));
  keyboard.chord({Key::leftControl, Key::leftBracket});
  ASSERT_TRUE(isBound("floatCenter", 33, 0x1000));
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
INSTANTIATE_TEST_SUITE_P(On, MonitorsTest, testing::Values(WindowManagerKind::openbox), windowManagerOf);
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
