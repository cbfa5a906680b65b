// The resident process on an X11 desktop: the engine, the icon and the windows in one.
#include <malloc.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QSocketNotifier>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "app/consent_request.h"
#include "app/fetch_program.h"
#include "app/login_items_page.h"
#include "app/message_box_alert.h"
#include "app/program.h"
#include "app/qt_main_queue.h"
#include "app/qt_shell.h"
#include "app/standard_streams.h"
#include "app/stored_consent.h"
#include "app/termination_signals.h"
#include "app/ui/color_scheme.h"
#include "app/ui/tray_icon.h"
#include "app/ui/user_interface.h"
#include "app/ui/visible_frame.h"
#include "app/update_check.h"
#include "controller/window_manager_controller.h"
#include "platform/x11/x11_desktop.h"
#include "platform/xdg/autostart_entry.h"
#include "platform/xdg/base_directories.h"
#include "platform/xdg/settings_file.h"

namespace tilora::app {
namespace {

/// Empty when this user has no place for such files.
std::filesystem::path configurationFile(const char* name) {
  const std::filesystem::path folder = xdg::tiloraConfiguration();
  return folder.empty() ? folder : folder / name;
}

/// Sends what Qt has to say to the server. It would keep that until the server has told it something: a window raised by a timer would come
/// to the front when the user has long gone to another.
void flushQt() {
  if (const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()) xcb_flush(x11->connection());
}

/// The icon and the windows of the program over its engine.
class Front {
 public:
  /// Both must outlive it.
  Front(WindowManagerController& controller, x11::X11Desktop& desktop, StoredConsent& consent)
      : controller_(controller),
        desktop_(desktop),
        interface_({.controller = controller,
                    .keyMonitor = desktop.keyMonitor(),
                    .monitorsKey = [this](const QKeyEvent& key) { return monitorsKey(key); },
                    .visibleFrame = [this](const QScreen& screen) { return visibleFrame(screen); },
                    .inUsersWindow = [&desktop](std::function<void()> work) { desktop.returnFocus(std::move(work)); },
                    .keyboardTaken = [&desktop] { desktop.keyboardTaken(); },
                    .quit = [] { QCoreApplication::exit(0); },
                    // The freed memory of the windows lies between what stays.
                    .released = [] { malloc_trim(0); },
                    .access = {.isAllowed = [&consent] { return consent.isGiven(); },
                               .allow = [&consent](bool given) { consent.set(given); },
                               .missing = [&desktop] { return desktop.missingSupport(); }}}),
        icon_({.openMenu = [this](const QRect& place) { interface_.toggleMenu(place); }, .openAccess = [this] { openAccess(); }}),
        trust_(controller, [this] { icon_.setTrusted(controller_.isAccessibilityTrusted()); }) {
    desktop_.onThemeChanged([this] { followTheme(); });
    followTheme();
  }
  Front(const Front&) = delete;
  Front& operator=(const Front&) = delete;
  ~Front() { desktop_.onThemeChanged({}); }

  /// A second start asks for the windows of this one.
  void show() {
    interface_.setOffersMenu(!TrayIcon::hasPlace());
    interface_.performSettingsCommand();
  }
  void openAccess() { interface_.openAccess(); }
  void closeMenu() { interface_.closeMenu(); }

 private:
  void followTheme() { colors_.setThemeName(QString::fromStdString(desktop_.themeName())); }
  bool monitorsKey(const QKeyEvent& key) {
    return desktop_.monitorKey(static_cast<xcb_keycode_t>(key.nativeScanCode()), static_cast<std::uint16_t>(key.nativeModifiers()));
  }
  QRect visibleFrame(const QScreen& screen) {
    return visibleFrameIn(desktop_.screens().screens(), screen.geometry(), screen.devicePixelRatio());
  }

  WindowManagerController& controller_;
  x11::X11Desktop& desktop_;
  ColorScheme colors_;
  UserInterface interface_;
  TrayIcon icon_;
  PublishedChanges trust_;
};

/// The desktop, its services and the controller over them, connected to Qt's event loop.
class X11Program {
 public:
  X11Program(x11::Connection& connection, x11::Instance& instance, const std::string& updateSite)
      : updateCheck_(updateSite, settings_, shell_, fetcher_, alert_), desktop_(connection, instance, mainQueue_, consent_) {
    instance.onLost([] { QCoreApplication::exit(0); });
    instance.onAskedToShow([this] {
      if (front_) front_->show();
    });
  }

  /// Runs the event loop until somebody asks the program to end or the connection is lost.
  int run() {
    const QSocketNotifier arrivals(desktop_.fileDescriptor(), QSocketNotifier::Read);
    QObject::connect(&arrivals, &QSocketNotifier::activated, &arrivals, [this] { exitUnless(desktop_.dispatch()); });
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &arrivals, [this] {
      flushQt();
      exitUnless(desktop_.endTurn());
    });
    controller_.emplace(parts());
    front_.emplace(*controller_, desktop_, consent_);
    mainQueue_.post([this] { updateCheck_.start(); });
    const int status = QCoreApplication::exec();
    front_.reset();
    controller_.reset();
    return status == 0 && !desktop_.showHiddenWindows() ? 1 : status;
  }

 private:
  Desktop parts() {
    return {.ownProcessId = static_cast<ProcessId>(QCoreApplication::applicationPid()),
            .accessibility = desktop_.accessibility(),
            .workspace = desktop_.workspace(),
            .screens = desktop_.screens(),
            .pointer = desktop_.pointer(),
            .windowServer = desktop_.windowServer(),
            .trust = desktop_.trust(),
            .hotKeys = desktop_.hotKeys(),
            .keyMonitor = desktop_.keyMonitor(),
            .loginItem = loginItem_,
            .settings = settings_,
            .mainQueue = mainQueue_,
            .shell = shell_};
  }

  SettingsPages pages() {
    return {.accessibility =
                [this] {
                  if (front_) front_->openAccess();
                },
            .loginItems = [] { openLoginItemsPage(QString::fromStdString(xdg::autostartFile().parent_path().string())); }};
  }

  static void exitUnless(bool connected) {
    if (!connected) QCoreApplication::exit(1);
  }

  // In the order in which each needs the ones before it; the settings are the last to go, and wait for the disk.
  xdg::SettingsFile settings_{configurationFile("settings.json")};
  xdg::SettingsFile consentStore_{configurationFile("consent.json")};
  xdg::AutostartEntry loginItem_{xdg::autostartFile(), xdg::runningProgram()};
  QtMainQueue mainQueue_;
  QtShell shell_{pages(), [this](QWindow& window) { desktop_.activate(static_cast<xcb_window_t>(window.winId())); }};
  FetchProgram fetcher_;
  MessageBoxAlert alert_{[this] {
    if (front_) front_->closeMenu();
  }};
  UpdateCheck updateCheck_;
  ConsentRequest consentRequest_;
  StoredConsent consent_{consentStore_, consentRequest_};
  x11::X11Desktop desktop_;
  std::optional<WindowManagerController> controller_;
  std::optional<Front> front_;
};

int fail(const char* why) {
  std::fprintf(stderr, "tilora: %s\n", why);
  return 1;
}

/// Qt ends a program by a crash when it gets no connection to the server. One that has not begun yet just says so.
void endWithMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
  if (type == QtFatalMsg) std::_Exit(1);
}

}  // namespace

int runProgram(int argc, char** argv, const std::string& updateSite) {
  openStandardStreams();
  // A server that goes away shows as a broken connection, not as a signal.
  std::signal(SIGPIPE, SIG_IGN);
  const auto connection = x11::Connection::open();
  if (!connection) return fail("there is no X server to connect to.");
  qputenv("QT_QPA_PLATFORM", "xcb");
  qInstallMessageHandler(endWithMessage);
  QApplication application(argc, argv);
  qInstallMessageHandler(nullptr);
  QApplication::setApplicationName(QStringLiteral("tilora"));
  QApplication::setApplicationVersion(QStringLiteral(TILORA_VERSION));
  QApplication::setWindowIcon(trayPicture(true));
  QApplication::setQuitOnLastWindowClosed(false);
  // From here on this copy is the one that shows hidden windows again, so that an early signal must not end it either.
  const TerminationSignals signals([] { QCoreApplication::exit(0); });
  const x11::Instance::Start start = x11::Instance::acquire(*connection);
  switch (start.outcome) {
    case x11::Instance::Outcome::acquired:
      return X11Program(*connection, *start.instance, updateSite).run();
    case x11::Instance::Outcome::alreadyRunning:
      return 0;
    case x11::Instance::Outcome::failed:
      break;
  }
  return fail("the X server does not answer.");
}

}  // namespace tilora::app
