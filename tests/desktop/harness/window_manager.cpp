// How each window manager is started, and the settings that keep it quick and quiet.
#include "harness/window_manager.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tilora::harness {

namespace {

constexpr std::chrono::seconds startDeadline{20};

struct Recipe {
  WindowManagerKind kind;
  const char* name;
  std::vector<std::string> arguments;
  const char* replaceArgument;
  bool bus;
};

const std::vector<Recipe>& recipes() {
  static const std::vector<Recipe> all = {
      {WindowManagerKind::openbox, "openbox", {"openbox", "--sm-disable"}, "--replace", false},
      {WindowManagerKind::xfwm4, "xfwm4", {"xfwm4"}, "--replace", true},
      {WindowManagerKind::metacity, "metacity", {"metacity", "--sm-disable"}, "--replace", true},
      {WindowManagerKind::marco, "marco", {"marco", "--sm-disable"}, "--replace", true},
      {WindowManagerKind::icewm, "icewm", {"icewm"}, "--replace", false},
      {WindowManagerKind::fluxbox, "fluxbox", {"fluxbox", "-no-toolbar"}, nullptr, false},
      {WindowManagerKind::jwm, "jwm", {"jwm"}, nullptr, false},
      {WindowManagerKind::kwin, "kwin", {"kwin_x11"}, "--replace", true},
      {WindowManagerKind::mutter, "mutter", {"mutter", "--x11", "--sm-disable"}, "--replace", true},
  };
  return all;
}

const Recipe& recipe(WindowManagerKind kind) {
  return *std::find_if(recipes().begin(), recipes().end(), [kind](const Recipe& entry) { return entry.kind == kind; });
}

/// Openbox as it is installed, but a window goes to its place at once when it comes back.
std::string openboxSettings() {
  std::ifstream installed("/etc/xdg/openbox/rc.xml", std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(installed), {}};
  const std::string animated = "<animateIconify>yes";
  if (const auto place = text.find(animated); place != std::string::npos) text.replace(place, animated.size(), "<animateIconify>no");
  return text;
}

void writeSettings(const TemporaryDirectory& home, bool compositing) {
  const std::string on = compositing ? "true" : "false";
  home.write("config/kwinrc", "[Compositing]\nEnabled=" + on + "\nAnimationSpeed=0\n[Windows]\nPlacement=Smart\n");
  home.write("config/kdeglobals", "[KDE]\nAnimationDurationFactor=0\n");
  home.write("config/glib-2.0/settings/keyfile", "[org/gnome/metacity]\ncompositor='" + std::string(compositing ? "xrender" : "none") +
                                                     "'\n[org/mate/marco/general]\ncompositing-manager=" + on +
                                                     "\n[org/gnome/desktop/interface]\nenable-animations=false\n");
  home.write("config/openbox/rc.xml", openboxSettings());
  home.write(".icewm/preferences", "ShowTaskBar=0\n");
  home.write(".icewm/startup", "");
}

std::vector<std::string> commandLine(const Recipe& entry, const WindowManagerOptions& options) {
  std::vector<std::string> arguments = entry.arguments;
  if (entry.kind == WindowManagerKind::xfwm4) arguments.emplace_back(options.compositing ? "--compositor=on" : "--compositor=off");
  if (options.replace && entry.replaceArgument != nullptr) arguments.emplace_back(entry.replaceArgument);
  return arguments;
}

/// Whether a new window gets managed. A window manager announces itself before it takes requests, and drops those that come in between.
bool manages(Display& display, ManagedProcess& manager) {
  const xcb_window_t probe = xcb_generate_id(display.xcb());
  xcb_create_window(display.xcb(), XCB_COPY_FROM_PARENT, probe, display.root(), 0, 0, 100, 100, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                    XCB_COPY_FROM_PARENT, 0, nullptr);
  const auto listed = [&] {
    const std::vector<xcb_window_t> list = display.clientList();
    return std::find(list.begin(), list.end(), probe) != list.end();
  };
  bool managed = false;
  const auto end = std::chrono::steady_clock::now() + startDeadline;
  while (!managed && manager.running() && std::chrono::steady_clock::now() < end) {
    xcb_unmap_window(display.xcb(), probe);
    xcb_map_window(display.xcb(), probe);
    managed = display.waitUntil([&] { return listed() && display.viewable(probe); }, std::chrono::milliseconds(250));
  }
  xcb_destroy_window(display.xcb(), probe);
  return managed && display.waitUntil([&] { return !listed(); });
}

}  // namespace

std::string nameOf(WindowManagerKind kind) { return recipe(kind).name; }

std::optional<WindowManagerKind> windowManagerNamed(const std::string& name) {
  for (const Recipe& entry : recipes()) {
    if (entry.name == name) return entry.kind;
  }
  return std::nullopt;
}

WindowManager::WindowManager(WindowManagerKind kind, Session& session, Display& display, WindowManagerOptions options) : kind_(kind) {
  const Recipe& entry = recipe(kind);
  writeSettings(session.home(), options.compositing);
  if (entry.bus) session.startBus();
  // A pager owns how the desktops are laid out, and there is none. KWin writes it too and leaves it behind, and Metacity and its relatives
  // end when they have more desktops than that and show one of the others.
  xcb_delete_property(display.xcb(), display.root(), display.atom("_NET_DESKTOP_LAYOUT"));
  display.sync();
  // One that was killed leaves its check window's number behind, and the next one may be given the same. The server closes the windows of a
  // process that has ended in its own time.
  if (!options.replace) display.waitUntil([&] { return display.windowManagerName().empty(); });
  const std::vector<std::uint32_t> before =
      display.windowManagerName().empty() ? std::vector<std::uint32_t>{} : display.cardinals(display.root(), "_NET_SUPPORTING_WM_CHECK");
  // Fluxbox's script for backgrounds (fbsetbg) opens a window when it finds no program that draws one.
  process_ = session.start(commandLine(entry, options), {{"wpsetters", "true"}});
  const auto ready = [&] {
    return display.cardinals(display.root(), "_NET_SUPPORTING_WM_CHECK") != before && !display.windowManagerName().empty() &&
           display.hasProperty(display.root(), "_NET_SUPPORTED");
  };
  // One that ends at once changes nothing that could be waited for.
  const auto end = std::chrono::steady_clock::now() + startDeadline;
  bool isReady = false;
  while (!isReady && process_->running() && std::chrono::steady_clock::now() < end) {
    isReady = display.waitUntil(ready, std::chrono::milliseconds(250));
  }
  // The one that it replaces announces nothing, and manages the windows until it has ended.
  if (options.replace && !before.empty()) {
    display.waitUntil([&] { return !display.clientArea(before.front()); }, startDeadline);
  }
  if (!isReady || !manages(display, *process_)) {
    throw std::runtime_error(nameOf(kind) + " does not answer: " + process_->output());
  }
}

std::string WindowManager::describe() {
  if (process_->running()) return nameOf(kind_) + " runs";
  return nameOf(kind_) + " has ended, " + harness::describe(process_->waitForEnd()) + ": " + process_->output();
}

WindowManager::~WindowManager() {
  if (process_) process_->terminate(std::chrono::milliseconds(200));
}

}  // namespace tilora::harness
