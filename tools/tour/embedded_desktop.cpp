// Starting the parts of the desktop, and using them as a person does.
#include "embedded_desktop.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>

#include "harness/screenshot.h"

namespace tilora::tour {
namespace {

using harness::Key;

constexpr int panelHeight = 32;
constexpr int taskWidth = 200;

std::atomic<bool> interrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free);

void onSignal(int) { interrupted = true; }

/// A taskbar of buttons of one width, from the left edge, and a tray at the right.
std::string panelSettings() {
  std::ostringstream text;
  text << "rounded = 0\nbackground_color = #2e3440 100\n"
          "rounded = 0\nbackground_color = #4c566a 100\n"
          "panel_items = TS\npanel_position = bottom left horizontal\npanel_size = "
       << EmbeddedDesktop::firstMonitor.width << " " << panelHeight
       << "\npanel_padding = 0 0 0\npanel_background_id = 1\nstrut_policy = follow_size\nwm_menu = 0\n"
          "taskbar_mode = single_desktop\ntaskbar_padding = 0 0 0\ntaskbar_background_id = 0\n"
          "task_align = left\ntask_text = 1\ntask_icon = 0\ntask_padding = 10 4 4\ntask_maximum_size = "
       << taskWidth << " " << panelHeight
       << "\ntask_font = DejaVu Sans 10\ntask_font_color = #d8dee9 100\ntask_active_font_color = #ffffff 100\n"
          "task_iconified_font_color = #8f98a8 100\ntask_background_id = 1\ntask_active_background_id = 2\n"
          "mouse_left = toggle_iconify\nmouse_middle = none\nmouse_right = none\n"
          "systray_padding = 4 4 4\nsystray_background_id = 0\n";
  return text.str();
}

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

void endWaitsOnSignals() {
  struct sigaction action = {};
  action.sa_handler = onSignal;
  sigemptyset(&action.sa_mask);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &action, nullptr);
}

EmbeddedDesktop::EmbeddedDesktop() {
  display_.setMonitors({{"first", firstMonitor, true}});
  session_.startBus();
  windowManager_.emplace(harness::WindowManagerKind::openbox, session_, display_);
  writeProgramSettings();
  session_.start({"xsetroot", "-solid", "#5e81ac", "-cursor_name", "left_ptr"}).waitForEnd();
  startPanel();
}

void EmbeddedDesktop::writeProgramSettings() {
  const auto& home = session_.home();
  home.write("config/gtk-3.0/settings.ini", "[Settings]\ngtk-cursor-blink=0\ngtk-enable-animations=0\n");
  home.write("config/glib-2.0/settings/keyfile", "[org/xfce/mousepad/preferences/window]\npath-in-title=false\n");
}

void EmbeddedDesktop::startPanel() {
  const auto settings = session_.home().write("config/tint2/tint2rc", panelSettings());
  panel_ = session_.start({"tint2", "-c", settings.string()});
  const auto isThere = [this] { return display_.visibleFrame(firstMonitor).bottom() == firstMonitor.bottom() - panelHeight; };
  if (!waitUntil(isThere)) throw Failure("the panel does not appear: " + panel_->output());
}

void EmbeddedDesktop::addSecondMonitor() { display_.setMonitors({{"first", firstMonitor, true}, {"second", secondMonitor, false}}); }

harness::PixelRect EmbeddedDesktop::visibleArea() {
  harness::PixelRect area = firstMonitor;
  for (const harness::Monitor& monitor : display_.monitors()) area.width = std::max(area.width, monitor.geometry.right());
  return area;
}

xcb_window_t EmbeddedDesktop::activeWindowOf(const std::string& className) {
  const xcb_window_t active = display_.activeWindow();
  if (active == XCB_WINDOW_NONE || !display_.viewable(active)) return XCB_WINDOW_NONE;
  // WM_CLASS: the instance, a zero byte, the class, a zero byte.
  const bool matches = display_.text(active, "WM_CLASS").ends_with('\0' + className + '\0');
  return matches ? active : xcb_window_t{XCB_WINDOW_NONE};
}

void EmbeddedDesktop::open(Program& program) {
  program.process = session_.start(program.command);
  const auto appears = [&] {
    program.window = activeWindowOf(program.className);
    return program.window != XCB_WINDOW_NONE;
  };
  if (!waitUntil(appears)) {
    throw Failure(program.name + (program.process->running() ? " does not appear: " : " has ended: ") + program.process->output());
  }
  display_.watch(program.window);
}

Program& EmbeddedDesktop::start(std::string name, std::string className, std::vector<std::string> command) {
  Program& program = programs_.emplace_back();
  program.name = std::move(name);
  program.className = std::move(className);
  program.command = std::move(command);
  open(program);
  return program;
}

void EmbeddedDesktop::close(Program& program) {
  if (display_.activeWindow() != program.window) throw Failure(program.name + " has not got the keyboard");
  keyboard_.chord({Key::leftAlt, Key::f4});
  if (!waitUntil([&] { return !program.process->running(); })) throw Failure(program.name + " does not end on Alt+F4");
  const auto isGone = [&] {
    const std::vector<xcb_window_t> list = display_.clientList();
    return std::find(list.begin(), list.end(), program.window) == list.end();
  };
  if (!waitUntil(isGone)) throw Failure("the window manager keeps the window of " + program.name);
}

void EmbeddedDesktop::startAgain(Program& program) {
  open(program);
  const auto isProgram = [&](const Program& other) { return &other == &program; };
  programs_.splice(programs_.end(), programs_, std::find_if(programs_.begin(), programs_.end(), isProgram));
}

std::size_t EmbeddedDesktop::shownCount() {
  const std::unique_ptr<xcb_query_tree_reply_t, decltype(&std::free)> tree(
      xcb_query_tree_reply(display_.xcb(), xcb_query_tree(display_.xcb(), display_.root()), nullptr), &std::free);
  if (!tree) return 0;
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  return static_cast<std::size_t>(std::count_if(children, children + xcb_query_tree_children_length(tree.get()),
                                                [this](xcb_window_t child) { return display_.viewable(child); }));
}

void EmbeddedDesktop::pressAltTab() {
  // Openbox takes the keyboard when the list opens, and does not see a key that was let go before.
  const std::size_t before = shownCount();
  keyboard_.press(Key::leftAlt);
  keyboard_.tap(Key::tab);
  const bool isOpen = waitUntil([&] { return shownCount() > before; });
  keyboard_.release(Key::leftAlt);
  if (!isOpen) throw Failure("Alt+Tab opens no list of windows");
}

void EmbeddedDesktop::clickInTaskbar(const Program& program) {
  const auto isProgram = [&](const Program& other) { return &other == &program; };
  const auto place = std::distance(programs_.begin(), std::find_if(programs_.begin(), programs_.end(), isProgram));
  pointer_.click(static_cast<int>(place) * taskWidth + taskWidth / 2, firstMonitor.bottom() - panelHeight / 2);
}

bool EmbeddedDesktop::waitUntil(const std::function<bool()>& holds, std::chrono::milliseconds deadline) {
  // Not all that counts is told by the server: a signal and the end of a process are not.
  constexpr std::chrono::milliseconds longestTurn{100};
  const auto end = std::chrono::steady_clock::now() + deadline;
  while (!interrupted) {
    if (display_.waitUntil(holds, longestTurn)) return true;
    if (std::chrono::steady_clock::now() > end) return false;
  }
  throw Interrupted();
}

bool EmbeddedDesktop::waitForPass() {
  constexpr int queryPointer = 38;
  const xcb_window_t tilora = display_.selectionOwner("_TILORA_INSTANCE");
  const auto passes = [&] { return wireTap_.of(tilora).requests.at(queryPointer); };
  display_.sync();
  wireTap_.waitUntil([] { return true; });
  const int before = passes();
  return waitUntil([&] { return wireTap_.waitUntil([&] { return passes() > before; }, std::chrono::milliseconds(0)); });
}

void EmbeddedDesktop::takePicture(const std::filesystem::path& file) {
  // Programs paint when they get to it and tell nobody: two equal pictures in a row say that they are done.
  constexpr int mostPictures = 20;
  constexpr std::chrono::milliseconds between{120};
  std::string previous;
  for (int count = 0; count < mostPictures; ++count) {
    if (!harness::saveScreenshot(display_, visibleArea(), file)) throw Failure("there is no picture for " + file.string());
    std::string now = contentOf(file);
    if (now == previous) return;
    previous = std::move(now);
    waitUntil([] { return false; }, between);
  }
}

}  // namespace tilora::tour
