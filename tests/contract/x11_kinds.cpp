// The X11 desktop under the tests of the contract: a server in memory with a window manager, and applications of its own.
#include <map>

#include "harness/display.h"
#include "harness/input.h"
#include "harness/server.h"
#include "harness/session.h"
#include "harness/test_client.h"
#include "harness/window_manager.h"
#include "platform/simulated/simulated_desktop.h"
#include "platform/simulated/virtual_clock.h"
#include "platform/x11/x11_desktop.h"
#include "platform/xdg/autostart_entry.h"
#include "platform/xdg/settings_file.h"
#include "tested_desktop.h"

namespace tilora::contract {
namespace {

using namespace std::chrono_literals;

class SettableConsent final : public x11::Consent {
 public:
  bool isGiven() override { return given; }
  void ask(const std::vector<std::string>& /*missing*/) override {}

  bool given = true;
};

class X11User final : public TestedDesktop {
 public:
  /// The queue and the shell are the simulated ones: those of the program on X11 are Qt's, and have tests of their own.
  Desktop interfaces() override {
    return {standIns_.interfaces().ownProcessId,
            desktop_.accessibility(),
            desktop_.workspace(),
            desktop_.screens(),
            desktop_.pointer(),
            desktop_.windowServer(),
            desktop_.trust(),
            desktop_.hotKeys(),
            desktop_.keyMonitor(),
            loginItem_,
            settings_,
            standIns_.clock(),
            standIns_.interfaces().shell};
  }

  bool eventually(const std::function<bool()>& holds) override {
    constexpr auto turn = 5ms;
    const auto end = std::chrono::steady_clock::now() + harness::defaultDeadline;
    standIns_.clock().runPosted();
    while (true) {
      if (!desktop_.endTurn() || !desktop_.dispatch()) return false;
      if (holds()) return desktop_.endTurn();
      if (std::chrono::steady_clock::now() >= end) return false;
      harness::waitReadable(desktop_.fileDescriptor(), turn);
      standIns_.clock().advance(turn);
    }
  }

  ProcessId open(const std::string& title) override {
    auto client = std::make_unique<harness::TestClient>(session_);
    const ProcessId pid = client->pid();
    const auto window = client->open({.title = title, .instance = title, .className = title});
    display_.waitUntil([&] { return display_.activeWindow() == window; });
    applications_.emplace(pid, Opened{std::move(client), window});
    return pid;
  }
  void activate(ProcessId pid) override { display_.activate(applications_.at(pid).window); }
  void closeWindow(ProcessId pid) override { applications_.at(pid).client->destroy(applications_.at(pid).window); }
  void quit(ProcessId pid) override { applications_.erase(pid); }
  void holdButton(bool held) override {
    mouse_.moveTo(1500, 800);
    held ? mouse_.press() : mouse_.release();
  }
  void pressShortcut() override { keyboard_.chord({harness::Key::leftAlt, harness::Key::leftShift, harness::Key::leftBracket}); }
  void setTrusted(bool trusted) override { consent_.given = trusted; }

 private:
  struct Opened {
    std::unique_ptr<harness::TestClient> client;
    xcb_window_t window;
  };

  harness::ServerProcess server_;
  harness::Session session_{server_.display()};
  harness::Display display_{server_.display()};
  harness::Keyboard keyboard_{display_};
  harness::PointerDevice mouse_{display_};
  harness::WindowManager windowManager_{harness::WindowManagerKind::openbox, session_, display_};
  harness::TemporaryDirectory files_;
  std::map<ProcessId, Opened> applications_;
  simulated::SimulatedDesktop standIns_;
  xdg::SettingsFile settings_{files_.path() / "settings.json"};
  xdg::AutostartEntry loginItem_{files_.path() / "tilora.desktop", "/usr/bin/tilora"};
  SettableConsent consent_;
  std::unique_ptr<x11::Connection> connection_ = x11::Connection::open(server_.display());
  x11::Instance::Start start_ = x11::Instance::acquire(*connection_);
  x11::X11Desktop desktop_{*connection_, *start_.instance, standIns_.clock(), consent_};
};

}  // namespace

std::vector<DesktopKind> desktopKinds() {
  return {{"X11", [] { return std::make_unique<X11User>(); }}};
}

}  // namespace tilora::contract
