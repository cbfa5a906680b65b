// Applications that a test makes: processes of their own whose windows have the properties that the test wants.
#pragma once

#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "harness/geometry.h"
#include "harness/process.h"
#include "harness/session.h"

namespace tilora::harness {

/// What a window declares. Sizes are those of the client area; zero means: not declared.
struct WindowOptions {
  std::string title = "window";
  /// WM_CLASS: the instance and the class. Empty: none.
  std::string instance = "testclient";
  std::string className = "TestClient";
  std::string role = {};
  /// The end of the _NET_WM_WINDOW_TYPE_ name, "DIALOG" for instance. Empty: no type declared.
  std::string type = "NORMAL";
  PixelRect geometry = {60, 60, 400, 300};
  /// Asks for exactly this place (USPosition).
  bool positioned = false;
  int minWidth = 0, minHeight = 0, maxWidth = 0, maxHeight = 0;
  int baseWidth = 0, baseHeight = 0, widthIncrement = 0, heightIncrement = 0;
  /// The gravity of the size hints; 0: none declared.
  int gravity = 0;
  /// Asks for no decorations (_MOTIF_WM_HINTS).
  bool undecorated = false;
  /// Draws its own frame with shadows of these widths; they vanish while it is maximised or fullscreen, as toolkits do it.
  std::optional<Extents> shadows = {};
  xcb_window_t transientFor = XCB_WINDOW_NONE;
  /// WM_CLIENT_LEADER.
  xcb_window_t leader = XCB_WINDOW_NONE;
  /// Whether _NET_WM_PID is set, and to what; absent: the real process id.
  bool declaresProcess = true;
  std::optional<std::uint32_t> processId = {};
  /// WM_CLIENT_MACHINE; empty: this host.
  std::string machine = {};
  /// The ends of _NET_WM_STATE_ names that it starts with, "SKIP_TASKBAR" for instance.
  std::vector<std::string> states = {};
  /// The twelve numbers of _NET_WM_STRUT_PARTIAL; all zero: none.
  std::array<std::uint32_t, 12> strut = {};
  /// Takes its own size back whenever it is given another one.
  bool stubborn = false;
  /// Takes its own place back whenever it is told of another one. Whatever it refuses, it gives up after some hundred times.
  bool immovable = false;
  bool overrideRedirect = false;
  bool mapped = true;
};

/// One application. Its windows draw nothing but a colour, close when they are asked to, and remember the keys they got.
class TestClient {
 public:
  /// `patience`: how long it may take to do what it is told. Then, and when it is gone, every operation throws std::runtime_error.
  explicit TestClient(Session& session, std::chrono::milliseconds patience = defaultDeadline);

  ManagedProcess& process() { return *process_; }
  pid_t pid() const { return process_->pid(); }

  xcb_window_t open(const WindowOptions& options = {});
  void map(xcb_window_t window);
  void withdraw(xcb_window_t window);
  void destroy(xcb_window_t window);
  void setTitle(xcb_window_t window, const std::string& title);
  /// Configures its own window, as programs do.
  void configure(xcb_window_t window, const PixelRect& area);
  void setStrut(xcb_window_t window, const std::array<std::uint32_t, 12>& strut);
  /// The keycodes pressed in a window so far.
  std::vector<int> keysPressed(xcb_window_t window);
  /// Takes a key combination for itself on the root window, as other programs with shortcuts do; false when it is taken.
  bool grabKey(int keycode, int modifiers);
  /// Stops or continues answering the server, as a hung program does.
  void suspend();
  void resume();

 private:
  nlohmann::json ask(const nlohmann::json& request);

  Pipe requests_;
  Pipe answers_;
  std::optional<ManagedProcess> process_;
  std::string pending_;
  std::chrono::milliseconds patience_;
};

}  // namespace tilora::harness
