// What assistive technology is told of the windows, and what it can do in them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <vector>

#include "app/ui/interface_session.h"

namespace tilora::app {
namespace {

struct Told {
  QAccessible::Role role = QAccessible::NoRole;
  std::string name;

  bool operator==(const Told&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Told& told) { return stream << told.role << ' ' << told.name; }

void collect(QAccessibleInterface& from, std::vector<QAccessibleInterface*>& controls) {
  for (int i = 0; i < from.childCount(); ++i) {
    QAccessibleInterface* child = from.child(i);
    if (child == nullptr || child->state().invisible) continue;
    if (child->state().focusable) controls.push_back(child);
    collect(*child, controls);
  }
}

/// Everything in a window that can be operated, in the order in which it is told.
std::vector<QAccessibleInterface*> controlsOf(QWindow& window) {
  std::vector<QAccessibleInterface*> controls;
  if (QAccessibleInterface* whole = QAccessible::queryAccessibleInterface(&window)) collect(*whole, controls);
  return controls;
}

std::vector<Told> toldOf(const std::vector<QAccessibleInterface*>& controls) {
  std::vector<Told> told;
  told.reserve(controls.size());
  for (QAccessibleInterface* control : controls) told.push_back({control->role(), control->text(QAccessible::Name).toStdString()});
  return told;
}

QAccessibleInterface* named(const std::vector<QAccessibleInterface*>& controls, const char* name) {
  for (QAccessibleInterface* control : controls) {
    if (control->text(QAccessible::Name) == QLatin1String(name)) return control;
  }
  throw std::runtime_error(std::string("nothing is named ") + name);
}

class Accessibility : public testing::Test {
 protected:
  Accessibility() { QAccessible::setActive(true); }
  std::vector<QAccessibleInterface*> menu() {
    session.openMenu();
    return controlsOf(*session.interface().menuPanel());
  }
  std::vector<QAccessibleInterface*> settings() {
    session.openSettings();
    return controlsOf(*session.interface().settingsWindow());
  }
  static void press(QAccessibleInterface& control, const QString& action = QAccessibleActionInterface::pressAction()) {
    ASSERT_NE(control.actionInterface(), nullptr);
    ASSERT_TRUE(control.actionInterface()->actionNames().contains(action));
    control.actionInterface()->doAction(action);
    turn();
  }

  InterfaceSession session;
};

TEST_F(Accessibility, EveryRowAndButtonOfTheMenuIsNamed) {
  session.desktop().trust().trusted = false;
  session.engine().advance(std::chrono::milliseconds(250));
  EXPECT_THAT(toldOf(menu()),
              testing::ElementsAre(Told{QAccessible::Button, "Settings"}, Told{QAccessible::Button, "Retile Windows"},
                                   Told{QAccessible::Button, "Focused Window Left"}, Told{QAccessible::Button, "Focused Window Right"},
                                   Told{QAccessible::Button, "Center Floating / Fullscreen"},
                                   Told{QAccessible::Button, "Float Window Centered"}, Told{QAccessible::Button, "Open Settings"},
                                   Told{QAccessible::Button, "Request Again"}, Told{QAccessible::Button, "Quit Tilora"}));
}

TEST_F(Accessibility, ARowIsDescribedByItsSubtitleAndShortcut) {
  const auto controls = menu();
  EXPECT_EQ(named(controls, "Focused Window Left")->text(QAccessible::Description), "Tile focused window to left, Option+Shift+[");
  EXPECT_EQ(named(controls, "Retile Windows")->text(QAccessible::Description), "Refresh positions immediately");
}

TEST_F(Accessibility, ARowIsPressedFromThere) {
  press(*named(menu(), "Focused Window Right"));
  EXPECT_EQ(session.controller().windowPlacements().at({100, 1}), WindowPlacement::right);
  EXPECT_FALSE(session.interface().menuPanel()->isVisible());
}

TEST_F(Accessibility, EveryControlOfTheSettingsIsNamed) {
  EXPECT_THAT(toldOf(settings()),
              testing::ElementsAre(
                  Told{QAccessible::SpinBox, "Window Padding, 10 px"}, Told{QAccessible::Button, "Decrease Window Padding"},
                  Told{QAccessible::Button, "Increase Window Padding"}, Told{QAccessible::CheckBox, "Start on Login"},
                  Told{QAccessible::Link, "Open Login Items Settings"}, Told{QAccessible::Button, "Change Keys, Move Focused Window Left"},
                  Told{QAccessible::Button, "Change Keys, Move Focused Window Right"},
                  Told{QAccessible::Button, "Change Keys, Center Floating / Fullscreen"},
                  Told{QAccessible::Button, "Change Keys, Float Window Centered (60% × 90%)"},
                  Told{QAccessible::Button, "Reset Shortcuts to Default"}));
}

TEST_F(Accessibility, TheStepperTheSwitchAndTheRecorderAreOperatedFromThere) {
  const auto controls = settings();
  press(*named(controls, "Window Padding, 10 px"), QAccessibleActionInterface::increaseAction());
  EXPECT_EQ(session.controller().windowPadding(), 11);
  press(*named(controls, "Decrease Window Padding"));
  EXPECT_EQ(session.controller().windowPadding(), 10);
  QAccessibleInterface& login = *named(controls, "Start on Login");
  EXPECT_FALSE(login.state().checked);
  press(login, QAccessibleActionInterface::toggleAction());
  EXPECT_TRUE(session.controller().startOnLoginEnabled());
  EXPECT_TRUE(login.state().checked);
  press(*named(controls, "Change Keys, Move Focused Window Left"));
  EXPECT_EQ(session.desktop().keyMonitor().installedMonitors(), 1);
  EXPECT_NO_THROW(named(controls, "Press Keys..., Move Focused Window Left"));
}

}  // namespace
}  // namespace tilora::app
