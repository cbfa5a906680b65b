// Connecting the macOS desktop with the engine, and both with Qt.
#include "app/mac_program.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeySequence>
#include <QMenu>
#include <QScreen>
#include <utility>

#include "app/mac_coordinates.h"
#include "platform/macos/panel.h"
#include "platform/macos/reopening.h"

namespace tilora::app {
namespace {

constexpr const char* trustedSymbol = "rectangle.stack.fill";
constexpr const char* untrustedSymbol = "exclamationmark.triangle.fill";

}  // namespace

MacProgram::MacProgram(const std::string& updateSite, ViewOf viewOf)
    : viewOf_(std::move(viewOf)),
      desktop_(static_cast<ProcessId>(QCoreApplication::applicationPid())),
      parts_(desktop_.interfaces()),
      // A program without a Dock icon is not the active one when its alert comes.
      alert_([this] {
        interface_.closeMenu();
        parts_.shell.activateSelf();
      }),
      updateCheck_(updateSite, parts_.settings, parts_.shell, fetcher_, alert_),
      controller_(parts_),
      interface_(interfaceParts()),
      icon_([this](const Rect& place) { toggleMenu(place); }),
      trust_(controller_, [this] { showTrust(); }) {
  showTrust();
  addSettingsCommand();
  parts_.mainQueue.post([this] {
    reopening_ = macos::watchReopening([this] { interface_.performSettingsCommand(); });
    updateCheck_.start();
  });
}

MacProgram::~MacProgram() = default;

InterfaceParts MacProgram::interfaceParts() {
  return {.controller = controller_,
          .keyMonitor = parts_.keyMonitor,
          // The system shows the monitor every key before Qt, which swaps Control and Command, has seen it.
          .monitorsKey = [](const QKeyEvent&) { return false; },
          .visibleFrame = [](const QScreen& screen) { return screen.availableGeometry(); },
          // Another program stays the active one while the menu is open.
          .inUsersWindow = [](const std::function<void()>& work) { work(); },
          .keyboardTaken = [] {},
          .quit = [] { QCoreApplication::exit(0); },
          .released = [] {},
          .access = {.isAllowed = [this] { return controller_.isAccessibilityTrusted(); },
                     .allow = [this](bool) { controller_.openAccessibilitySettings(); },
                     .missing = [] { return std::vector<std::string>(); }},
          .menuMade = [this](MenuPanel& panel) { setUp(panel); }};
}

void MacProgram::setUp(MenuPanel& panel) {
  // Of Qt's panels only a tool window takes the keyboard.
  panel.setFlags(Qt::Tool | Qt::FramelessWindowHint);
  macos::makePanel(viewOf_(panel));
  QObject::connect(&panel, &QWindow::activeChanged, &panel, [&panel] {
    if (!panel.isActive()) panel.dismiss();
  });
  QObject::connect(&panel, &MenuPanel::dismissed, &panel, [this] { pressesElsewhere_.reset(); });
}

void MacProgram::addSettingsCommand() {
  // Qt puts an action of this role where the system has its settings command, in the menu of the program.
  QAction* settings = menuBar_.addMenu(QStringLiteral("Tilora"))->addAction(QStringLiteral("Settings..."));
  settings->setMenuRole(QAction::PreferencesRole);
  settings->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
  QObject::connect(settings, &QAction::triggered, settings, [this] { interface_.performSettingsCommand(); });
}

void MacProgram::toggleMenu(const Rect& icon) {
  interface_.toggleMenu(placeInQt(icon, parts_.screens.screens()));
  const MenuPanel* panel = interface_.menuPanel();
  if (panel && panel->isVisible()) {
    pressesElsewhere_ = macos::watchPressesElsewhere([this] { interface_.closeMenu(); });
  }
}

void MacProgram::showTrust() { icon_.setSymbol(controller_.isAccessibilityTrusted() ? trustedSymbol : untrustedSymbol, "Tilora"); }

}  // namespace tilora::app
