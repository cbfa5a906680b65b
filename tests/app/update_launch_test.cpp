// The real program meets a real server at its launch: what it prints, shows, opens and remembers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fcntl.h>
#include <QThread>
#include <algorithm>
#include <array>
#include <csignal>
#include <fstream>
#include <nlohmann/json.hpp>

#include "event_loop.h"
#include "harness/display.h"
#include "harness/input.h"
#include "harness/screenshot.h"
#include "harness/server.h"
#include "harness/session.h"
#include "harness/test_client.h"
#include "harness/window_manager.h"
#include "harness/wire_tap.h"
#include "release_site.h"

namespace tilora::app {
namespace {

using namespace std::chrono_literals;
using harness::Display;
using harness::Key;
using harness::ManagedProcess;
using harness::PixelRect;
using harness::ProcessEnd;
using updater::Answer;
using updater::ReleaseSite;

constexpr ProcessEnd cleanEnd = {.status = 0, .signal = {}};
/// The one request that every pass makes, of all that a client may make.
constexpr std::uint8_t queryPointer = 38;
constexpr const char* checking = "Releasewatch: checking for update at http://127.84.73.76:47655/tilora...\n";

/// The server that the program is built for, in a thread of its own.
class SiteThread {
 public:
  explicit SiteThread(const Answer& feed) {
    context_.moveToThread(&thread_);
    thread_.start();
    inThread([&] {
      site_ = std::make_unique<ReleaseSite>(std::nullopt, QStringLiteral("127.84.73.76"), quint16{47655});
      site_->serve("/tilora/updater.json", feed);
    });
  }
  SiteThread(const SiteThread&) = delete;
  SiteThread& operator=(const SiteThread&) = delete;
  ~SiteThread() {
    inThread([&] { site_.reset(); });
    thread_.quit();
    thread_.wait();
  }

  std::size_t requests() {
    std::size_t count = 0;
    inThread([&] { count = site_->requests().size(); });
    return count;
  }
  int openConnections() {
    int count = 0;
    inThread([&] { count = site_->openConnections(); });
    return count;
  }

 private:
  template <typename Work>
  void inThread(Work work) {
    QMetaObject::invokeMethod(&context_, std::move(work), Qt::BlockingQueuedConnection);
  }

  QThread thread_;
  QObject context_;
  std::unique_ptr<ReleaseSite> site_;
};

Answer feedOf(const QByteArray& version) {
  return updater::whole(updater::http("200 OK", R"({"product":"Tilora","version":")" + version + R"(","file":"Tilora 9.zip"})"));
}

/// A browser that the desktop knows as the one for the addresses of the web. What it is asked to open can be read here.
class RegisteredBrowser {
 public:
  explicit RegisteredBrowser(const harness::TemporaryDirectory& home) {
    const std::filesystem::path pipe = home.path() / "opened";
    EXPECT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    opened_ = harness::FileDescriptor(::open(pipe.c_str(), O_RDWR | O_CLOEXEC));
    const auto program = home.write("browser", "#!/bin/sh\nprintf '%s\\n' \"$*\" >'" + pipe.string() + "'\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    home.write("data/applications/browser.desktop",
               "[Desktop Entry]\nType=Application\nName=Browser\nExec=" + program.string() + " %u\nMimeType=x-scheme-handler/http;\n");
    home.write("config/mimeapps.list", "[Default Applications]\nx-scheme-handler/http=browser.desktop\n");
  }

  /// The next thing that it is asked to open; empty when that does not come before the deadline.
  std::string opened(std::chrono::milliseconds deadline = harness::defaultDeadline) const {
    std::string line;
    std::array<char, 1> next = {};
    while (harness::waitReadable(opened_.number(), deadline) && ::read(opened_.number(), next.data(), 1) == 1 && next[0] != '\n') {
      line += next[0];
    }
    return line;
  }

 private:
  harness::FileDescriptor opened_;
};

class UpdateLaunch : public testing::Test {
 public:
  EventLoop loop;
  harness::ServerProcess server;
  harness::WireTap tap{server.display(), queryPointer};
  harness::Session session{server.display()};
  Display display{server.display()};
  harness::WindowManager windowManager{harness::WindowManagerKind::openbox, session, display};
  harness::Keyboard keyboard{display};
  harness::PointerDevice pointer{display};
  RegisteredBrowser browser{session.home()};
  harness::TestClient client{session};
  xcb_window_t window = XCB_WINDOW_NONE;

  void SetUp() override {
    session.home().write("config/tilora/consent.json", R"({"Tilora.Consent": {"type": "bool", "value": true}})");
    std::filesystem::remove(settingsFile());
    window = client.open({.title = "editor", .instance = "editor", .className = "editor"});
    display.watch(window);
    ASSERT_TRUE(display.waitUntil([&] { return display.activeWindow() == window; })) << display.describe();
  }

  ManagedProcess launch() { return session.start({TILORA_PROGRAM}); }
  bool isFull() {
    const PixelRect whole = display.rootGeometry();
    return display.frame(window) == PixelRect{12, 12, whole.width - 24, whole.height - 24};
  }
  void moveAway() {
    constexpr std::uint32_t northWest = 10;
    constexpr std::uint32_t allFour = 0xFU << 8U;
    display.sendRootMessage(window, "_NET_MOVERESIZE_WINDOW", {northWest | allFour, 700, 300, 400, 200});
  }
  /// How long each of `count` passes came after the one before it, in seconds.
  std::vector<double> beat(int count) {
    const auto& made = tap.of(display.selectionOwner("_TILORA_INSTANCE")).requests[queryPointer];
    std::vector<double> intervals;
    auto last = std::chrono::steady_clock::now();
    for (int passes = 0; passes <= count; ++passes) {
      const int before = made;
      EXPECT_TRUE(tap.waitUntil([&] { return made > before; })) << "Tilora makes no pass";
      const auto now = std::chrono::steady_clock::now();
      if (passes > 0) intervals.push_back(std::chrono::duration<double>(now - last).count());
      last = now;
    }
    std::sort(intervals.begin(), intervals.end());
    return intervals;
  }
  /// The alert, once it has the keyboard.
  xcb_window_t alert() {
    EXPECT_TRUE(display.waitUntil([&] { return display.text(display.activeWindow(), "_NET_WM_NAME") == "Tilora"; })) << display.describe();
    return display.activeWindow();
  }
  bool isGone(xcb_window_t which) {
    const auto clients = display.clientList();
    return std::find(clients.begin(), clients.end(), which) == clients.end();
  }

  std::filesystem::path settingsFile() const { return session.home().path() / "config/tilora/settings.json"; }
  /// When the last check was, in seconds since 1970, as the file has it.
  std::optional<double> storedDate() const {
    std::ifstream file(settingsFile());
    const auto settings = nlohmann::json::parse(file, nullptr, false);
    if (!settings.contains("lastUpdateCheck")) return std::nullopt;
    EXPECT_EQ(settings["lastUpdateCheck"]["type"], "date");
    return settings["lastUpdateCheck"]["value"].get<double>() / 1e9;
  }
  static double secondsNow() { return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count(); }
};

TEST_F(UpdateLaunch, ShowsTheAlertInFrontOpensTheDownloadAndIsSilentAtTheNextStart) {
  SiteThread site(feedOf("9"));
  ManagedProcess tilora = launch();
  const xcb_window_t box = alert();
  EXPECT_EQ(display.stackingOrder().back(), box);
  EXPECT_TRUE(display.hasState(box, "_NET_WM_STATE_ABOVE"));
  EXPECT_TRUE(display.hasState(box, "_NET_WM_STATE_MODAL"));
  ASSERT_TRUE(display.waitUntil([&] { return isFull(); })) << display.describe();
  EXPECT_TRUE(harness::saveScreenshot(display, display.rootGeometry(), TILORA_PICTURES "/update_alert.png"));

  const PixelRect area = *display.clientArea(box);
  constexpr int fromTheBottom = 23;
  pointer.click(area.x + area.width / 4, area.y + area.height - fromTheBottom);
  EXPECT_EQ(browser.opened(), "http://127.84.73.76:47655/tilora/Tilora%209.zip");
  EXPECT_TRUE(display.waitUntil([&] { return isGone(box); }));
  tilora.signal(SIGTERM);
  ASSERT_EQ(tilora.waitForEnd(), cleanEnd);
  EXPECT_EQ(tilora.output(), checking);
  const auto date = storedDate();
  ASSERT_TRUE(date);
  EXPECT_NEAR(*date, secondsNow(), 60);

  moveAway();
  ASSERT_TRUE(display.waitUntil([&] { return !isFull(); }));
  ManagedProcess again = launch();
  ASSERT_TRUE(display.waitUntil([&] { return isFull(); })) << display.describe();
  again.signal(SIGTERM);
  ASSERT_EQ(again.waitForEnd(), cleanEnd);
  EXPECT_EQ(again.output(), "Releasewatch: backed off, less than 5 days.\n");
  EXPECT_EQ(site.requests(), 1U);
  EXPECT_EQ(storedDate(), date);
}

TEST_F(UpdateLaunch, MakesItsPassesWhileTheAlertIsOpenAndWritesTheDateWhenItIsCancelled) {
  SiteThread site(feedOf("9"));
  ManagedProcess tilora = launch();
  const xcb_window_t box = alert();
  ASSERT_TRUE(display.waitUntil([&] { return isFull(); })) << display.describe();
  moveAway();
  ASSERT_TRUE(display.waitUntil([&] { return !isFull(); }));
  ASSERT_TRUE(display.waitUntil([&] { return isFull(); })) << display.describe();
  EXPECT_EQ(beat(4).size(), 4U);
  EXPECT_EQ(display.activeWindow(), box);
  EXPECT_FALSE(std::filesystem::exists(settingsFile())) << "something was written while the alert is open";
  const double closed = secondsNow();
  keyboard.tap(Key::escape);
  ASSERT_TRUE(display.waitUntil([&] { return isGone(box); }));
  tilora.signal(SIGTERM);
  ASSERT_EQ(tilora.waitForEnd(), cleanEnd);
  const auto date = storedDate();
  ASSERT_TRUE(date);
  EXPECT_GE(*date, closed);
  EXPECT_EQ(browser.opened(0ms), "");
}

TEST_F(UpdateLaunch, TakesTheAlertWithItWhenItEndsAndWritesNoDate) {
  SiteThread site(feedOf("9"));
  ManagedProcess tilora = launch();
  const xcb_window_t box = alert();
  tilora.signal(SIGTERM);
  ASSERT_EQ(tilora.waitForEnd(), cleanEnd);
  EXPECT_TRUE(display.waitUntil([&] { return isGone(box); }));
  EXPECT_EQ(storedDate(), std::nullopt);
  EXPECT_EQ(browser.opened(0ms), "");
}

TEST_F(UpdateLaunch, StartsAndKeepsItsBeatWhileTheSiteSendsAByteASecond) {
  SiteThread site(updater::dribble(updater::http("200 OK", QByteArray(1000, ' ')), 1s));
  ManagedProcess tilora = launch();
  ASSERT_TRUE(display.waitUntil([&] { return isFull(); })) << display.describe();
  ASSERT_TRUE(loop.runUntil([&] { return site.openConnections() == 1; }));
  const std::vector<double> intervals = beat(20);
  EXPECT_EQ(site.openConnections(), 1) << "the site is not asked any more";
  EXPECT_EQ(tilora.output(), checking);
  const double median = intervals[intervals.size() / 2];
  RecordProperty("median_milliseconds", static_cast<int>(median * 1000));
  RecordProperty("longest_milliseconds", static_cast<int>(intervals.back() * 1000));
  EXPECT_GT(median, 0.2);
  EXPECT_LT(median, 0.35) << "the passes wait for the site";
  tilora.signal(SIGTERM);
  EXPECT_EQ(tilora.waitForEnd(), cleanEnd);
  EXPECT_TRUE(loop.runUntil([&] { return site.openConnections() == 0; })) << "the fetch goes on after the end";
}

TEST_F(UpdateLaunch, SaysWhyACheckFailedAndTriesAgainAtTheNextStart) {
  for (int times = 0; times < 2; ++times) {
    ManagedProcess tilora = launch();
    const std::string failed = std::string(checking) + "Releasewatch: Connection refused\n";
    ASSERT_TRUE(loop.runUntil([&] { return tilora.output() == failed; })) << tilora.output();
    tilora.signal(SIGTERM);
    ASSERT_EQ(tilora.waitForEnd(), cleanEnd);
    EXPECT_EQ(storedDate(), std::nullopt);
  }
}

TEST_F(UpdateLaunch, OfTheSameVersionSaysSo) {
  SiteThread site(feedOf(TILORA_VERSION));
  ManagedProcess tilora = launch();
  const std::string upToDate = std::string(checking) + "Releasewatch: application " TILORA_VERSION " already up to date.\n";
  ASSERT_TRUE(loop.runUntil([&] { return tilora.output() == upToDate; })) << tilora.output();
  tilora.signal(SIGTERM);
  ASSERT_EQ(tilora.waitForEnd(), cleanEnd);
  EXPECT_TRUE(storedDate());
}

}  // namespace
}  // namespace tilora::app
