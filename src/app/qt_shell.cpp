// Listing Qt's windows and opening addresses.
#include "app/qt_shell.h"

#include <QGuiApplication>
#include <QPointer>
#include <QProcess>
#include <QUrl>
#include <utility>

namespace tilora::app {
namespace {

constexpr std::string_view accessibilityPage = "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";
constexpr std::string_view loginItemsPage = "x-apple.systempreferences:com.apple.LoginItems-Settings.extension";

class QtOwnWindow : public OwnWindow {
 public:
  QtOwnWindow(QWindow& window, std::function<void(QWindow&)> activate) : window_(&window), activate_(std::move(activate)) {}

  std::string title() const override { return window_ ? window_->title().toStdString() : ""; }
  bool canBecomeKey() const override {
    constexpr Qt::WindowFlags outside = Qt::BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus;
    return window_ && (window_->type() == Qt::Window || window_->type() == Qt::Dialog) && !(window_->flags() & outside);
  }
  bool isMinimized() const override { return window_ && window_->windowStates().testFlag(Qt::WindowMinimized); }
  void orderFrontRegardless() override {
    if (window_) window_->raise();
  }
  void makeKeyAndOrderFront() override {
    if (window_) activate_(*window_);
  }

 private:
  QPointer<QWindow> window_;
  std::function<void(QWindow&)> activate_;
};

}  // namespace

QtShell::QtShell(SettingsPages pages, std::function<void(QWindow&)> activate) : pages_(std::move(pages)), activate_(std::move(activate)) {}

std::vector<std::shared_ptr<OwnWindow>> QtShell::ownWindows() {
  std::vector<std::shared_ptr<OwnWindow>> windows;
  for (QWindow* window : QGuiApplication::topLevelWindows()) {
    if (window->isVisible()) windows.push_back(std::make_shared<QtOwnWindow>(*window, activate_));
  }
  return windows;
}

void QtShell::openURL(std::string_view url) {
  if (url == accessibilityPage) return pages_.accessibility();
  if (url == loginItemsPage) return pages_.loginItems();
  const QUrl parsed(QString::fromUtf8(url.data(), static_cast<qsizetype>(url.size())), QUrl::StrictMode);
  if (!parsed.isValid() || parsed.scheme().isEmpty()) return;
  QProcess::startDetached(QStringLiteral("xdg-open"), {parsed.toString(QUrl::FullyEncoded)});
}

}  // namespace tilora::app
