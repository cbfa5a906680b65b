// How fast the menu and the settings open, from the click to the first frame on the screen, and what memory they take: Openbox and tint2 in
// Xvfb, each opened as often as the argument says, 20 times without one.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "harness/input.h"
#include "harness/panel.h"
#include "harness/server.h"
#include "harness/session.h"
#include "harness/window_manager.h"
#include "usage.h"

namespace {

using namespace tilora::harness;
using tilora::bench::memoryOf;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

class Bench {
 public:
  Bench() {
    // What a window leaves behind when it closes must not look like it.
    constexpr std::uint32_t blue = 0x4A6A8A;
    xcb_change_window_attributes(display_.xcb(), display_.root(), XCB_CW_BACK_PIXEL, &blue);
    session_.home().write("config/tilora/consent.json", R"({"Tilora.Consent": {"type": "bool", "value": true}})");
    panel_.emplace(startPanel(Panel::tint2, session_));
    tilora_.emplace(session_.start({TILORA_PROGRAM}));
    waitFor([this] { return embeddedIcon(display_).has_value(); }, "the icon is in the panel");
    std::this_thread::sleep_for(2000ms);
  }

  void reportMemory(const char* when) {
    const pid_t pid = tilora_->pid();
    std::printf("%-32s %6ld kB proportional: %ld kB of its own, %ld kB of files; %ld kB resident\n", when, memoryOf(pid, "Pss:"),
                memoryOf(pid, "Pss_Anon:"), memoryOf(pid, "Pss_File:"), memoryOf(pid, "Rss:"));
  }

  Milliseconds openMenu() {
    const PixelRect icon = embeddedIcon(display_).value();
    const PixelRect header = {icon.x + 20, display_.visibleFrame(display_.rootGeometry()).y + 14, 120, 20};
    waitFor([&] { return !showsText(header); }, "the last menu is gone from the screen");
    const auto start = Clock::now();
    pointer_.click(icon.x + icon.width / 2, icon.y + icon.height / 2);
    waitFor([&] { return showsText(header); }, "the menu is drawn");
    return Clock::now() - start;
  }
  void closeMenu() {
    // Its keys are its own once it has been there for a moment.
    std::this_thread::sleep_for(100ms);
    keyboard_.tap(Key::escape);
    waitFor([this] { return !openMenuArea(display_); }, "the menu closes");
  }
  /// From a click on the first row of the menu.
  Milliseconds openSettings() {
    openMenu();
    std::this_thread::sleep_for(100ms);
    const PixelRect menu = openMenuArea(display_).value();
    const auto start = Clock::now();
    pointer_.click(menu.x + 150, menu.y + 68);
    xcb_window_t window = XCB_WINDOW_NONE;
    waitFor([&] { return (window = settings()) != XCB_WINDOW_NONE; }, "the settings open");
    waitFor(
        [&] {
          const auto area = display_.clientArea(window);
          return area && showsText({area->x + 22, area->y + 22, 200, 30});
        },
        "the settings are drawn");
    return Clock::now() - start;
  }
  void closeSettings() {
    display_.close(settings());
    waitFor([this] { return settings() == XCB_WINDOW_NONE; }, "the settings close");
  }

 private:
  static void waitFor(const std::function<bool()>& holds, const char* what) {
    const auto deadline = Clock::now() + defaultDeadline;
    while (!holds()) {
      if (Clock::now() > deadline) throw std::runtime_error(std::string("it does not come to pass that ") + what);
      std::this_thread::sleep_for(300us);
    }
  }

  xcb_window_t settings() {
    for (const xcb_window_t window : display_.clientList()) {
      if (display_.text(window, "_NET_WM_NAME") == "Tilora Settings") return window;
    }
    return XCB_WINDOW_NONE;
  }

  /// Whether the screen shows dark text on a light ground there.
  bool showsText(const PixelRect& area) {
    const auto cookie = xcb_get_image(display_.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, display_.root(), static_cast<std::int16_t>(area.x),
                                      static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
                                      static_cast<std::uint16_t>(area.height), ~0U);
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> reply(xcb_get_image_reply(display_.xcb(), cookie, nullptr),
                                                                             &std::free);
    if (!reply) return false;
    constexpr int bytesOfPixel = 4;
    constexpr int lightest = 220;
    constexpr int darkest = 130;
    int light = 0;
    int dark = 0;
    const std::uint8_t* data = xcb_get_image_data(reply.get());
    for (int i = 0; i < area.width * area.height; ++i) {
      const int green = data[i * bytesOfPixel + 1];
      light += green > lightest ? 1 : 0;
      dark += green < darkest ? 1 : 0;
    }
    return light > area.width * area.height / 2 && dark > area.width / 4;
  }

  ServerProcess server_;
  Session session_{server_.display()};
  Display display_{server_.display()};
  Keyboard keyboard_{display_};
  PointerDevice pointer_{display_};
  WindowManager windowManager_{WindowManagerKind::openbox, session_, display_};
  std::optional<ManagedProcess> panel_;
  std::optional<ManagedProcess> tilora_;
};

void report(const char* what, std::vector<Milliseconds> later, Milliseconds first) {
  std::sort(later.begin(), later.end());
  std::printf("%-32s first %6.1f ms; later: median %5.1f ms, longest %5.1f ms of %zu\n", what, first.count(),
              later[later.size() / 2].count(), later.back().count(), later.size());
}

void measure(int times) {
  Bench bench;
  bench.reportMemory("nothing was ever open");
  const Milliseconds firstMenu = bench.openMenu();
  bench.closeMenu();
  std::vector<Milliseconds> menus;
  for (int i = 0; i < times; ++i) {
    menus.push_back(bench.openMenu());
    bench.closeMenu();
  }
  report("menu", menus, firstMenu);
  const Milliseconds firstSettings = bench.openSettings();
  bench.openMenu();
  bench.reportMemory("menu and settings open");
  bench.closeMenu();
  bench.closeSettings();
  std::vector<Milliseconds> settings;
  for (int i = 0; i < times; ++i) {
    settings.push_back(bench.openSettings());
    bench.closeSettings();
  }
  report("settings", settings, firstSettings);
  bench.reportMemory("both closed a moment ago");
  // What the windows need is let go of a minute after the last one closed.
  std::this_thread::sleep_for(std::chrono::seconds(65));
  bench.reportMemory("both closed a minute ago");
}

}  // namespace

int main(int argc, char** argv) {
  try {
    measure(argc > 1 ? std::max(std::atoi(argv[1]), 1) : 20);
  } catch (const std::exception& exception) {
    std::fprintf(stderr, "interface_bench: %s\n", exception.what());
    return 1;
  }
  return 0;
}
