// What the menu shows, measured on the running items, and what its rows do.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QJSValue>
#include <QQmlListReference>

#include "app/ui/interface_session.h"
#include "app/ui/spring_value.h"
#include "app/ui/theme.h"

namespace tilora::app {
namespace {

using namespace std::chrono_literals;

class MenuView : public testing::Test {
 protected:
  QQuickItem& row(int index) { return find(menu, ("row" + std::to_string(index)).c_str()); }
  WindowPlacement placement() { return session.controller().windowPlacements().at({100, 1}); }
  bool isOpen() { return session.interface().menuPanel()->isVisible(); }
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { InterfaceSession::tap(*session.interface().menuPanel(), key, modifiers); }

  InterfaceSession session;
  QQuickItem& menu = session.openMenu();
};

TEST_F(MenuView, HasItsWidthAndPaddings) {
  const QQuickItem& content = find(menu, "content");
  EXPECT_EQ(menu.width(), 420);
  EXPECT_EQ(content.x(), 15);
  EXPECT_EQ(content.y(), 7);
  EXPECT_EQ(content.width(), 420 - 2 * 15);
  EXPECT_EQ(menu.implicitHeight(), content.height() + 2 * 7);
  EXPECT_EQ(session.interface().menuPanel()->size(), QSize(420, static_cast<int>(menu.implicitHeight())));
}

TEST_F(MenuView, StacksCardsAndFooterTwelveApart) {
  session.engine().advance(250ms);
  turn();
  const QQuickItem& actions = find(menu, "actions");
  EXPECT_FALSE(find(menu, "permissions").isVisible());
  EXPECT_EQ(actions.y(), 0);
  EXPECT_TRUE(runUntil([&] { return find(menu, "footer").y() == actions.height() + 12; }));
  session.desktop().trust().trusted = false;
  session.engine().advance(250ms);
  turn();
  const QQuickItem& permissions = find(menu, "permissions");
  EXPECT_TRUE(permissions.isVisible());
  EXPECT_TRUE(runUntil([&] { return permissions.y() == actions.height() + 12; }));
  EXPECT_TRUE(runUntil([&] { return find(menu, "footer").y() == permissions.y() + permissions.height() + 12; }));
}

TEST_F(MenuView, ACardHasItsShapeAndTitle) {
  QQuickItem& card = find(menu, "actions");
  QQuickItem& background = find(card, "background");
  EXPECT_EQ(within(background, card), QRectF(0, 0, card.width(), card.height()));
  EXPECT_EQ(number(background, "radius"), 12);
  EXPECT_TRUE(background.property("continuous").toBool());
  EXPECT_EQ(number(background, "outlineWidth"), 1);
  EXPECT_NEAR(share(background, "color"), 0.45, tolerance);
  EXPECT_NEAR(share(background, "outlineColor"), 0.35, tolerance);
  QQuickItem& stack = find(card, "stack");
  EXPECT_EQ(within(stack, card), QRectF(12, 12, card.width() - 24, card.height() - 24));
  QQuickItem& title = find(card, "title");
  expectText(title, "Tilora 1.2", 13, QFont::DemiBold);
  EXPECT_TRUE(title.property("secondary").toBool());
}

TEST_F(MenuView, ItsBackgroundGoesFromTheWindowsColourToHalfTheControls) {
  const Theme theme;
  EXPECT_EQ(find(menu, "backing").property("color").value<QColor>(), theme.windowBackground());
  QQuickItem& gradient = find(menu, "gradient");
  EXPECT_EQ(within(gradient, menu), QRectF(QPointF(0, 0), menu.size()));
  const QQmlListReference stops(gradient.property("gradient").value<QJSValue>().toQObject(), "stops");
  ASSERT_EQ(stops.count(), 2);
  EXPECT_EQ(stops.at(0)->property("position").toDouble(), 0);
  EXPECT_EQ(stops.at(0)->property("color").value<QColor>(), theme.windowBackground());
  EXPECT_EQ(stops.at(1)->property("position").toDouble(), 1);
  EXPECT_EQ(stops.at(1)->property("color").value<QColor>(), theme.faded(theme.controlBackground(), 0.5));
}

TEST_F(MenuView, TitlesAndTheGapHaveTheRoundedDesign) {
  EXPECT_TRUE(find(find(menu, "actions"), "title").property("rounded").toBool());
  EXPECT_TRUE(find(find(menu, "permissions"), "title").property("rounded").toBool());
  EXPECT_TRUE(find(find(menu, "footer"), "lineText").property("rounded").toBool());
  EXPECT_FALSE(find(row(0), "rowTitle").property("rounded").toBool());
}

TEST_F(MenuView, EveryColourIsOneOfTheSystemsRoles) {
  const Theme theme;
  const auto colour = [](QQuickItem& item, const char* property) { return item.property(property).value<QColor>().rgba(); };
  QQuickItem& card = find(find(menu, "actions"), "background");
  EXPECT_EQ(colour(card, "color"), theme.faded(theme.controlBackground(), 0.45).rgba());
  EXPECT_EQ(colour(card, "outlineColor"), theme.faded(theme.separator(), 0.35).rgba());
  QQuickItem& capsule = find(row(2), "capsule");
  EXPECT_EQ(colour(capsule, "color"), theme.faded(theme.controlBackground(), 0.8).rgba());
  EXPECT_EQ(colour(capsule, "outlineColor"), theme.faded(theme.separator(), 0.45).rgba());
  EXPECT_EQ(number(capsule, "outlineWidth"), 1);
  EXPECT_EQ(colour(find(row(2), "rowTitle"), "color"), theme.text().rgba());
  EXPECT_EQ(colour(find(row(2), "rowSubtitle"), "color"), theme.secondaryText().rgba());
}

TEST_F(MenuView, ARowHasItsSymbolThenItsTextsAndItsCapsuleAtTheEnd) {
  QQuickItem& label = find(row(2), "label");
  QQuickItem& symbol = find(row(2), "symbol");
  QQuickItem& title = find(row(2), "rowTitle");
  QQuickItem& subtitle = find(row(2), "rowSubtitle");
  QQuickItem& capsule = find(row(2), "shortcutCapsule");
  EXPECT_EQ(within(symbol, label).left(), 0);
  EXPECT_GT(within(title, label).left(), within(symbol, label).right());
  EXPECT_EQ(within(title, label).left(), within(subtitle, label).left());
  EXPECT_GE(within(subtitle, label).top(), within(title, label).bottom());
  EXPECT_LT(within(title, label).right(), within(capsule, label).left());
  EXPECT_EQ(within(capsule, label).right(), label.width());
  EXPECT_NEAR(within(capsule, label).center().y(), label.height() / 2, 0.5);
}

TEST_F(MenuView, ShowsSixRowsInTheirOrder) {
  const std::array<std::array<const char*, 4>, 6> expected = {{
      {"Settings", "Adjust behavior and shortcuts", "slider.horizontal.3", "Cmd+,"},
      {"Retile Windows", "Refresh positions immediately", "arrow.triangle.2.circlepath", ""},
      {"Focused Window Left", "Tile focused window to left", "square.lefthalf.filled", "Option+Shift+["},
      {"Focused Window Right", "Tile focused window to right", "square.righthalf.filled", "Option+Shift+]"},
      {"Center Floating / Fullscreen", "Center fixed windows or fill", "rectangle.inset.filled", "Option+Shift+Space"},
      {"Float Window Centered", "Resize to 60% width, 90% height and center", "rectangle.center.inset.filled", "Option+Shift+J"},
  }};
  double bottom = 0;
  for (int i = 0; i < 6; ++i) {
    const auto& [title, subtitle, symbol, shortcut] = expected.at(static_cast<std::size_t>(i));
    expectText(find(row(i), "rowTitle"), title, 13, QFont::Medium);
    expectText(find(row(i), "rowSubtitle"), subtitle, 11, QFont::Normal);
    EXPECT_TRUE(find(row(i), "rowSubtitle").property("secondary").toBool());
    EXPECT_EQ(find(row(i), "symbol").property("name").toString().toStdString(), symbol);
    EXPECT_EQ(number(row(i), "symbolSize"), 13);
    EXPECT_EQ(find(row(i), "shortcutCapsule").isVisible(), *shortcut != '\0');
    if (*shortcut != '\0') expectText(find(row(i), "shortcut"), shortcut, 11, QFont::Medium);
    EXPECT_GE(row(i).y(), bottom);
    bottom = row(i).y() + row(i).height();
  }
}

TEST_F(MenuView, NoTextOfARowIsCut) {
  for (int i = 0; i < 6; ++i) {
    for (const char* name : {"rowTitle", "rowSubtitle"}) {
      QQuickItem& label = find(row(i), name);
      EXPECT_FALSE(label.property("truncated").toBool()) << i << name;
      EXPECT_LE(number(label, "contentWidth"), label.width()) << i << name;
    }
  }
}

TEST_F(MenuView, ARowIsAsWideAsItsCardAndPadsItsLabel) {
  const QQuickItem& label = find(row(2), "label");
  EXPECT_EQ(row(2).width(), 420 - 2 * 15 - 2 * 12);
  EXPECT_EQ(within(label, row(2)), QRectF(10, 8, row(2).width() - 20, row(2).height() - 16));
}

TEST_F(MenuView, TheCapsulePadsItsTextAndIsRoundAtBothEnds) {
  QQuickItem& capsule = find(row(2), "shortcutCapsule");
  QQuickItem& shape = find(capsule, "capsule");
  QQuickItem& label = find(capsule, "shortcut");
  EXPECT_EQ(within(label, capsule).left(), 7);
  EXPECT_EQ(within(label, capsule).top(), 4);
  EXPECT_EQ(capsule.width(), label.width() + 14);
  EXPECT_EQ(capsule.height(), label.height() + 8);
  EXPECT_EQ(number(shape, "radius"), capsule.height() / 2);
  EXPECT_NEAR(share(shape, "color"), 0.8, tolerance);
  EXPECT_NEAR(share(shape, "outlineColor"), 0.45, tolerance);
  EXPECT_EQ(number(shape, "outlineWidth"), 1);
  EXPECT_TRUE(label.property("monospaced").toBool());
  EXPECT_TRUE(label.property("secondary").toBool());
}

TEST_F(MenuView, ARowAtRestIsIdle) {
  QQuickItem& background = find(row(2), "background");
  EXPECT_EQ(number(background, "radius"), 10);
  EXPECT_TRUE(background.property("continuous").toBool());
  EXPECT_NEAR(share(background, "color"), 0.6, tolerance);
  EXPECT_NEAR(share(background, "outlineColor"), 0.25, tolerance);
  EXPECT_EQ(number(background, "outlineWidth"), 1);
  EXPECT_EQ(row(2).scale(), 1);
}

TEST_F(MenuView, APressedRowSpringsToItsPressedLookAndBack) {
  QQuickItem& background = find(row(2), "background");
  auto* spring = row(2).findChild<SpringValue*>("spring");
  ASSERT_NE(spring, nullptr);
  EXPECT_EQ(spring->response(), 0.16);
  EXPECT_EQ(spring->dampingFraction(), 0.85);
  InterfaceSession::press(row(2));
  EXPECT_EQ(spring->target(), 1);
  ASSERT_TRUE(runUntil([&] { return spring->state() == QAbstractAnimation::Stopped; }));
  EXPECT_NEAR(share(background, "color"), 0.95, tolerance);
  EXPECT_NEAR(share(background, "outlineColor"), 0.45, tolerance);
  EXPECT_DOUBLE_EQ(row(2).scale(), 0.99);
  InterfaceSession::release(row(2));
  ASSERT_TRUE(runUntil([&] { return spring->state() == QAbstractAnimation::Stopped; }));
  EXPECT_NEAR(share(background, "color"), 0.6, tolerance);
  EXPECT_EQ(row(2).scale(), 1);
}

TEST_F(MenuView, ACommandClosesTheMenuAndIsDone) {
  const std::array placements = {WindowPlacement::left, WindowPlacement::right, WindowPlacement::full, WindowPlacement::floatCenter};
  for (int i = 0; i < 4; ++i) {
    if (!isOpen()) session.openMenu();
    InterfaceSession::click(row(i + 2));
    EXPECT_EQ(placement(), placements.at(static_cast<std::size_t>(i)));
    EXPECT_FALSE(isOpen());
  }
}

TEST_F(MenuView, ItsCommandsWaitForNoWindow) {
  InterfaceSession::click(row(2));
  EXPECT_TRUE(session.forUsersWindow.empty());
}

TEST_F(MenuView, TheSecondRowMakesAPass) {
  const auto effects = session.engine().effectsOf([&] { InterfaceSession::click(row(1)); });
  EXPECT_THAT(effects, testing::ElementsAre(simulated::moved(1, 10, 35), simulated::resized(1, 1420, 855)));
}

TEST_F(MenuView, TheFirstRowAndTheSettingsKeyOpenTheSettings) {
  InterfaceSession::click(row(0));
  ASSERT_NE(session.interface().settingsWindow(), nullptr);
  EXPECT_TRUE(session.interface().settingsWindow()->isVisible());
  for (const auto modifier : {Qt::ControlModifier, Qt::MetaModifier}) {
    session.interface().settingsWindow()->close();
    session.openMenu();
    key(Qt::Key_Comma, modifier);
    EXPECT_TRUE(session.interface().settingsWindow()->isVisible());
    EXPECT_FALSE(isOpen());
  }
}

TEST_F(MenuView, CommaAloneOrWithOtherModifiersDoesNothing) {
  for (const Qt::KeyboardModifiers modifiers : {Qt::KeyboardModifiers(), Qt::ShiftModifier | Qt::ControlModifier})
    key(Qt::Key_Comma, modifiers);
  EXPECT_EQ(session.interface().settingsWindow(), nullptr);
  EXPECT_TRUE(isOpen());
}

TEST_F(MenuView, EscapeAndAClickElsewhereCloseIt) {
  key(Qt::Key_Escape);
  EXPECT_FALSE(isOpen());
  session.openMenu();
  QMouseEvent outside(QEvent::MouseButtonPress, QPointF(-5, 20), QPointF(0, 0), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(session.interface().menuPanel(), &outside);
  EXPECT_FALSE(isOpen());
}

TEST_F(MenuView, TheIconClosesAnOpenMenu) {
  session.interface().toggleMenu(QRect(700, 0, 24, 24));
  EXPECT_FALSE(isOpen());
}

TEST_F(MenuView, EveryRowAndButtonIsReachedWithTheKeyboard) {
  ASSERT_TRUE(find(menu, "permissions").isVisible());
  const std::array order = {
      &row(0), &row(1), &row(2), &row(3), &row(4), &row(5), &find(menu, "openSettings"), &find(menu, "requestAgain"), &find(menu, "quit")};
  for (const QQuickItem* item : order) {
    key(Qt::Key_Down);
    EXPECT_EQ(session.interface().menuPanel()->activeFocusItem(), item);
  }
  key(Qt::Key_Up);
  EXPECT_EQ(session.interface().menuPanel()->activeFocusItem(), order.at(7));
  key(Qt::Key_Tab);
  EXPECT_EQ(session.interface().menuPanel()->activeFocusItem(), order.at(8));
}

TEST_F(MenuView, TheKeyboardBeginsAtTheTopEachTimeItOpens) {
  for (int times = 0; times < 2; ++times) {
    if (!isOpen()) session.openMenu();
    for (int i = 0; i < 3; ++i) key(Qt::Key_Down);
    EXPECT_EQ(session.interface().menuPanel()->activeFocusItem(), &row(2));
    key(Qt::Key_Escape);
  }
}

TEST_F(MenuView, TheReturnKeyDoesWhatAClickDoes) {
  for (int i = 0; i < 4; ++i) key(Qt::Key_Down);
  key(Qt::Key_Return);
  EXPECT_EQ(placement(), WindowPlacement::right);
  EXPECT_FALSE(isOpen());
}

TEST_F(MenuView, TheCardThatAsksForAccessHasItsTextAndButtons) {
  QQuickItem& card = find(menu, "permissions");
  expectText(find(card, "title"), "Fix Permissions", 13, QFont::DemiBold);
  QQuickItem& warning = find(card, "warning");
  expectText(warning, "Window control is disabled until Accessibility access is granted.", 12, QFont::Normal);
  EXPECT_TRUE(warning.property("secondary").toBool());
  EXPECT_EQ(find(card, "openSettings").property("title"), "Open Settings");
  EXPECT_EQ(find(card, "requestAgain").property("title"), "Request Again");
  EXPECT_EQ(within(find(card, "openSettings"), card).top(), within(find(card, "requestAgain"), card).top());
  EXPECT_TRUE(find(card, "openSettings").property("filled").toBool());
  EXPECT_FALSE(find(card, "requestAgain").property("filled").toBool());
}

TEST_F(MenuView, ThoseButtonsOpenThePaneAndAskAgain) {
  const auto opened = session.engine().effectsOf([&] { InterfaceSession::click(find(menu, "openSettings")); });
  EXPECT_THAT(opened, testing::ElementsAre(simulated::Effect(
                          simulated::UrlOpened{"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"})));
  session.openMenu();
  const auto asked = session.engine().effectsOf([&] { InterfaceSession::click(find(menu, "requestAgain")); });
  EXPECT_THAT(asked, testing::Contains(simulated::Effect(simulated::TrustRequested{true})));
}

TEST_F(MenuView, TheFooterShowsTheGapAndQuits) {
  QQuickItem& footer = find(menu, "footer");
  session.controller().setWindowPadding(7.9);
  turn();
  expectText(find(footer, "lineText"), "7 px gap", 12, QFont::Medium);
  EXPECT_EQ(find(footer, "lineSymbol").property("name"), "square.grid.3x3");
  EXPECT_EQ(find(footer, "quit").property("title"), "Quit Tilora");
  InterfaceSession::click(find(footer, "quit"));
  EXPECT_EQ(session.timesQuit(), 1);
}

TEST_F(MenuView, OnAScreenThatIsTooLowItIsScrolled) {
  key(Qt::Key_Escape);
  session.screen = {0, 10, 800, 300};
  session.openMenu();
  QWindow& window = *session.interface().menuPanel();
  EXPECT_EQ(window.geometry(), QRect(380, 10, 420, 300));
  const QRectF seen(0, 0, 420, 300);
  const auto isSeen = [&](const char* name) { return seen.contains(within(find(menu, name), menu)); };
  EXPECT_TRUE(find(menu, "scrollIndicator").isVisible());
  EXPECT_TRUE(isSeen("row0"));
  EXPECT_FALSE(isSeen("quit"));
  key(Qt::Key_Up);
  EXPECT_TRUE(isSeen("quit"));
  key(Qt::Key_Down);
  EXPECT_TRUE(isSeen("row0"));
  QWheelEvent wheel({50, 50}, {50, 50}, {}, QPoint(0, -1200), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&window, &wheel);
  EXPECT_TRUE(runUntil([&] { return isSeen("quit"); }));
  key(Qt::Key_Escape);
  session.openMenu();
  EXPECT_TRUE(isSeen("row0"));
}

TEST_F(MenuView, WhereItFitsNothingIsScrolled) {
  EXPECT_FALSE(find(menu, "scrollIndicator").isVisible());
  QWheelEvent wheel({50, 50}, {50, 50}, {}, QPoint(0, -1200), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(session.interface().menuPanel(), &wheel);
  turn();
  EXPECT_EQ(within(find(menu, "content"), menu).top(), 7);
}

TEST_F(MenuView, FollowsTheBindingsWhileItIsOpen) {
  session.controller().setBinding({123, 0x1800}, ShortcutAction::moveRight);
  turn();
  EXPECT_EQ(text(find(row(3), "shortcut")), "Ctrl+Option+Left");
}

}  // namespace
}  // namespace tilora::app
