// What the settings window shows, measured on the running items, and what its controls do.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/ui/interface_session.h"
#include "app/ui/theme.h"

namespace tilora::app {
namespace {

using namespace std::chrono_literals;

constexpr const char* refusal = "Use at least one modifier key and avoid duplicate shortcuts.";
constexpr quint32 escapeCode = 53;
constexpr quint32 kCode = 40;
constexpr quint32 wCode = 13;
constexpr quint32 leftBracketCode = 33;

class SettingsView : public testing::Test {
 protected:
  QQuickItem& section(const char* name) { return find(view, name); }
  QQuickItem& shortcut(int index) { return find(view, ("shortcut" + std::to_string(index)).c_str()); }
  SettingsWindow& window() { return *session.interface().settingsWindow(); }
  void record(int index) { InterfaceSession::click(find(shortcut(index), "record")); }
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers, quint32 code) { InterfaceSession::tap(window(), key, modifiers, code); }
  std::string buttonTitle(int index) { return text(find(shortcut(index), "record"), "title"); }
  void focus(QQuickItem& item) {
    item.forceActiveFocus();
    turn();
  }

  InterfaceSession session;
  QQuickItem& view = session.openSettings();
};

TEST_F(SettingsView, HasItsSizeAndPadding) {
  EXPECT_EQ(window().size(), QSize(640, 633));
  EXPECT_EQ(window().minimumSize(), window().maximumSize());
  EXPECT_EQ(view.size(), QSizeF(640, 633));
  QQuickItem& content = find(view, "content");
  EXPECT_EQ(within(content, view).topLeft(), QPointF(22, 22));
  EXPECT_EQ(content.width(), 640 - 2 * 22);
  EXPECT_EQ(number(find(view, "scroller"), "contentHeight"), content.height() + 2 * 22);
  EXPECT_EQ(find(view, "background").property("color").value<QColor>(), Theme().windowBackground());
}

TEST_F(SettingsView, IsAWindowWhoseTitleSaysSettings) {
  EXPECT_EQ(window().title(), "Tilora Settings");
  EXPECT_EQ(window().type(), Qt::Window);
}

TEST_F(SettingsView, BeginsWithItsTitle) {
  expectText(find(view, "title"), "Tilora Settings", 26, QFont::DemiBold);
  QQuickItem& subtitle = find(view, "subtitle");
  expectText(subtitle, "Configure layout behavior and global shortcuts", 11, QFont::Normal);
  EXPECT_TRUE(subtitle.property("secondary").toBool());
  EXPECT_LT(within(find(view, "title"), view).bottom(), within(subtitle, view).bottom());
  EXPECT_LT(within(subtitle, view).bottom(), within(section("general"), view).top());
  EXPECT_LT(within(section("general"), view).bottom(), within(section("shortcuts"), view).top());
}

TEST_F(SettingsView, ASectionHasItsShapeAndTitle) {
  for (const auto& [name, title] : {std::pair("general", "General"), std::pair("shortcuts", "Shortcuts")}) {
    QQuickItem& card = section(name);
    QQuickItem& background = find(card, "background");
    EXPECT_EQ(within(background, card), QRectF(0, 0, card.width(), card.height()));
    EXPECT_EQ(number(background, "radius"), 14);
    EXPECT_TRUE(background.property("continuous").toBool());
    EXPECT_NEAR(share(background, "color"), 0.45, tolerance);
    EXPECT_NEAR(share(background, "outlineColor"), 0.35, tolerance);
    EXPECT_EQ(number(background, "outlineWidth"), 1);
    EXPECT_EQ(within(find(card, "stack"), card), QRectF(18, 18, card.width() - 36, card.height() - 36));
    expectText(find(card, "title"), title, 17, QFont::DemiBold);
    EXPECT_FALSE(find(card, "title").property("secondary").toBool());
  }
}

TEST_F(SettingsView, TitlesHaveTheRoundedDesign) {
  EXPECT_TRUE(find(view, "title").property("rounded").toBool());
  for (const char* name : {"general", "shortcuts"}) EXPECT_TRUE(find(section(name), "title").property("rounded").toBool());
  EXPECT_FALSE(find(find(view, "paddingRow"), "settingTitle").property("rounded").toBool());
}

TEST_F(SettingsView, ItsPartsStandInTheirOrderFromTheLeftEdge) {
  double bottom = 0;
  for (const char* name : {"paddingRow", "loginRow", "loginItems"}) {
    const QRectF place = within(find(view, name), section("general"));
    EXPECT_EQ(place.left(), 18) << name;
    EXPECT_GE(place.top(), bottom) << name;
    bottom = place.bottom();
  }
  bottom = 0;
  for (const char* name : {"shortcut0", "shortcut1", "shortcut2", "shortcut3", "hint", "reset"}) {
    const QRectF place = within(find(view, name), section("shortcuts"));
    EXPECT_EQ(place.left(), 18) << name;
    EXPECT_GE(place.top(), bottom) << name;
    bottom = place.bottom();
  }
}

TEST_F(SettingsView, TheButtonsHaveTheirStylesAndSizes) {
  QQuickItem& record = find(shortcut(0), "record");
  EXPECT_EQ(number(record, "style"), number(find(shortcut(3), "record"), "style"));
  EXPECT_TRUE(record.property("filled").toBool());
  EXPECT_TRUE(record.property("large").toBool());
  EXPECT_FALSE(find(view, "reset").property("filled").toBool());
  EXPECT_FALSE(find(view, "reset").property("plain").toBool());
  EXPECT_TRUE(find(view, "reset").property("large").toBool());
  EXPECT_EQ(find(view, "reset").height(), record.height());
}

TEST_F(SettingsView, TheScrollIndicatorIsShownWhileThereIsMoreThanFits) {
  EXPECT_FALSE(find(view, "scrollIndicator").isVisible());
  session.openSettings(true);
  ASSERT_TRUE(runUntil([&] { return find(view, "scrollIndicator").isVisible(); }));
  EXPECT_LT(find(view, "scrollIndicator").height(), 633);
}

TEST_F(SettingsView, ASettingHasItsTextsLeftAndItsControlRightBothCentred) {
  struct Expected {
    const char *row, *title, *description, *control;
  };
  for (const auto& expected : {Expected{"paddingRow", "Window Padding", "Gap around tiled windows", "stepper"},
                               Expected{"loginRow", "Start on Login", "Launch Tilora when you sign in", "loginSwitch"}}) {
    QQuickItem& row = find(view, expected.row);
    expectText(find(row, "settingTitle"), expected.title, 14, QFont::Medium);
    expectText(find(row, "settingDescription"), expected.description, 10, QFont::Normal);
    EXPECT_TRUE(find(row, "settingDescription").property("secondary").toBool());
    const QRectF texts = within(find(row, "texts"), row);
    const QRectF control = within(find(row, expected.control), row);
    EXPECT_EQ(texts.left(), 0);
    EXPECT_EQ(control.right(), row.width());
    EXPECT_NEAR(texts.center().y(), control.center().y(), 0.5);
    EXPECT_NEAR(control.center().y(), row.height() / 2, 0.5);
  }
}

TEST_F(SettingsView, TheStepperHasItsWidths) {
  QQuickItem& stepper = find(view, "stepper");
  QQuickItem& label = find(stepper, "stepperLabel");
  EXPECT_EQ(stepper.width(), 150);
  EXPECT_GE(label.width(), 64);
  EXPECT_EQ(label.property("horizontalAlignment").toInt(), Qt::AlignLeft);
  EXPECT_EQ(within(find(stepper, "increment"), stepper).right(), 150);
  EXPECT_GE(within(label, stepper).left(), 0);
}

TEST_F(SettingsView, TheStepperStepsAndTheWindowsMoveWithIt) {
  EXPECT_EQ(text(find(view, "stepperLabel")), "10 px");
  InterfaceSession::click(find(view, "increment"));
  EXPECT_EQ(session.controller().windowPadding(), 11);
  EXPECT_EQ(text(find(view, "stepperLabel")), "11 px");
  session.engine().effects();
  InterfaceSession::click(find(view, "decrement"));
  session.engine().advance(200ms);
  EXPECT_THAT(session.engine().effects(), testing::Contains(simulated::resized(1, 1420, 855)));
}

TEST_F(SettingsView, ThePaddingIsShownTruncated) {
  session.controller().setWindowPadding(12.6);
  turn();
  EXPECT_EQ(text(find(view, "stepperLabel")), "12 px");
}

TEST_F(SettingsView, TheStepperEndsAtBothEndsOfItsRange) {
  QQuickItem& increment = find(view, "increment");
  QQuickItem& decrement = find(view, "decrement");
  session.controller().setWindowPadding(80);
  turn();
  EXPECT_FALSE(increment.isEnabled());
  EXPECT_TRUE(decrement.isEnabled());
  InterfaceSession::click(increment);
  EXPECT_EQ(session.controller().windowPadding(), 80);
  session.controller().setWindowPadding(0);
  turn();
  EXPECT_TRUE(increment.isEnabled());
  EXPECT_FALSE(decrement.isEnabled());
  InterfaceSession::click(decrement);
  EXPECT_EQ(session.controller().windowPadding(), 0);
}

TEST_F(SettingsView, TheStepperTakesKeysAndTheWheel) {
  QQuickItem& stepper = find(view, "stepper");
  focus(stepper);
  key(Qt::Key_Up, {}, 126);
  key(Qt::Key_Right, {}, 124);
  EXPECT_EQ(session.controller().windowPadding(), 12);
  key(Qt::Key_Down, {}, 125);
  EXPECT_EQ(session.controller().windowPadding(), 11);
  const QPointF place = stepper.mapToScene(QPointF(10, 10));
  for (const int angle : {120, 120, -120, 60, 60}) {
    QWheelEvent wheel(place, place, {}, QPoint(0, angle), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&window(), &wheel);
  }
  EXPECT_EQ(session.controller().windowPadding(), 13);
}

TEST_F(SettingsView, TheStepperGoesOnWhileItIsHeld) {
  InterfaceSession::press(find(view, "increment"));
  EXPECT_TRUE(runUntil([&] { return session.controller().windowPadding() >= 13; }));
  InterfaceSession::release(find(view, "increment"));
  const double held = session.controller().windowPadding();
  turn();
  EXPECT_EQ(session.controller().windowPadding(), held);
  InterfaceSession::press(find(view, "increment"));
  EXPECT_TRUE(runUntil([&] { return session.controller().windowPadding() == 80; }));
}

TEST_F(SettingsView, TheSwitchFollowsTheController) {
  QQuickItem& toggle = find(view, "loginSwitch");
  EXPECT_FALSE(toggle.property("on").toBool());
  InterfaceSession::click(toggle);
  EXPECT_TRUE(session.controller().startOnLoginEnabled());
  EXPECT_TRUE(toggle.property("on").toBool());
  EXPECT_FALSE(find(view, "loginError").isVisible());
}

TEST_F(SettingsView, ARefusalTurnsTheSwitchBackAndIsSaid) {
  session.desktop().loginItem().traits.registerError = "The disk is full.";
  InterfaceSession::click(find(view, "loginSwitch"));
  EXPECT_FALSE(find(view, "loginSwitch").property("on").toBool());
  QQuickItem& line = find(view, "loginError");
  EXPECT_TRUE(line.isVisible());
  expectText(find(line, "lineText"), "Could not update Login Items: The disk is full.", 10, QFont::Normal);
  EXPECT_EQ(text(find(line, "lineSymbol"), "name"), "exclamationmark.triangle.fill");
  for (const char* part : {"lineText", "lineSymbol"}) EXPECT_EQ(find(line, part).property("color").value<QColor>(), Theme().orangeText());
}

TEST_F(SettingsView, TheLinkOpensTheLoginItems) {
  QQuickItem& link = find(view, "loginItems");
  EXPECT_EQ(text(link, "title"), "Open Login Items Settings");
  EXPECT_TRUE(link.property("plain").toBool());
  const auto effects = session.engine().effectsOf([&] { InterfaceSession::click(link); });
  EXPECT_THAT(effects, testing::ElementsAre(
                           simulated::Effect(simulated::UrlOpened{"x-apple.systempreferences:com.apple.LoginItems-Settings.extension"})));
}

TEST_F(SettingsView, EachActionHasARow) {
  const std::array<std::pair<const char*, const char*>, 4> expected = {{{"Move Focused Window Left", "Option+Shift+["},
                                                                        {"Move Focused Window Right", "Option+Shift+]"},
                                                                        {"Center Floating / Fullscreen", "Option+Shift+Space"},
                                                                        {"Float Window Centered (60% × 90%)", "Option+Shift+J"}}};
  for (int i = 0; i < 4; ++i) {
    const auto& [title, binding] = expected.at(static_cast<std::size_t>(i));
    QQuickItem& label = find(shortcut(i), "shortcutTitle");
    expectText(label, title, 14, QFont::Medium);
    EXPECT_FALSE(label.property("truncated").toBool()) << title;
    expectText(find(shortcut(i), "binding"), binding, 13, QFont::Normal);
    EXPECT_TRUE(find(shortcut(i), "binding").property("monospaced").toBool());
    EXPECT_EQ(buttonTitle(i), "Change Keys");
    EXPECT_LT(within(label, shortcut(i)).right(), within(find(shortcut(i), "combination"), shortcut(i)).left());
    EXPECT_LT(within(find(shortcut(i), "combination"), shortcut(i)).right(), within(find(shortcut(i), "record"), shortcut(i)).left());
  }
  expectText(find(view, "hint"), "Press Esc while recording to cancel.", 10, QFont::Normal);
  EXPECT_EQ(text(find(view, "reset"), "title"), "Reset Shortcuts to Default");
}

TEST_F(SettingsView, ABindingIsPaddedOnItsBackground) {
  QQuickItem& combination = find(shortcut(0), "combination");
  QQuickItem& background = find(combination, "combinationBackground");
  const QRectF label = within(find(combination, "binding"), combination);
  EXPECT_EQ(label.left(), 10);
  EXPECT_EQ(label.top(), 6);
  EXPECT_EQ(combination.width(), label.width() + 20);
  EXPECT_EQ(combination.height(), label.height() + 12);
  EXPECT_EQ(number(background, "radius"), 8);
  EXPECT_NEAR(share(background, "color"), 0.7, tolerance);
}

TEST_F(SettingsView, TheButtonOfARowRecordsInOrange) {
  const auto tint = [&](int index) { return find(shortcut(index), "record").property("tint").value<QColor>(); };
  EXPECT_EQ(tint(1), Theme().accent());
  record(1);
  EXPECT_EQ(buttonTitle(1), "Press Keys...");
  EXPECT_EQ(tint(1), Theme().orange());
  EXPECT_EQ(buttonTitle(0), "Change Keys");
  record(0);
  EXPECT_EQ(buttonTitle(0), "Press Keys...");
  EXPECT_EQ(buttonTitle(1), "Change Keys");
  EXPECT_EQ(session.desktop().keyMonitor().installedMonitors(), 1);
  record(0);
  EXPECT_EQ(buttonTitle(0), "Change Keys");
  EXPECT_EQ(session.desktop().keyMonitor().installedMonitors(), 0);
}

TEST_F(SettingsView, RecordsWhatIsPressed) {
  record(0);
  key(Qt::Key_K, Qt::AltModifier, kCode);
  EXPECT_EQ(session.controller().binding(ShortcutAction::moveLeft), (ShortcutBinding{kCode, modifier::optionKey}));
  EXPECT_EQ(text(find(shortcut(0), "binding")), "Option+K");
  EXPECT_EQ(buttonTitle(0), "Change Keys");
  EXPECT_FALSE(find(view, "shortcutError").isVisible());
}

TEST_F(SettingsView, ARefusedCombinationIsSaidInRed) {
  record(1);
  key(Qt::Key_BraceLeft, Qt::AltModifier | Qt::ShiftModifier, leftBracketCode);
  QQuickItem& line = find(view, "shortcutError");
  EXPECT_TRUE(line.isVisible());
  expectText(find(line, "lineText"), refusal, 10, QFont::Normal);
  EXPECT_EQ(text(find(line, "lineSymbol"), "name"), "exclamationmark.circle.fill");
  for (const char* part : {"lineText", "lineSymbol"}) EXPECT_EQ(find(line, part).property("color").value<QColor>(), Theme().redText());
  EXPECT_EQ(buttonTitle(1), "Change Keys");
  EXPECT_EQ(session.controller().shortcutBindings(), ShortcutBindings{});
}

TEST_F(SettingsView, EscapeCancelsAndTheErrorStays) {
  record(1);
  key(Qt::Key_K, {}, kCode);
  ASSERT_TRUE(find(view, "shortcutError").isVisible());
  record(1);
  key(Qt::Key_Escape, Qt::ControlModifier, escapeCode);
  EXPECT_EQ(buttonTitle(1), "Change Keys");
  EXPECT_TRUE(find(view, "shortcutError").isVisible());
  EXPECT_TRUE(window().isVisible());
}

TEST_F(SettingsView, ARecordedKeyNeverReachesAControl) {
  focus(find(view, "stepper"));
  record(2);
  key(Qt::Key_Up, Qt::ShiftModifier, 126);
  EXPECT_EQ(session.controller().windowPadding(), 10);
  EXPECT_EQ(text(find(shortcut(2), "binding")), "Shift+Up");
}

TEST_F(SettingsView, ResetBringsTheDefaultsBack) {
  record(0);
  key(Qt::Key_K, Qt::AltModifier, kCode);
  record(1);
  key(Qt::Key_K, {}, kCode);
  record(2);
  InterfaceSession::click(find(view, "reset"));
  EXPECT_EQ(session.controller().shortcutBindings(), ShortcutBindings{});
  EXPECT_EQ(text(find(shortcut(0), "binding")), "Option+Shift+[");
  EXPECT_FALSE(find(view, "shortcutError").isVisible());
  EXPECT_EQ(buttonTitle(2), "Change Keys");
}

TEST_F(SettingsView, ItsCloseKeyHidesItAtOnceAndTheNativeWindowGoesLater) {
  key(Qt::Key_W, Qt::ControlModifier, wCode);
  EXPECT_FALSE(window().isVisible());
  EXPECT_NE(window().handle(), nullptr);
  EXPECT_TRUE(runUntil([&] { return window().handle() == nullptr; }));
}

TEST_F(SettingsView, WhoeverClosesItTheNativeWindowGoesLater) {
  EXPECT_TRUE(window().close());
  EXPECT_FALSE(window().isVisible());
  EXPECT_NE(window().handle(), nullptr);
}

TEST_F(SettingsView, ItStaysWhenItIsOpenedAgainRightAfterwards) {
  key(Qt::Key_W, Qt::ControlModifier, wCode);
  session.openSettings();
  const QDeadlineTimer longerThanItLingers(1500);
  runUntil([&] { return longerThanItLingers.hasExpired(); });
  EXPECT_TRUE(window().isVisible());
  EXPECT_NE(window().handle(), nullptr);
}

TEST_F(SettingsView, ClosingItWhileRecordingLeavesNothing) {
  record(3);
  window().close();
  turn();
  EXPECT_EQ(session.desktop().keyMonitor().installedMonitors(), 0);
  session.openSettings();
  EXPECT_EQ(buttonTitle(3), "Change Keys");
}

TEST_F(SettingsView, EveryControlIsReachedWithTheKeyboardAndIsNamed) {
  std::vector<std::string> names;
  QQuickItem* item = &view;
  for (int i = 0; i < 8; ++i) {
    item = item->nextItemInFocusChain(true);
    names.push_back(text(*item, "accessibleName"));
  }
  EXPECT_THAT(names,
              testing::ElementsAre("Window Padding", "Start on Login", "Open Login Items Settings", "Change Keys, Move Focused Window Left",
                                   "Change Keys, Move Focused Window Right", "Change Keys, Center Floating / Fullscreen",
                                   "Change Keys, Float Window Centered (60% × 90%)", "Reset Shortcuts to Default"));
}

TEST_F(SettingsView, AControlThatTheKeyboardReachesIsScrolledIntoView) {
  QQuickItem& reset = find(view, "reset");
  focus(reset);
  EXPECT_TRUE(QRectF(0, 0, 640, 633).contains(within(reset, view)));
  focus(find(view, "stepper"));
  EXPECT_TRUE(QRectF(0, 0, 640, 633).contains(within(find(view, "stepper"), view)));
}

TEST_F(SettingsView, ARowOfItsMenuIsScrolledIntoViewWithTheRingAroundIt) {
  session.openSettings(true);
  for (const char* name : {"row5", "row0"}) {
    QQuickItem& row = find(find(view, "menu"), name);
    focus(row);
    EXPECT_TRUE(QRectF(0, 0, 640, 633).contains(within(row, view).adjusted(-3, -3, 3, 3))) << name;
  }
}

TEST_F(SettingsView, TheSettingsKeyRaisesIt) {
  const auto settings = std::make_shared<simulated::SimulatedOwnWindow>("Tilora Settings");
  session.desktop().shell().windows.push_back(settings);
  key(Qt::Key_Comma, Qt::ControlModifier, 43);
  session.engine().advance(200ms);
  EXPECT_EQ(settings->timesMadeKey, 3);
}

TEST_F(SettingsView, OffersTheMenuOnlyWhereThereIsNoPlaceForTheIcon) {
  EXPECT_FALSE(find(view, "menu").isVisible());
  session.openSettings(true);
  EXPECT_EQ(text(find(find(view, "menu"), "row1"), "title"), "Retile Windows");
  EXPECT_TRUE(find(find(view, "menu"), "quit").isVisible());
}

TEST_F(SettingsView, ACommandOfItsMenuWaitsForTheWindowThatTheUserWasIn) {
  session.openSettings(true);
  focus(find(find(view, "menu"), "row2"));
  InterfaceSession::click(find(find(view, "menu"), "row2"));
  EXPECT_TRUE(session.controller().windowPlacements().empty());
  ASSERT_EQ(session.forUsersWindow.size(), 1U);
  session.forUsersWindow.front()();
  EXPECT_EQ(session.controller().windowPlacements().at({100, 1}), WindowPlacement::left);
}

TEST_F(SettingsView, TheOtherRowsOfItsMenuActAtOnce) {
  session.openSettings(true);
  focus(find(find(view, "menu"), "row1"));
  const auto effects = session.engine().effectsOf([&] { InterfaceSession::click(find(find(view, "menu"), "row1")); });
  EXPECT_THAT(effects, testing::Contains(simulated::resized(1, 1420, 855)));
  EXPECT_TRUE(session.forUsersWindow.empty());
}

}  // namespace
}  // namespace tilora::app
