// The windows of the program over a controller on a simulated desktop.
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QMouseEvent>
#include <QQuickItem>
#include <functional>

#include "app/ui/user_interface.h"
#include "controller/session.h"

namespace tilora::app {

/// Runs the event loop until `done`, or until it is plainly not going to be: false then.
inline bool runUntil(const std::function<bool()>& done) {
  const QDeadlineTimer deadline(20000);
  while (!done()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    QCoreApplication::sendPostedEvents();
  }
  return true;
}

/// Lets what was queued happen.
inline void turn() {
  QCoreApplication::sendPostedEvents();
  QCoreApplication::processEvents();
}

class InterfaceSession {
 public:
  InterfaceSession() : InterfaceSession(test::tiledLaptop().app(100).window(1).front(100, 1).build()) {}
  explicit InterfaceSession(std::unique_ptr<simulated::SimulatedDesktop> desktop) : session_(std::move(desktop)) {}

  test::Session& engine() { return session_; }
  simulated::SimulatedDesktop& desktop() { return session_.desktop(); }
  WindowManagerController& controller() { return session_.controller(); }
  UserInterface& interface() { return interface_; }
  int timesQuit() const { return timesQuit_; }

  /// What panels leave free.
  QRect screen = {0, 0, 800, 800};
  /// The user's consent and what the session lacks.
  bool allowed = false;
  std::vector<std::string> missing;
  /// What waits for the window that the user was in.
  std::vector<std::function<void()>> forUsersWindow;

  QQuickItem& openMenu() {
    interface_.toggleMenu(QRect(700, 0, 24, 24));
    turn();
    return *interface_.menuPanel()->rootObject();
  }
  QQuickItem& openSettings(bool offersMenu = false) {
    interface_.openSettings(offersMenu);
    turn();
    return *interface_.settingsWindow()->rootObject();
  }

  QQuickItem& openAccess() {
    interface_.openAccess();
    turn();
    return *interface_.accessWindow()->rootObject();
  }

  /// The user presses and releases a key in the window.
  static void tap(QWindow& window, Qt::Key key, Qt::KeyboardModifiers modifiers = {}, quint32 scanCode = 0) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers, scanCode, 0, 0);
    QCoreApplication::sendEvent(&window, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, scanCode, 0, 0);
    QCoreApplication::sendEvent(&window, &release);
    turn();
  }
  static void press(const QQuickItem& item) { button(item, QEvent::MouseButtonPress, Qt::LeftButton); }
  static void release(const QQuickItem& item) { button(item, QEvent::MouseButtonRelease, Qt::NoButton); }
  static void click(const QQuickItem& item) {
    press(item);
    release(item);
    turn();
  }

 private:
  static void button(const QQuickItem& item, QEvent::Type type, Qt::MouseButtons held) {
    QWindow* window = item.window();
    const QPointF place = item.mapToScene(QPointF(item.width() / 2, item.height() / 2));
    QMouseEvent event(type, place, place + window->position(), Qt::LeftButton, held, Qt::NoModifier);
    QCoreApplication::sendEvent(window, &event);
  }

  test::Session session_;
  int timesQuit_ = 0;
  UserInterface interface_{{.controller = session_.controller(),
                            .keyMonitor = session_.desktop().keyMonitor(),
                            .monitorsKey =
                                [this](const QKeyEvent& event) {
                                  return session_.desktop().keyMonitor().press({event.nativeScanCode(), flagsOf(event)});
                                },
                            .visibleFrame = [this](const QScreen&) { return screen; },
                            .inUsersWindow = [this](std::function<void()> work) { forUsersWindow.push_back(std::move(work)); },
                            .keyboardTaken = [] {},
                            .quit = [this] { ++timesQuit_; },
                            .released = [] {},
                            .access = {.isAllowed = [this] { return allowed; },
                                       .allow = [this](bool value) { allowed = value; },
                                       .missing = [this] { return missing; }}}};

  /// The bits that macOS gives the modifiers.
  static std::uint64_t flagsOf(const QKeyEvent& event) {
    std::uint64_t flags = 0;
    if (event.modifiers() & Qt::ShiftModifier) flags |= 1U << 17;
    if (event.modifiers() & Qt::ControlModifier) flags |= 1U << 18;
    if (event.modifiers() & Qt::AltModifier) flags |= 1U << 19;
    if (event.modifiers() & Qt::MetaModifier) flags |= 1U << 20;
    return flags;
  }
};

// What a test reads from a running item.

inline double number(const QQuickItem& item, const char* property) { return item.property(property).toDouble(); }
inline std::string text(const QQuickItem& item, const char* property = "text") { return item.property(property).toString().toStdString(); }
inline QFont font(const QQuickItem& item) { return item.property("font").value<QFont>(); }
/// The opacity of one of its colours.
inline double share(const QQuickItem& item, const char* property) { return item.property(property).value<QColor>().alphaF(); }
/// The place of an item within another.
inline QRectF within(const QQuickItem& item, const QQuickItem& outer) {
  return item.mapRectToItem(&outer, QRectF(0, 0, item.width(), item.height()));
}
inline constexpr double tolerance = 0.01;

inline void expectText(const QQuickItem& item, const char* expected, int size, QFont::Weight weight) {
  EXPECT_EQ(text(item), expected);
  EXPECT_EQ(font(item).pixelSize(), size) << expected;
  EXPECT_EQ(font(item).weight(), weight) << expected;
}

/// The item of that name below `root`; a failing test when there is none.
inline QQuickItem& find(const QQuickItem& root, const char* name) {
  auto* item = root.findChild<QQuickItem*>(QString::fromLatin1(name));
  if (item == nullptr) {
    // Items that a Repeater makes are children of an item without being its QObject children.
    std::function<QQuickItem*(const QQuickItem&)> search = [&](const QQuickItem& from) -> QQuickItem* {
      for (QQuickItem* child : from.childItems()) {
        if (child->objectName() == QLatin1String(name)) return child;
        if (QQuickItem* found = search(*child)) return found;
      }
      return nullptr;
    };
    item = search(root);
  }
  if (item == nullptr) throw std::runtime_error(std::string("no item ") + name);
  return *item;
}

}  // namespace tilora::app
