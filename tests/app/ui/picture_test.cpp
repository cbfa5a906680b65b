// The windows as they are drawn, beside the pictures that were looked at and found right. Run once for each scale (QT_SCALE_FACTOR) and for
// light and dark (TILORA_SCHEME). With TILORA_WRITE_PICTURES set, the pictures are written anew instead, to be looked at before they are
// kept.
#include "app/ui/consent_window.h"
#include "app/ui/qml_module.h"
#include "app/ui/spring_value.h"
#include "pictures.h"

namespace tilora::app {
namespace {

using namespace std::chrono_literals;

class Pictures : public testing::Test {
 protected:
  Pictures() {
    session.controller().setWindowPadding(12);
    session.engine().advance(250ms);
    turn();
  }

  /// Compares a window with the picture of that name.
  void compare(QQuickWindow& window, const char* name) { expectLikePicture(pictureOf(window), QLatin1String(name) + variant()); }
  static bool isAtRest(QQuickItem& item, const char* spring) {
    return runUntil([&] { return item.findChild<SpringValue*>(QLatin1String(spring))->state() == QAbstractAnimation::Stopped; });
  }

  InterfaceSession session;
};

TEST_F(Pictures, TheMenu) {
  session.openMenu();
  compare(*session.interface().menuPanel(), "menu");
}

TEST_F(Pictures, TheMenuWithARowPressedAndTheKeyboardOnAnother) {
  QQuickItem& menu = session.openMenu();
  for (int i = 0; i < 2; ++i) InterfaceSession::tap(*session.interface().menuPanel(), Qt::Key_Down);
  InterfaceSession::press(find(menu, "row2"));
  ASSERT_TRUE(isAtRest(find(menu, "row2"), "spring"));
  compare(*session.interface().menuPanel(), "menu-pressed");
}

TEST_F(Pictures, TheMenuWithoutConsent) {
  session.desktop().trust().trusted = false;
  session.engine().advance(250ms);
  QQuickItem& menu = session.openMenu();
  ASSERT_TRUE(runUntil([&] { return find(menu, "permissions").y() > 0 && find(menu, "footer").y() > find(menu, "permissions").y(); }));
  compare(*session.interface().menuPanel(), "menu-without-consent");
}

TEST_F(Pictures, TheSettings) {
  session.openSettings();
  compare(*session.interface().settingsWindow(), "settings");
}

TEST_F(Pictures, TheSettingsWithErrorsARecordingAndThePaddingAtItsEnd) {
  QQuickItem& settings = session.openSettings();
  session.controller().setWindowPadding(80);
  session.desktop().loginItem().traits.registerError = "The disk is full.";
  InterfaceSession::click(find(settings, "loginSwitch"));
  InterfaceSession::click(find(find(settings, "shortcut0"), "record"));
  InterfaceSession::tap(*session.interface().settingsWindow(), Qt::Key_K);
  InterfaceSession::click(find(find(settings, "shortcut1"), "record"));
  ASSERT_TRUE(isAtRest(find(settings, "loginSwitch"), "slide"));
  compare(*session.interface().settingsWindow(), "settings-errors");
}

TEST_F(Pictures, TheSettingsWithTheSwitchOnAndTheMenuAtTheEnd) {
  QQuickItem& settings = session.openSettings(true);
  InterfaceSession::click(find(settings, "loginSwitch"));
  ASSERT_TRUE(isAtRest(find(settings, "loginSwitch"), "slide"));
  find(find(settings, "menu"), "row5").forceActiveFocus(Qt::TabFocusReason);
  turn();
  compare(*session.interface().settingsWindow(), "settings-menu");
}

TEST_F(Pictures, ThePermissionPage) {
  session.allowed = true;
  QQuickItem& page = session.openAccess();
  ASSERT_TRUE(isAtRest(find(page, "allowed"), "slide"));
  compare(*session.interface().accessWindow(), "permission");
}

TEST_F(Pictures, ThePermissionPageWhereSomethingIsMissing) {
  session.missing = {"There is no window manager that follows the EWMH standard.", "This is a Wayland session."};
  session.openAccess();
  compare(*session.interface().accessWindow(), "permission-missing");
}

TEST_F(Pictures, TheConsentDialog) {
  const auto engine = makeEngine();
  ConsentWindow window(*engine, {});
  window.show();
  turn();
  compare(window, "consent");
}

TEST_F(Pictures, TheConsentDialogWhereSomethingIsMissing) {
  const auto engine = makeEngine();
  ConsentWindow window(*engine, {QStringLiteral("There is no window manager that follows the EWMH standard."),
                                 QStringLiteral("This is a Wayland session.")});
  window.show();
  turn();
  compare(window, "consent-missing");
}

TEST(PictureDifference, SeesWhatAPersonSees) {
  InterfaceSession session;
  session.openMenu();
  const QImage menu = pictureOf(*session.interface().menuPanel());
  EXPECT_EQ(visibleDifference(menu, menu), 0);
  EXPECT_EQ(visibleDifference(menu, menu.copy(0, 0, menu.width(), menu.height() - 1)), 1);
  EXPECT_EQ(visibleDifference(menu, QImage()), 1);
  session.controller().setBinding({123, 0x1800}, ShortcutAction::moveRight);
  turn();
  EXPECT_GT(visibleDifference(menu, pictureOf(*session.interface().menuPanel())), 0.0015);
  EXPECT_GT(visibleDifference(menu, menu.copy(0, 1, menu.width(), menu.height())), 0.02);
}

}  // namespace
}  // namespace tilora::app

int main(int argc, char** argv) { return tilora::app::runPictureTests(argc, argv); }
