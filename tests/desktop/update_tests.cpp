// The real program meets a real server of releases at its launch: what it prints, shows, opens and remembers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fcntl.h>
#include <QPointer>
#include <QThread>
#include <algorithm>
#include <array>
#include <csignal>
#include <fstream>
#include <nlohmann/json.hpp>

#include "app/event_loop.h"
#include "desktop_test.h"
#include "harness/screenshot.h"
#include "release_site.h"

namespace tilora::harness {
namespace {

using namespace std::chrono_literals;
using updater::Answer;
using updater::ReleaseSite;

constexpr ProcessEnd cleanEnd = {.status = 0, .signal = {}};
constexpr const char* checking = "Releasewatch: checking for update at http://127.84.73.76:47655/tilora...\n";

constexpr int panelHeight = 32;
/// A taskbar and a tray at the bottom.
constexpr const char* panelConfiguration = R"(rounded = 0
background_color = #2e3440 100
panel_items = TS
panel_size = 100% 32
panel_position = bottom center horizontal
panel_background_id = 1
strut_policy = follow_size
taskbar_mode = single_desktop
task_font_color = #d8dee9 100
)";

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
  /// Answers when it is told to.
  SiteThread() : SiteThread([this](QTcpSocket& socket) { waiting_ = &socket; }) {}
  SiteThread(const SiteThread&) = delete;
  SiteThread& operator=(const SiteThread&) = delete;
  ~SiteThread() {
    inThread([&] { site_.reset(); });
    thread_.quit();
    thread_.wait();
  }

  /// Answers the one who waits.
  void answer(const QByteArray& bytes) {
    inThread([&] {
      if (waiting_) updater::whole(bytes)(*waiting_);
    });
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
  QPointer<QTcpSocket> waiting_;
  std::unique_ptr<ReleaseSite> site_;
};

QByteArray feedBytes(const QByteArray& version) {
  return updater::http("200 OK", R"({"product":"Tilora","version":")" + version + R"(","file":"Tilora 9.zip"})");
}

Answer feedOf(const QByteArray& version) { return updater::whole(feedBytes(version)); }

/// A browser that the desktop knows as the one for the addresses of the web. What it is asked to open can be read here.
class RegisteredBrowser {
 public:
  explicit RegisteredBrowser(const TemporaryDirectory& home) {
    const std::filesystem::path pipe = home.path() / "opened";
    EXPECT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    opened_ = FileDescriptor(::open(pipe.c_str(), O_RDWR | O_CLOEXEC));
    const auto program = home.write("browser", "#!/bin/sh\nprintf '%s\\n' \"$*\" >'" + pipe.string() + "'\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    home.write("data/applications/browser.desktop",
               "[Desktop Entry]\nType=Application\nName=Browser\nExec=" + program.string() + " %u\nMimeType=x-scheme-handler/http;\n");
    home.write("config/mimeapps.list", "[Default Applications]\nx-scheme-handler/http=browser.desktop\n");
  }

  /// The next thing that it is asked to open; empty when that does not come before the deadline.
  std::string opened(std::chrono::milliseconds deadline = defaultDeadline) const {
    std::string line;
    std::array<char, 1> next = {};
    while (waitReadable(opened_.number(), deadline) && ::read(opened_.number(), next.data(), 1) == 1 && next[0] != '\n') {
      line += next[0];
    }
    return line;
  }

 private:
  FileDescriptor opened_;
};

/// A desktop with a panel, a browser and an editor, and a program whose check is due.
class UpdateTest : public DesktopTest {
 public:
  void SetUp() override {
    DesktopTest::SetUp();
    panel.emplace(session.start({"tint2", "-c", session.home().write("tint2rc", panelConfiguration).string()}));
    ASSERT_TRUE(comesTrue([&] { return display.visibleFrame(wholeScreen).height < wholeScreen.height; })) << panel->output();
    giveConsent();
    std::filesystem::remove(settingsFile());
    editor = open("editor").window;
  }

  ManagedProcess launch() { return session.start({TILORA_LOOPBACK_PROGRAM}); }
  testing::AssertionResult isFull() { return isTiled(editor, Place::full); }
  /// Takes the editor from its place, to which the next pass puts it back.
  void moveAway() {
    constexpr std::uint32_t northWest = 10;
    constexpr std::uint32_t allFour = 0xFU << 8U;
    const auto before = display.frame(editor);
    display.sendRootMessage(editor, "_NET_MOVERESIZE_WINDOW", {northWest | allFour, 700, 300, 400, 200});
    ASSERT_TRUE(comesTrue([&] { return display.frame(editor) != before; }));
  }
  /// How long each of `count` passes came after the one before it, in seconds; the shortest first.
  std::vector<double> beat(int count) {
    const auto& made = tap.of(tiloraResource()).requests[queryPointer];
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
    EXPECT_TRUE(comesTrue([&] { return display.text(display.activeWindow(), "_NET_WM_NAME") == "Tilora"; }));
    const xcb_window_t box = display.activeWindow();
    EXPECT_TRUE(isActive(box));
    return box;
  }
  /// The alert, with the keyboard or without.
  xcb_window_t shownAlert() {
    const auto clients = display.clientList();
    const auto isAlert = [&](xcb_window_t window) { return display.text(window, "_NET_WM_NAME") == "Tilora" && display.viewable(window); };
    const auto found = std::find_if(clients.begin(), clients.end(), isAlert);
    return found == clients.end() ? xcb_window_t{XCB_WINDOW_NONE} : *found;
  }
  testing::AssertionResult isGone(xcb_window_t which) {
    return comesTrue([&] {
      const auto clients = display.clientList();
      return std::find(clients.begin(), clients.end(), which) == clients.end();
    });
  }
  /// With the pointer.
  void clickDownload(xcb_window_t box) {
    const PixelRect area = display.clientArea(box).value();
    constexpr int fromTheBottom = 23;
    pointer.click(area.x + area.width / 4, area.y + area.height - fromTheBottom);
  }
  /// Tilora's icon is the only one in the tray.
  void clickIcon() { pointer.click(wholeScreen.right() - panelHeight / 2, wholeScreen.bottom() - panelHeight / 2); }
  /// Clicks the icon until the menu is there: nobody tells when the panel has taken the icon.
  testing::AssertionResult openMenu() {
    shownWithoutMenu = display.shownOnRoot();
    for (int attempts = 0; attempts < 12; ++attempts) {
      clickIcon();
      if (display.waitUntil([&] { return display.shownOnRoot() > shownWithoutMenu; }, 1500ms)) return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "the menu does not open";
  }
  /// Presses Escape until the menu is gone: nobody tells when it has got the keyboard.
  testing::AssertionResult closeMenu() {
    for (int attempts = 0; attempts < 50; ++attempts) {
      keyboard.tap(Key::escape);
      if (display.waitUntil([&] { return display.shownOnRoot() == shownWithoutMenu; }, 200ms)) return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "the menu does not close";
  }
  static void endsWhenAsked(ManagedProcess& program) {
    program.signal(SIGTERM);
    ASSERT_EQ(program.waitForEnd(), cleanEnd);
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

  app::EventLoop loop;
  RegisteredBrowser browser{session.home()};
  std::optional<ManagedProcess> panel;
  xcb_window_t editor = XCB_WINDOW_NONE;
  int shownWithoutMenu = 0;
};

/// Every window manager has to let the alert come to the front.
class UpdateAlertTest : public UpdateTest {};

TEST_P(UpdateAlertTest, IsInFrontOpensTheDownloadAndIsNotShownAtTheNextStart) {
  SiteThread site(feedOf("9"));
  ManagedProcess first = launch();
  const xcb_window_t box = alert();
  EXPECT_EQ(display.stackingOrder().back(), box);
  ASSERT_TRUE(isFull());
  EXPECT_TRUE(saveScreenshot(display, display.rootGeometry(), TILORA_PICTURES "/update-" + nameOf(GetParam()) + ".png"));

  clickDownload(box);
  EXPECT_EQ(browser.opened(), "http://127.84.73.76:47655/tilora/Tilora%209.zip");
  EXPECT_TRUE(isGone(box));
  endsWhenAsked(first);
  EXPECT_EQ(first.output(), checking);
  const auto date = storedDate();
  ASSERT_TRUE(date);
  EXPECT_NEAR(*date, secondsNow(), 60);

  moveAway();
  ManagedProcess second = launch();
  ASSERT_TRUE(isFull());
  endsWhenAsked(second);
  EXPECT_EQ(second.output(), "Releasewatch: backed off, less than 5 days.\n");
  EXPECT_EQ(site.requests(), 1U);
  EXPECT_EQ(storedDate(), date);
}

TEST_P(UpdateAlertTest, IsSeenAboveTheWindowThatTheUserTypesInto) {
  SiteThread site;
  ManagedProcess program = launch();
  ASSERT_TRUE(isFull());
  ASSERT_TRUE(loop.runUntil([&] { return site.requests() == 1; }));
  keyboard.tap(Key::a);
  display.setCardinals(editor, "_NET_WM_USER_TIME", "CARDINAL", {display.serverTime()});
  site.answer(feedBytes("9"));
  ASSERT_TRUE(comesTrue([&] { return shownAlert() != XCB_WINDOW_NONE && display.stackingOrder().back() == shownAlert(); }));
  clickDownload(shownAlert());
  EXPECT_EQ(browser.opened(), "http://127.84.73.76:47655/tilora/Tilora%209.zip");
  endsWhenAsked(program);
}

INSTANTIATE_TEST_SUITE_P(On, UpdateAlertTest, testing::ValuesIn(allWindowManagers), windowManagerOf);

/// What no window manager has a say in.
class UpdateLaunchTest : public UpdateTest {};

TEST_P(UpdateLaunchTest, MakesItsPassesWhileTheAlertIsOpenAndWritesTheDateWhenItIsCancelled) {
  SiteThread site(feedOf("9"));
  ManagedProcess program = launch();
  const xcb_window_t box = alert();
  EXPECT_TRUE(display.hasState(box, "_NET_WM_STATE_ABOVE"));
  EXPECT_TRUE(display.hasState(box, "_NET_WM_STATE_MODAL"));
  ASSERT_TRUE(isFull());
  moveAway();
  ASSERT_TRUE(isFull());
  EXPECT_EQ(beat(4).size(), 4U);
  EXPECT_EQ(display.activeWindow(), box);
  EXPECT_FALSE(std::filesystem::exists(settingsFile())) << "something was written while the alert is open";
  const double closed = secondsNow();
  keyboard.tap(Key::escape);
  ASSERT_TRUE(isGone(box));
  endsWhenAsked(program);
  const auto date = storedDate();
  ASSERT_TRUE(date);
  EXPECT_GE(*date, closed);
  EXPECT_EQ(browser.opened(0ms), "");
}

TEST_P(UpdateLaunchTest, TakesTheAlertWithItWhenItEndsAndWritesNoDate) {
  SiteThread site(feedOf("9"));
  ManagedProcess program = launch();
  const xcb_window_t box = alert();
  endsWhenAsked(program);
  EXPECT_TRUE(isGone(box));
  EXPECT_EQ(storedDate(), std::nullopt);
  EXPECT_EQ(browser.opened(0ms), "");
}

TEST_P(UpdateLaunchTest, TakesTheKeyboardAndThePointerFromTheMenuUntilTheAlertIsDismissed) {
  SiteThread site;
  ManagedProcess program = launch();
  ASSERT_TRUE(isFull());
  ASSERT_TRUE(openMenu());
  ASSERT_TRUE(loop.runUntil([&] { return site.requests() == 1; }));
  site.answer(feedBytes("9"));
  const xcb_window_t box = alert();
  EXPECT_TRUE(comesTrue([&] { return display.shownOnRoot() == shownWithoutMenu + 1; })) << "the menu stays beside the alert";
  clickIcon();
  ASSERT_TRUE(passes(2));
  EXPECT_EQ(display.shownOnRoot(), shownWithoutMenu + 1) << "the menu opens beside the alert";
  keyboard.tap(Key::escape);
  EXPECT_TRUE(isGone(box));
  EXPECT_TRUE(openMenu());
  EXPECT_TRUE(closeMenu());
  endsWhenAsked(program);
}

TEST_P(UpdateLaunchTest, StartsAndKeepsItsBeatWhileTheSiteSendsAByteASecond) {
  SiteThread site(updater::dribble(updater::http("200 OK", QByteArray(1000, ' ')), 1s));
  constexpr int passes = 12;
  const auto beatOfALaunch = [&](const std::string& name) {
    ManagedProcess program = launch();
    EXPECT_TRUE(isFull());
    const bool isAsked = name == "dribbling";
    EXPECT_TRUE(loop.runUntil([&] { return site.openConnections() == (isAsked ? 1 : 0); }));
    const std::vector<double> intervals = beat(passes);
    EXPECT_EQ(site.openConnections(), isAsked ? 1 : 0);
    const double median = intervals[intervals.size() / 2];
    RecordProperty(name + "_median_milliseconds", static_cast<int>(median * 1000));
    RecordProperty(name + "_longest_milliseconds", static_cast<int>(intervals.back() * 1000));
    endsWhenAsked(program);
    return median;
  };
  session.resetSettings();
  const double alone = beatOfALaunch("alone");
  std::filesystem::remove(settingsFile());
  const double dribbling = beatOfALaunch("dribbling");
  EXPECT_GT(dribbling, 0.2);
  EXPECT_NEAR(dribbling, alone, 0.1) << "the passes wait for the site";
  EXPECT_TRUE(loop.runUntil([&] { return site.openConnections() == 0; })) << "the fetch goes on after the end";
}

TEST_P(UpdateLaunchTest, SaysWhyACheckFailedAndTriesAgainAtTheNextStart) {
  for (int times = 0; times < 2; ++times) {
    ManagedProcess program = launch();
    const std::string failed = std::string(checking) + "Releasewatch: Connection refused\n";
    ASSERT_TRUE(loop.runUntil([&] { return program.output() == failed; })) << program.output();
    endsWhenAsked(program);
    EXPECT_EQ(storedDate(), std::nullopt);
  }
}

TEST_P(UpdateLaunchTest, WritesItsLinesNowhereElseWhenThereIsNoStandardOutput) {
  SiteThread site(feedOf("9"));
  ManagedProcess program = session.start({"sh", "-c", "exec \"$0\" <&- >&- 2>&-", TILORA_LOOPBACK_PROGRAM});
  alert();
  ASSERT_TRUE(isFull());
  endsWhenAsked(program);
}

TEST_P(UpdateLaunchTest, OfTheSameVersionSaysSo) {
  SiteThread site(feedOf(TILORA_VERSION));
  ManagedProcess program = launch();
  const std::string upToDate = std::string(checking) + "Releasewatch: application " TILORA_VERSION " already up to date.\n";
  ASSERT_TRUE(loop.runUntil([&] { return program.output() == upToDate; })) << program.output();
  endsWhenAsked(program);
  EXPECT_TRUE(storedDate());
}

INSTANTIATE_TEST_SUITE_P(On, UpdateLaunchTest, testing::Values(WindowManagerKind::openbox), windowManagerOf);

}  // namespace
}  // namespace tilora::harness
