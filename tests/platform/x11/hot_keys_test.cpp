// System-wide combinations on a real server with real key events.
#include "platform/x11/hot_keys.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <thread>

#include "bare_server.h"
#include "harness/test_client.h"
#include "platform/x11/event_type.h"
#include "platform/x11/xkb_protocol.h"

namespace tilora::x11 {
namespace {

using harness::Key;

/// A position by its macOS key code and by the key there.
struct Position {
  std::uint32_t keyCode;
  Key key;
};

constexpr Position leftBracket{33, Key::leftBracket};
constexpr Position rightBracket{30, Key::rightBracket};
constexpr Position space{49, Key::space};
constexpr Position letterJ{38, Key::j};
constexpr std::array positions = {leftBracket, rightBracket, space, letterJ};

constexpr std::uint32_t optionShift = 0x800 | 0x200;
constexpr int altShiftState = XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT;

class HotKeysTest : public testing::Test {
 public:
  BareServer bare;
  X11KeyMonitor monitor;
  std::optional<X11HotKeys> hotKeys{std::in_place, *bare.connection, monitor};
  /// The ids that fired, in order.
  std::vector<std::uint32_t> fired;
  int keyPresses = 0;
  std::optional<Subscription> handler = hotKeys->installHandler([this](std::uint32_t id) { fired.push_back(id); });
  EventPump pump{*bare.connection, [this](const xcb_generic_event_t& event) {
                   if (event.response_type == XCB_KEY_PRESS) ++keyPresses;
                   hotKeys->handleEvent(event);
                 }};

  /// Registers the four positions with Option and Shift under the ids 1 to 4; how many were had.
  int registerAll() {
    int had = 0;
    std::uint32_t id = 0;
    for (const auto& position : positions) had += hotKeys->registerHotKey(++id, position.keyCode, optionShift) ? 1 : 0;
    return had;
  }

  /// What fires when Alt and Shift are held and each position's key is pressed once.
  std::vector<std::uint32_t> firedByAll() {
    fired.clear();
    for (const auto& position : positions) bare.keyboard.chord({Key::leftAlt, Key::leftShift, position.key});
    settle();
    return fired;
  }

  std::vector<std::uint32_t> firedBy(std::initializer_list<Key> chord) {
    fired.clear();
    bare.keyboard.chord(chord);
    settle();
    return fired;
  }

  /// Holds the first combination down, and grabs the keyboard and lets it go again meanwhile.
  void pressAndTakeTheKeyboard() {
    for (const Key key : {Key::leftAlt, Key::leftShift, Key::leftBracket}) bare.keyboard.press(key);
    settle();
    ASSERT_EQ(fired, std::vector<std::uint32_t>{1});
    auto* xcb = bare.connection->xcb();
    const auto grab = xcb_grab_keyboard(xcb, 0, bare.connection->root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC);
    xcb_discard_reply(xcb, grab.sequence);
    hotKeys->keyboardTaken();
    xcb_ungrab_keyboard(xcb, XCB_CURRENT_TIME);
    settle();
  }

  /// Takes in everything that follows from what has been done so far.
  void settle() {
    bare.display.sync();
    pump.takeAll();
  }

  /// The keyboard's map as text, changed by `change`, becomes the keyboard's map.
  bool editKeymap(const std::function<void(std::string&)>& change) {
    const auto file = bare.session.home().path() / "keymap.xkb";
    if (!bare.run({"xkbcomp", "-w", "0", bare.server.display(), file.string()})) return false;
    std::ifstream stream(file);
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    const std::string before = text;
    change(text);
    bare.session.home().write("keymap.xkb", text);
    return text != before && bare.run({"xkbcomp", "-w", "0", file.string(), bare.server.display()});
  }
};

void replaceFirst(std::string& text, const std::string& part, const std::string& by) {
  if (const auto found = text.find(part); found != std::string::npos) text.replace(found, part.size(), by);
}

const std::vector<std::uint32_t> allFour = {1, 2, 3, 4};
const std::vector<std::uint32_t> none;

TEST_F(HotKeysTest, EachCombinationFiresWithItsId) {
  EXPECT_EQ(registerAll(), 4);
  EXPECT_EQ(firedByAll(), allFour);
}

TEST_F(HotKeysTest, PositionsCountOnEveryLayout) {
  ASSERT_EQ(registerAll(), 4);
  for (const std::string layout : {"us", "de", "ru", "fr", "us(dvorak)"}) {
    ASSERT_TRUE(bare.setLayout({layout}));
    settle();
    EXPECT_EQ(firedByAll(), allFour) << layout;
  }
}

TEST_F(HotKeysTest, ACombinationRegisteredOnALayoutWithoutItsSymbolFires) {
  ASSERT_TRUE(bare.setLayout({"ru"}));
  settle();
  EXPECT_EQ(registerAll(), 4);
  EXPECT_EQ(firedByAll(), allFour);
}

TEST_F(HotKeysTest, TheSecondOfTwoLayoutsDoesNotMatter) {
  ASSERT_TRUE(bare.setLayout({"us,ru"}));
  settle();
  ASSERT_EQ(registerAll(), 4);
  auto* xcb = bare.connection->xcb();
  xcb_xkb_latch_lock_state(xcb, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, XCB_XKB_GROUP_2, 0, 0, 0);
  pump.takeAll();
  const Reply<xcb_xkb_get_state_reply_t> state{xcb_xkb_get_state_reply(xcb, xcb_xkb_get_state(xcb, XCB_XKB_ID_USE_CORE_KBD), nullptr)};
  ASSERT_TRUE(state);
  ASSERT_EQ(state->lockedGroup, XCB_XKB_GROUP_2);
  EXPECT_EQ(firedByAll(), allFour);
}

TEST_F(HotKeysTest, TheLocksDoNotMatter) {
  ASSERT_EQ(registerAll(), 4);
  for (const Key lock : {Key::capsLock, Key::numLock, Key::capsLock}) {
    bare.keyboard.tap(lock);
    EXPECT_EQ(firedByAll(), allFour);
  }
}

TEST_F(HotKeysTest, OneModifierMoreOrLessIsAnotherCombination) {
  ASSERT_EQ(registerAll(), 4);
  EXPECT_EQ(firedBy({Key::leftBracket}), none);
  EXPECT_EQ(firedBy({Key::leftAlt, Key::leftBracket}), none);
  EXPECT_EQ(firedBy({Key::leftShift, Key::leftBracket}), none);
  EXPECT_EQ(firedBy({Key::leftAlt, Key::leftShift, Key::leftControl, Key::leftBracket}), none);
  EXPECT_EQ(firedBy({Key::leftAlt, Key::leftShift, Key::leftSuper, Key::leftBracket}), none);
  EXPECT_EQ(firedBy({Key::leftAlt, Key::leftShift, Key::leftBracket}), std::vector<std::uint32_t>{1});
}

TEST_F(HotKeysTest, CommandAndControlAreSuperAndControl) {
  ASSERT_TRUE(hotKeys->registerHotKey(7, leftBracket.keyCode, 0x100 | 0x1000));
  EXPECT_EQ(firedBy({Key::leftSuper, Key::leftControl, Key::leftBracket}), std::vector<std::uint32_t>{7});
  EXPECT_EQ(firedBy({Key::leftSuper, Key::leftBracket}), none);
}

TEST_F(HotKeysTest, AHeldKeyFiresOnce) {
  ASSERT_EQ(registerAll(), 4);
  bare.keyboard.press(Key::leftAlt);
  bare.keyboard.press(Key::leftShift);
  bare.keyboard.press(Key::leftBracket);
  ASSERT_TRUE(pump.until([this] { return keyPresses >= 4; })) << "the server repeats a held key";
  EXPECT_EQ(fired, std::vector<std::uint32_t>{1});
  bare.keyboard.release(Key::leftBracket);
  bare.keyboard.press(Key::leftBracket);
  bare.keyboard.release(Key::leftBracket);
  settle();
  EXPECT_EQ(fired, (std::vector<std::uint32_t>{1, 1}));
}

TEST_F(HotKeysTest, AKeyThatWasDownWhileTheKeyboardWasGrabbedFiresAgain) {
  ASSERT_EQ(registerAll(), 4);
  pressAndTakeTheKeyboard();
  bare.keyboard.release(Key::leftBracket);
  settle();
  bare.keyboard.press(Key::leftBracket);
  settle();
  EXPECT_EQ(fired, (std::vector<std::uint32_t>{1, 1}));
  bare.keyboard.release(Key::leftBracket);
  bare.keyboard.press(Key::leftBracket);
  settle();
  EXPECT_EQ(fired, (std::vector<std::uint32_t>{1, 1, 1}));
}

TEST_F(HotKeysTest, AKeyThatStaysDownWhileTheKeyboardIsGrabbedFiresOnce) {
  ASSERT_EQ(registerAll(), 4);
  pressAndTakeTheKeyboard();
  ASSERT_TRUE(pump.until([this] { return keyPresses >= 4; }));
  EXPECT_EQ(fired, std::vector<std::uint32_t>{1});
}

TEST_F(HotKeysTest, WhenItsModifiersHaveBeenUpAKeyFiresAgainEvenAtTheMomentOfARepeat) {
  ASSERT_EQ(registerAll(), 4);
  pressAndTakeTheKeyboard();
  for (const Key key : {Key::leftBracket, Key::leftShift, Key::leftAlt}) bare.keyboard.release(key);
  settle();
  // The next press comes when the server would repeat the first one, had it been held.
  const auto pressedAt = hotKeys->lastPressTime();
  constexpr xcb_timestamp_t repeatDelay = 660;
  while (bare.display.serverTime() - pressedAt < repeatDelay) std::this_thread::yield();
  bare.keyboard.chord({Key::leftAlt, Key::leftShift, Key::leftBracket});
  settle();
  EXPECT_EQ(fired, (std::vector<std::uint32_t>{1, 1}));
}

TEST_F(HotKeysTest, AnotherKeyFiresWhileOneIsHeld) {
  ASSERT_EQ(registerAll(), 4);
  for (const Key key : {Key::leftAlt, Key::leftShift, Key::leftBracket, Key::rightBracket}) bare.keyboard.press(key);
  settle();
  EXPECT_EQ(fired, (std::vector<std::uint32_t>{1, 2}));
  bare.keyboard.release(Key::leftBracket);
  bare.keyboard.press(Key::leftBracket);
  settle();
  EXPECT_EQ(fired, (std::vector<std::uint32_t>{1, 2, 1}));
}

TEST_F(HotKeysTest, TheTimeOfThePressIsTheServers) {
  ASSERT_EQ(registerAll(), 4);
  EXPECT_EQ(hotKeys->lastPressTime(), XCB_CURRENT_TIME);
  const auto before = bare.display.serverTime();
  ASSERT_EQ(firedByAll(), allFour);
  const auto after = bare.display.serverTime();
  EXPECT_GE(hotKeys->lastPressTime(), before);
  EXPECT_LE(hotKeys->lastPressTime(), after);
}

TEST_F(HotKeysTest, AKeyEventThatAClientMadeUpFiresNothing) {
  ASSERT_EQ(registerAll(), 4);
  xcb_key_press_event_t press{};
  press.response_type = XCB_KEY_PRESS;
  press.detail = static_cast<std::uint8_t>(Key::leftBracket);
  press.root = press.event = bare.display.root();
  press.state = altShiftState;
  press.same_screen = 1;
  xcb_window_t helper = xcb_generate_id(bare.connection->xcb());
  xcb_create_window(bare.connection->xcb(), 0, helper, bare.connection->root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, 0, nullptr);
  bare.connection->flush();
  pump.takeAll();
  int arrived = 0;
  EventPump counting{*bare.connection, [&](const xcb_generic_event_t& event) {
                       if (typeOf(event) == XCB_KEY_PRESS) ++arrived;
                       hotKeys->handleEvent(event);
                     }};
  xcb_send_event(bare.display.xcb(), 0, helper, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&press));
  bare.display.sync();
  counting.takeAll();
  EXPECT_EQ(arrived, 1);
  EXPECT_EQ(fired, none);
}

TEST_F(HotKeysTest, ACombinationThatAnotherClientHoldsIsSkippedAndTheOthersWork) {
  harness::TestClient other(bare.session);
  ASSERT_TRUE(other.grabKey(static_cast<int>(Key::rightBracket), altShiftState));
  EXPECT_TRUE(hotKeys->registerHotKey(1, leftBracket.keyCode, optionShift));
  EXPECT_FALSE(hotKeys->registerHotKey(2, rightBracket.keyCode, optionShift));
  EXPECT_TRUE(hotKeys->registerHotKey(3, space.keyCode, optionShift));
  EXPECT_EQ(firedByAll(), (std::vector<std::uint32_t>{1, 3}));
}

TEST_F(HotKeysTest, ACombinationHeldForOneStateOfTheLocksIsNotTakenForTheOthers) {
  harness::TestClient other(bare.session);
  ASSERT_TRUE(other.grabKey(static_cast<int>(Key::leftBracket), altShiftState | XCB_MOD_MASK_LOCK));
  EXPECT_FALSE(hotKeys->registerHotKey(1, leftBracket.keyCode, optionShift));
  settle();
  EXPECT_TRUE(other.grabKey(static_cast<int>(Key::leftBracket), altShiftState));
  EXPECT_TRUE(other.grabKey(static_cast<int>(Key::leftBracket), altShiftState | XCB_MOD_MASK_2));
}

TEST_F(HotKeysTest, ACombinationThatIsGivenBackIsFreeAndFiresNoMore) {
  const auto reference = hotKeys->registerHotKey(1, leftBracket.keyCode, optionShift);
  ASSERT_TRUE(reference);
  harness::TestClient other(bare.session);
  EXPECT_FALSE(other.grabKey(static_cast<int>(Key::leftBracket), altShiftState));
  hotKeys->unregisterHotKey(*reference);
  hotKeys->unregisterHotKey(*reference);
  settle();
  for (const int locks : {0, XCB_MOD_MASK_LOCK | 0, XCB_MOD_MASK_2 | 0, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2}) {
    EXPECT_TRUE(other.grabKey(static_cast<int>(Key::leftBracket), altShiftState | locks)) << locks;
  }
  EXPECT_EQ(firedByAll(), none);
}

TEST_F(HotKeysTest, TheEndGivesEveryCombinationBack) {
  ASSERT_EQ(registerAll(), 4);
  handler.reset();
  hotKeys.reset();
  const auto cookie = xcb_get_input_focus(bare.connection->xcb());
  const Reply<xcb_get_input_focus_reply_t> barrier{xcb_get_input_focus_reply(bare.connection->xcb(), cookie, nullptr)};
  harness::TestClient other(bare.session);
  for (const auto& position : positions) EXPECT_TRUE(other.grabKey(static_cast<int>(position.key), altShiftState));
}

TEST_F(HotKeysTest, WhatCannotBeACombinationIsNotRegistered) {
  EXPECT_FALSE(hotKeys->registerHotKey(1, 127, optionShift));
  EXPECT_FALSE(hotKeys->registerHotKey(1, 0xFFFFFFFFU, optionShift));
  EXPECT_FALSE(hotKeys->registerHotKey(1, leftBracket.keyCode, optionShift | 0x400));
}

TEST_F(HotKeysTest, ACombinationIsRegisteredOnce) {
  EXPECT_TRUE(hotKeys->registerHotKey(1, leftBracket.keyCode, optionShift));
  EXPECT_FALSE(hotKeys->registerHotKey(2, leftBracket.keyCode, optionShift));
  EXPECT_EQ(firedBy({Key::leftAlt, Key::leftShift, Key::leftBracket}), std::vector<std::uint32_t>{1});
}

TEST_F(HotKeysTest, ThereIsOneHandlerAndWithoutItNothingIsCalled) {
  ASSERT_EQ(registerAll(), 4);
  EXPECT_FALSE(hotKeys->installHandler([](std::uint32_t) {}));
  handler.reset();
  EXPECT_EQ(firedByAll(), none);
  handler = hotKeys->installHandler([this](std::uint32_t id) { fired.push_back(id + 10); });
  EXPECT_TRUE(handler);
  EXPECT_EQ(firedByAll(), (std::vector<std::uint32_t>{11, 12, 13, 14}));
}

TEST_F(HotKeysTest, AHandlerMayRegisterAnewAndTakeItselfAway) {
  auto reference = hotKeys->registerHotKey(1, leftBracket.keyCode, optionShift);
  handler.reset();
  handler = hotKeys->installHandler([&](std::uint32_t id) {
    fired.push_back(id);
    hotKeys->unregisterHotKey(*reference);
    reference = hotKeys->registerHotKey(2, rightBracket.keyCode, optionShift);
    handler.reset();
  });
  EXPECT_EQ(firedByAll(), std::vector<std::uint32_t>{1});
  handler = hotKeys->installHandler([this](std::uint32_t id) { fired.push_back(id); });
  EXPECT_EQ(firedByAll(), std::vector<std::uint32_t>{2});
}

TEST_F(HotKeysTest, WhileAMonitorIsInstalledACombinationGoesThereAndDoesNotFire) {
  ASSERT_EQ(registerAll(), 4);
  std::vector<KeyEvent> seen;
  auto recording = monitor.install([&](const KeyEvent& event) {
    seen.push_back(event);
    return true;
  });
  EXPECT_EQ(firedByAll(), none);
  ASSERT_EQ(seen.size(), 4U);
  EXPECT_EQ(seen[0].keyCode, 33U);
  EXPECT_EQ(seen[0].flags, (1U << 17U) | (1U << 19U));
  EXPECT_EQ(seen[3].keyCode, 38U);
  recording.reset();
  EXPECT_EQ(firedByAll(), allFour);
}

TEST_F(HotKeysTest, CombinationsFollowModifiersThatAMapMovesToOtherKeys) {
  ASSERT_EQ(registerAll(), 4);
  ASSERT_TRUE(bare.setLayout({"us", "-option", "altwin:swap_alt_win"}));
  settle();
  EXPECT_EQ(firedBy({Key::leftSuper, Key::leftShift, Key::leftBracket}), std::vector<std::uint32_t>{1}) << "this key is Alt now";
  EXPECT_EQ(firedBy({Key::leftAlt, Key::leftShift, Key::leftBracket}), none);
  ASSERT_TRUE(bare.setLayout({"us", "-option", ""}));
  settle();
  EXPECT_EQ(firedByAll(), allFour);
}

TEST_F(HotKeysTest, CombinationsFollowAPositionThatAMapGivesToAnotherKeycode) {
  ASSERT_EQ(registerAll(), 4);
  ASSERT_TRUE(editKeymap([](std::string& text) {
    replaceFirst(text, "<AD11> = 34;", "<AD11> = 44;");
    replaceFirst(text, "<AC07> = 44;", "<AC07> = 34;");
  }));
  settle();
  EXPECT_EQ(firedBy({Key::leftAlt, Key::leftShift, Key::j}), std::vector<std::uint32_t>{1});
  EXPECT_EQ(firedBy({Key::leftAlt, Key::leftShift, Key::leftBracket}), std::vector<std::uint32_t>{4});
  EXPECT_EQ(firedBy({Key::leftAlt, Key::leftShift, Key::space}), std::vector<std::uint32_t>{3});
}

TEST_F(HotKeysTest, ARegistrationWithoutAKeyTakesEffectWithAMapThatHasOne) {
  ASSERT_TRUE(editKeymap([](std::string& text) { replaceFirst(text, "<AD11> = 34;", ""); }));
  settle();
  ASSERT_FALSE(hotKeys->keymap().keycode(leftBracket.keyCode));
  EXPECT_EQ(registerAll(), 4);
  EXPECT_EQ(firedByAll(), (std::vector<std::uint32_t>{2, 3, 4}));
  ASSERT_TRUE(bare.setLayout({"us"}));
  settle();
  EXPECT_EQ(firedByAll(), allFour);
}

TEST_F(HotKeysTest, ACombinationThatANewMapLeadsToAndAnotherClientHoldsIsHadAgainWithTheNextMap) {
  ASSERT_EQ(registerAll(), 4);
  constexpr int freeKeycode = 93;
  harness::TestClient other(bare.session);
  ASSERT_TRUE(other.grabKey(freeKeycode, altShiftState));
  ASSERT_TRUE(editKeymap([](std::string& text) { replaceFirst(text, "<AD11> = 34;", "<AD11> = 93;"); }));
  settle();
  ASSERT_EQ(hotKeys->keymap().keycode(leftBracket.keyCode), freeKeycode);
  EXPECT_EQ(firedByAll(), (std::vector<std::uint32_t>{2, 3, 4}));
  EXPECT_EQ(firedBy({Key::leftAlt, Key::leftShift, static_cast<Key>(freeKeycode)}), none);
  ASSERT_TRUE(bare.setLayout({"us"}));
  settle();
  EXPECT_EQ(firedByAll(), allFour);
}

TEST_F(HotKeysTest, AfterTheServerDiedNothingIsRegisteredAndNothingBreaks) {
  ASSERT_EQ(registerAll(), 4);
  bare.server.process().terminate();
  EXPECT_FALSE(hotKeys->registerHotKey(9, leftBracket.keyCode, 0x800));
  handler.reset();
  hotKeys.reset();
}

}  // namespace
}  // namespace tilora::x11
