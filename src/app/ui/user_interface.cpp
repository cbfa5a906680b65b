// Making the windows and letting go of them.
#include "app/ui/user_interface.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <utility>

#include "app/ui/qml_module.h"

namespace tilora::app {
namespace {

/// A menu that is used again within this time opens from memory.
constexpr int keptWhenIdle = 60'000;

}  // namespace

UserInterface::UserInterface(InterfaceParts parts)
    : parts_(std::move(parts)),
      menu_(parts_.controller, {.openSettings = [this] { openSettings(offersMenu_); }, .quit = parts_.quit, .inUsersWindow = {}}),
      settingsMenu_(parts_.controller,
                    {.openSettings = [this] { openSettings(offersMenu_); }, .quit = parts_.quit, .inUsersWindow = parts_.inUsersWindow}),
      settings_(parts_.controller, parts_.keyMonitor),
      access_(parts_.controller, parts_.access) {
  idle_.setSingleShot(true);
  idle_.setInterval(keptWhenIdle);
  QObject::connect(&idle_, &QTimer::timeout, &idle_, [this] {
    panel_.reset();
    settingsWindow_.reset();
    accessWindow_.reset();
    engine_.reset();
    parts_.released();
  });
}

UserInterface::~UserInterface() = default;

QQmlEngine& UserInterface::engine() {
  idle_.stop();
  if (!engine_) engine_ = makeEngine();
  return *engine_;
}

void UserInterface::toggleMenu(const QRect& icon) {
  if (panel_ && panel_->isVisible()) return panel_->dismiss();
  QQmlEngine& qml = engine();
  if (!panel_) {
    panel_ = std::make_unique<MenuPanel>(qml, menu_);
    parts_.menuMade(*panel_);
    QObject::connect(panel_.get(), &MenuPanel::keyboardTaken, &idle_, [this] { parts_.keyboardTaken(); });
    QObject::connect(panel_.get(), &MenuPanel::dismissed, &idle_, [this] { releaseWhenIdle(); });
  }
  const QScreen* screen = QGuiApplication::screenAt(icon.center());
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  if (screen != nullptr) panel_->openAt(icon, parts_.visibleFrame(*screen));
}

void UserInterface::closeMenu() {
  if (panel_) panel_->dismiss();
}

void UserInterface::openSettings(bool offersMenu) {
  QQmlEngine& qml = engine();
  if (!settingsWindow_) {
    settingsWindow_ = std::make_unique<SettingsWindow>(qml, settings_, settingsMenu_, parts_.monitorsKey);
    QObject::connect(settingsWindow_.get(), &SettingsWindow::closed, &idle_, [this] { releaseWhenIdle(); });
  }
  settingsWindow_->setOffersMenu(offersMenu);
  settingsWindow_->showNormal();
}

void UserInterface::performSettingsCommand() {
  openSettings(offersMenu_);
  parts_.controller.raiseSettingsWindow();
}

void UserInterface::openAccess() {
  QQmlEngine& qml = engine();
  if (!accessWindow_) {
    accessWindow_ = std::make_unique<DismissibleView>(qml);
    accessWindow_->setTitle(QStringLiteral("Tilora Permission"));
    accessWindow_->setInitialProperties(
        {{QStringLiteral("access"), QVariant::fromValue(&access_)}, {QStringLiteral("menu"), QVariant::fromValue(&settingsMenu_)}});
    accessWindow_->setSource(QUrl(QStringLiteral("qrc:/qt/qml/Tilora/AccessView.qml")));
    QObject::connect(accessWindow_->rootObject(), SIGNAL(dismissed()), accessWindow_.get(), SLOT(dismiss()));
    QObject::connect(accessWindow_.get(), &QWindow::visibleChanged, &idle_, [this] { releaseWhenIdle(); });
  }
  access_.refresh();
  accessWindow_->showNormal();
  accessWindow_->requestActivate();
}

void UserInterface::releaseWhenIdle() {
  const auto isOpen = [](const auto& window) { return window && window->isVisible(); };
  if (!isOpen(panel_) && !isOpen(settingsWindow_) && !isOpen(accessWindow_)) idle_.start();
}

}  // namespace tilora::app
