// The steps of the tour.
#include "tour.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace tilora::tour {
namespace {

using harness::Key;
using harness::PixelRect;

constexpr const char* terminalText =
    "\n  Tilora's shortcuts\n\n  Alt+Shift+[      the left half\n  Alt+Shift+]      the right half\n  Alt+Shift+Space  the whole screen\n"
    "  Alt+Shift+J      floating in the middle\n\n";
constexpr const char* notesText =
    "Notes\n\nThis is a GTK program. Press Alt+Shift+] in it, and it moves to\nthe right half; a window that has the left half is shown "
    "beside "
    "it.\n\nThe place is remembered: close the window, open it again, and it\nis back where you put it.\n";
constexpr const char* planText =
    "Plan\n\nThis is a Qt program. While other windows are shown it is hidden,\nand it comes back when you switch to it: from the taskbar, "
    "or "
    "with\nAlt+Tab.\n";

/// The size increments of WM_NORMAL_HINTS (ICCCM section 4.1.2.3).
Steps stepsOf(harness::Display& display, xcb_window_t window) {
  constexpr std::uint32_t resizeIncrements = 1U << 6U;
  const std::vector<std::uint32_t> hints = display.cardinals(window, "WM_NORMAL_HINTS");
  if (hints.size() < 11 || (hints[0] & resizeIncrements) == 0) return {};
  const Steps steps = {static_cast<int>(hints[9]), static_cast<int>(hints[10])};
  return {steps.width > 1 ? steps.width : 0, steps.height > 1 ? steps.height : 0};
}

std::string nameOf(const PixelRect& monitor) { return monitor == EmbeddedDesktop::firstMonitor ? "the screen" : "the second screen"; }

}  // namespace

Tour::Tour(std::filesystem::path tilora, std::filesystem::path pictures) : tilora_(std::move(tilora)), pictures_(std::move(pictures)) {
  std::filesystem::create_directories(pictures_);
  for (const auto& entry : std::filesystem::directory_iterator(pictures_)) {
    if (entry.path().extension() == ".png") std::filesystem::remove(entry.path());
  }
}

void Tour::run() {
  startPrograms();
  giveConsent();
  moveLeft();
  bringHiddenWindowBack();
  makePair();
  exchangeSides();
  fill();
  floatWindow();
  restartProgram();
  restartTilora();
  useSecondMonitor();
  switchDesktop();
  quit();
  std::cout << "All of it went as it must.\n";
}

void Tour::startPrograms() {
  const auto& home = desktop_.session().home();
  const std::string shortcuts = home.write("shortcuts.txt", terminalText).string();
  qtEditor_ = &desktop_.start("the Qt editor", "FeatherPad", {"featherpad", "--standalone", home.write("plan.txt", planText).string()});
  gtkEditor_ = &desktop_.start("the GTK editor", "Mousepad", {"mousepad", home.write("notes.txt", notesText).string()});
  terminal_ = &desktop_.start("the terminal", "XTerm",
                              {"xterm", "-T", "Terminal", "-fa", "DejaVu Sans Mono", "-fs", "11", "-geometry", "70x20", "-bg", "#2e3440",
                               "-fg", "#d8dee9", "-e", "sh", "-c", "cat '" + shortcuts + "'; PS1='$ ' exec sh -i"});
  report("A desktop of Openbox with a panel, a Qt editor, a GTK editor and a terminal", "desktop");
}

void Tour::startTilora() { process_ = desktop_.session().start({tilora_.string()}); }

void Tour::giveConsent() {
  harness::Display& display = desktop_.display();
  startTilora();
  const auto isAsking = [&] { return display.text(display.activeWindow(), "_NET_WM_NAME") == "Tilora"; };
  if (!desktop_.waitUntil(isAsking)) throw Failure("Tilora does not ask whether it may control the windows");
  report("Tilora is started, and asks before it touches a window", "question");
  desktop_.keyboard().tap(Key::enter);
  expect("Start is pressed: the active window fills the screen, the others are hidden", "started", {{*terminal_, Place::full}});
}

void Tour::press(Key key) { desktop_.keyboard().chord({Key::leftAlt, Key::leftShift, key}); }

void Tour::moveLeft() {
  press(Key::leftBracket);
  expect("Alt+Shift+[ moves the terminal to the left half", "left", {{*terminal_, Place::left}});
}

void Tour::bringHiddenWindowBack() {
  desktop_.clickInTaskbar(*gtkEditor_);
  expect("A click in the taskbar brings the hidden GTK editor back", "taskbar", {{*gtkEditor_, Place::full}});
}

void Tour::makePair() {
  press(Key::rightBracket);
  expect("Alt+Shift+] moves it to the right half, and the terminal joins it as a pair", "pair",
         {{*gtkEditor_, Place::right}, {*terminal_, Place::left}});
}

void Tour::exchangeSides() {
  press(Key::leftBracket);
  waitFor({{*gtkEditor_, Place::left}});
  switchTo(*terminal_);
  waitFor({{*terminal_, Place::left}});
  press(Key::rightBracket);
  expect("The editor goes left, Alt+Tab brings the terminal back, and it goes right: the pair has exchanged its sides", "exchanged",
         {{*terminal_, Place::right}, {*gtkEditor_, Place::left}});
}

void Tour::switchTo(const Program& wanted) {
  harness::Display& display = desktop_.display();
  const auto isAlone = [&] {
    const auto isSeen = [&](const Program& program) { return display.viewable(program.window); };
    return std::count_if(desktop_.programs().begin(), desktop_.programs().end(), isSeen) == 1;
  };
  for (std::size_t times = 0; times < desktop_.programs().size() && display.activeWindow() != wanted.window; ++times) {
    const xcb_window_t before = display.activeWindow();
    desktop_.pressAltTab();
    const auto hasSwitched = [&] { return display.activeWindow() != before && display.activeWindow() != XCB_WINDOW_NONE && isAlone(); };
    if (!desktop_.waitUntil(hasSwitched)) throw Failure("Alt+Tab does not switch to another window");
  }
}

void Tour::fill() {
  press(Key::space);
  expect("Alt+Shift+Space lets the terminal fill the screen", "fill", {{*terminal_, Place::full}});
}

void Tour::floatWindow() {
  press(Key::j);
  expect("Alt+Shift+J lets it float in the middle", "float", {{*terminal_, Place::floating}});
}

void Tour::restartProgram() {
  desktop_.clickInTaskbar(*gtkEditor_);
  waitFor({{*gtkEditor_, Place::left}});
  desktop_.close(*gtkEditor_);
  waitFor({{*terminal_, Place::floating}});
  desktop_.startAgain(*gtkEditor_);
  expect("The GTK editor is closed, the terminal comes back; it is started again, and its place is remembered", "remembered",
         {{*gtkEditor_, Place::left}});
}

void Tour::restartTilora() {
  quit();
  startTilora();
  expect("Tilora is started again: it does not ask again, and it remembers too", "again", {{*gtkEditor_, Place::left}});
}

void Tour::useSecondMonitor() {
  desktop_.clickInTaskbar(*qtEditor_);
  waitFor({{*qtEditor_, Place::full}});
  desktop_.addSecondMonitor();
  waitFor({{*qtEditor_, Place::full}});
  dragToSecondMonitor(*qtEditor_);
  expect("A second screen: the Qt editor is dragged to it, and each screen has its own windows", "second-screen",
         {{*qtEditor_, Place::full, EmbeddedDesktop::secondMonitor}, {*gtkEditor_, Place::left}});
  press(Key::rightBracket);
  expect("The shortcuts work on the screen of the active window", "second-screen-right",
         {{*qtEditor_, Place::right, EmbeddedDesktop::secondMonitor}, {*gtkEditor_, Place::left}});
}

void Tour::dragToSecondMonitor(const Program& program) {
  harness::Display& display = desktop_.display();
  const PixelRect from = display.frame(program.window).value_or(PixelRect{});
  const int row = from.y + from.height / 2;
  desktop_.keyboard().press(Key::leftAlt);
  desktop_.pointer().moveTo(from.x + from.width / 2, row);
  desktop_.pointer().press();
  // A window manager begins to move a window with the first motion and follows the later ones, of which it may skip any.
  int column = EmbeddedDesktop::secondMonitor.x + EmbeddedDesktop::secondMonitor.width / 2;
  const auto follows = [&] {
    desktop_.pointer().moveTo(++column, row);
    const auto frame = display.frame(program.window);
    return frame && frame->x + frame->width / 2 > EmbeddedDesktop::secondMonitor.x;
  };
  // While the button is held, a pass leaves the window to the user.
  const bool followed = desktop_.waitUntil(follows) && desktop_.waitForPass() && follows();
  desktop_.pointer().release();
  desktop_.keyboard().release(Key::leftAlt);
  if (!followed) throw Failure(program.name + " does not follow the pointer, or does not stay with it");
}

void Tour::switchDesktop() {
  harness::Display& display = desktop_.display();
  desktop_.keyboard().chord({Key::leftControl, Key::leftAlt, Key::rightArrow});
  if (!desktop_.waitUntil([&] { return display.currentDesktop() == 1; })) throw Failure("Ctrl+Alt+Right does not switch the desktop");
  const Program& second = desktop_.start("another terminal", "UXTerm",
                                         {"xterm", "-class", "UXTerm", "-T", "Another terminal", "-fa", "DejaVu Sans Mono", "-fs", "11",
                                          "-bg", "#2e3440", "-fg", "#d8dee9", "-e", "env", "PS1=$ ", "sh"});
  expect("On the second virtual desktop another terminal is tiled by itself", "second-desktop", {{second, Place::full}});
  desktop_.keyboard().chord({Key::leftControl, Key::leftAlt, Key::leftArrow});
  if (!desktop_.waitUntil([&] { return display.currentDesktop() == 0; })) throw Failure("Ctrl+Alt+Left does not switch the desktop");
  expect("Back on the first one everything is as it was", "first-desktop",
         {{*qtEditor_, Place::right, EmbeddedDesktop::secondMonitor}, {*gtkEditor_, Place::left}});
}

void Tour::quit() {
  harness::Display& display = desktop_.display();
  process_->signal(SIGTERM);
  const auto end = process_->waitForEnd();
  if (end != harness::ProcessEnd{.status = 0, .signal = {}}) throw Failure("Tilora does not end cleanly when it is asked to");
  const auto isShown = [&](const Program& program) { return !display.iconic(program.window); };
  const auto allShown = [&] { return std::all_of(desktop_.programs().begin(), desktop_.programs().end(), isShown); };
  if (!desktop_.waitUntil(allShown)) throw Failure("Tilora has ended, and there are still hidden windows");
  report("Tilora ends: every window is back", "ended");
}

void Tour::expect(const std::string& what, const std::string& name, const std::vector<Seen>& seen) {
  waitFor(seen);
  report(what, name);
  if (const auto difference = differenceFrom(seen)) throw Failure(*difference + " a moment later");
  harness::Display& display = desktop_.display();
  for (const Seen& one : seen) {
    std::cout << "      " << one.program.name << " " << verbOf(one.place) << " " << nameOf(one.monitor) << ": "
              << *display.frame(one.program.window) << "\n";
  }
}

void Tour::waitFor(const std::vector<Seen>& seen) {
  if (desktop_.waitUntil([&] { return !differenceFrom(seen); })) return;
  throw Failure(differenceFrom(seen).value_or("it took too long until all was as it must be"));
}

std::optional<std::string> Tour::differenceFrom(const std::vector<Seen>& seen) {
  harness::Display& display = desktop_.display();
  for (const Program& program : desktop_.programs()) {
    const bool mustBeSeen = std::any_of(seen.begin(), seen.end(), [&](const Seen& one) { return &one.program == &program; });
    if (!mustBeSeen && display.viewable(program.window)) return program.name + " must be hidden, and is not";
  }
  for (const Seen& one : seen) {
    if (auto difference = differenceFrom(one)) return difference;
  }
  if (display.activeWindow() != seen.front().program.window) return seen.front().program.name + " must have the keyboard, and has not";
  return std::nullopt;
}

std::optional<std::string> Tour::differenceFrom(const Seen& seen) {
  harness::Display& display = desktop_.display();
  const xcb_window_t window = seen.program.window;
  const auto frame = display.frame(window);
  if (!frame || !display.viewable(window)) return seen.program.name + " must be seen, and is not";
  const Edges wanted = edgesOf(seen.place, display.visibleFrame(seen.monitor));
  if (fits(*frame, wanted, stepsOf(display, window))) return std::nullopt;
  std::ostringstream text;
  text << seen.program.name << " must be where it " << verbOf(seen.place) << " " << nameOf(seen.monitor) << ", "
       << wanted.right - wanted.left << "x" << wanted.bottom - wanted.top << "+" << wanted.left << "+" << wanted.top << ", and is "
       << *frame;
  return text.str();
}

void Tour::report(const std::string& what, const std::string& name) {
  std::ostringstream file;
  file << std::setw(2) << std::setfill('0') << ++step_ << "-" << name << ".png";
  desktop_.takePicture(pictures_ / file.str());
  std::cout << std::setw(3) << step_ << "  " << what << std::endl;
}

std::string Tour::lastEvents() {
  constexpr std::size_t most = 60;
  static constexpr std::array<const char*, 8> kinds = {"configured", "mapped",   "unmapped", "destroyed",
                                                       "reparented", "property", "focus in", "focus out"};
  harness::Display& display = desktop_.display();
  const auto& events = display.events();
  const auto now = std::chrono::steady_clock::now();
  std::ostringstream text;
  for (auto event = events.end() - static_cast<std::ptrdiff_t>(std::min(most, events.size())); event != events.end(); ++event) {
    const auto before = std::chrono::duration_cast<std::chrono::milliseconds>(now - event->time);
    text << "  " << before.count() << " ms ago: " << std::hex << event->window << std::dec << " "
         << kinds.at(static_cast<std::size_t>(event->kind));
    if (event->kind == harness::WindowEvent::Kind::property) text << " " << display.atomName(event->atom);
    if (event->kind == harness::WindowEvent::Kind::configured) text << " " << event->geometry;
    text << "\n";
  }
  return text.str();
}

std::string Tour::describe() {
  std::string text = desktop_.display().describe() + lastEvents();
  if (process_ && !process_->running()) text += "Tilora has ended.\n";
  if (process_) text += process_->output();
  return text;
}

}  // namespace tilora::tour
