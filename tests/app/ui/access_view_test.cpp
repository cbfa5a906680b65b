// The page where consent is given and taken back.
#include <gtest/gtest.h>

#include "app/ui/interface_session.h"

namespace tilora::app {
namespace {

TEST(AccessView, GivesConsentAndTakesItBack) {
  InterfaceSession session;
  QQuickItem& page = session.openAccess();
  QQuickItem& toggle = find(page, "allowed");
  EXPECT_FALSE(toggle.property("on").toBool());
  InterfaceSession::click(toggle);
  EXPECT_TRUE(session.allowed);
  EXPECT_TRUE(toggle.property("on").toBool());
  InterfaceSession::click(toggle);
  EXPECT_FALSE(session.allowed);
}

TEST(AccessView, TheSettingsKeyOpensTheSettingsAndControlWClosesIt) {
  InterfaceSession session;
  session.openAccess();
  InterfaceSession::tap(*session.interface().accessWindow(), Qt::Key_Comma, Qt::ControlModifier);
  ASSERT_NE(session.interface().settingsWindow(), nullptr);
  EXPECT_TRUE(session.interface().settingsWindow()->isVisible());
  session.openAccess();
  InterfaceSession::tap(*session.interface().accessWindow(), Qt::Key_W, Qt::ControlModifier);
  EXPECT_FALSE(session.interface().accessWindow()->isVisible());
}

TEST(AccessView, SaysWhatIsMissing) {
  InterfaceSession session;
  QQuickItem& page = session.openAccess();
  EXPECT_TRUE(find(page, "complete").isVisible());
  session.missing = {"There is no window manager.", "This is a Wayland session."};
  session.openAccess();
  EXPECT_FALSE(find(page, "complete").isVisible());
  EXPECT_EQ(text(find(page, "missing0")), "There is no window manager.");
  EXPECT_EQ(text(find(page, "missing1")), "This is a Wayland session.");
}

}  // namespace
}  // namespace tilora::app
