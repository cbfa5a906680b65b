// The program as a process: how it starts, asks and ends.
#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <nlohmann/json.hpp>

#include "harness/display.h"
#include "harness/input.h"
#include "harness/server.h"
#include "harness/session.h"
#include "harness/test_client.h"
#include "harness/window_manager.h"

namespace tilora::app {
namespace {

using harness::Display;
using harness::Key;
using harness::ManagedProcess;
using harness::ProcessEnd;
using harness::Session;

constexpr ProcessEnd cleanEnd = {.status = 0, .signal = {}};
constexpr ProcessEnd failure = {.status = 1, .signal = {}};

ManagedProcess startTilora(Session& session) { return session.start({TILORA_PROGRAM}); }

void giveConsent(Session& session) {
  session.home().write("config/tilora/consent.json", R"({"Tilora.Consent": {"type": "bool", "value": true}})");
}

TEST(Program, WithoutAServerItSaysSoInOneLineAndFails) {
  Session session(":4711");
  ManagedProcess tilora = startTilora(session);
  EXPECT_EQ(tilora.waitForEnd(), failure);
  EXPECT_EQ(tilora.output(), "tilora: there is no X server to connect to.\n");
}

class RunningProgram : public testing::Test {
 public:
  harness::ServerProcess server;
  Session session{server.display()};
  Display display{server.display()};
  harness::WindowManager windowManager{harness::WindowManagerKind::openbox, session, display};
  harness::Keyboard keyboard{display};

  xcb_window_t open(harness::TestClient& client, const std::string& name) {
    const xcb_window_t window = client.open({.title = name, .instance = name, .className = name});
    display.watch(window);
    EXPECT_TRUE(display.waitUntil([&] { return display.activeWindow() == window; })) << display.describe();
    return window;
  }
  bool owns() { return display.selectionOwner("_TILORA_INSTANCE") != XCB_WINDOW_NONE; }
  bool isAsking() { return display.text(display.activeWindow(), "_NET_WM_NAME") == "Tilora"; }
  bool isFull(xcb_window_t window) {
    const harness::PixelRect whole = display.rootGeometry();
    return display.frame(window) == harness::PixelRect{12, 12, whole.width - 24, whole.height - 24};
  }
};

TEST_F(RunningProgram, ASecondCopyEndsAtOnceAndTheFirstGoesOn) {
  giveConsent(session);
  ManagedProcess first = startTilora(session);
  ASSERT_TRUE(display.waitUntil([&] { return owns(); }));
  ManagedProcess second = startTilora(session);
  EXPECT_EQ(second.waitForEnd(), cleanEnd);
  EXPECT_TRUE(first.running());
  EXPECT_TRUE(owns());
}

TEST_F(RunningProgram, EndsCleanlyAndQuietlyOnEachSignalThatAsksItTo) {
  giveConsent(session);
  harness::TestClient client(session);
  harness::TestClient other(session);
  const xcb_window_t hidden = open(client, "hidden");
  const xcb_window_t active = open(other, "active");
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    ManagedProcess tilora = startTilora(session);
    ASSERT_TRUE(display.waitUntil([&] { return display.iconic(hidden) && isFull(active); })) << display.describe();
    tilora.signal(signal);
    EXPECT_EQ(tilora.waitForEnd(), cleanEnd) << signal;
    EXPECT_TRUE(display.waitUntil([&] { return display.viewable(hidden) && !display.iconic(hidden); })) << display.describe();
    EXPECT_EQ(display.activeWindow(), active);
    EXPECT_EQ(tilora.output(), "Releasewatch: backed off, less than 5 days.\n");
  }
}

TEST_F(RunningProgram, ShowsWhatAKilledCopyHadHiddenWhenItEnds) {
  giveConsent(session);
  harness::TestClient client(session);
  harness::TestClient other(session);
  const xcb_window_t hidden = open(client, "hidden");
  const xcb_window_t active = open(other, "active");
  {
    ManagedProcess killed = startTilora(session);
    ASSERT_TRUE(display.waitUntil([&] { return display.iconic(hidden) && isFull(active); })) << display.describe();
    killed.signal(SIGKILL);
    ASSERT_TRUE(killed.waitForEnd());
  }
  EXPECT_TRUE(display.iconic(hidden));
  ManagedProcess next = startTilora(session);
  ASSERT_TRUE(display.waitUntil([&] { return owns(); }));
  next.signal(SIGTERM);
  ASSERT_EQ(next.waitForEnd(), cleanEnd);
  EXPECT_TRUE(display.waitUntil([&] { return display.viewable(hidden) && !display.iconic(hidden); })) << display.describe();
}

TEST_F(RunningProgram, FailsWhenTheServerGoesAway) {
  giveConsent(session);
  ManagedProcess tilora = startTilora(session);
  ASSERT_TRUE(display.waitUntil([&] { return owns(); }));
  server.process().terminate();
  EXPECT_EQ(tilora.waitForEnd(), failure);
}

TEST_F(RunningProgram, TouchesNoWindowBeforeStartIsPressedAndNeverAsksAgain) {
  harness::TestClient client(session);
  const xcb_window_t window = open(client, "window");
  const auto before = display.frame(window);
  ManagedProcess tilora = startTilora(session);
  ASSERT_TRUE(display.waitUntil([&] { return isAsking(); })) << display.describe();
  EXPECT_EQ(display.frame(window), before);
  keyboard.tap(Key::enter);
  EXPECT_TRUE(display.waitUntil([&] { return isFull(window); })) << display.describe();
  tilora.signal(SIGTERM);
  ASSERT_EQ(tilora.waitForEnd(), cleanEnd);

  display.minimise(window);
  ASSERT_TRUE(display.waitUntil([&] { return display.iconic(window); }));
  ManagedProcess again = startTilora(session);
  const xcb_window_t later = open(client, "later");
  EXPECT_TRUE(display.waitUntil([&] { return isFull(later); })) << display.describe();
  EXPECT_FALSE(isAsking());
}

TEST_F(RunningProgram, NotNowLeavesTheWindowsAloneAndTheNextStartAsksAgain) {
  harness::TestClient client(session);
  const xcb_window_t window = open(client, "window");
  const auto before = display.frame(window);
  for (int times = 0; times < 2; ++times) {
    ManagedProcess tilora = startTilora(session);
    ASSERT_TRUE(display.waitUntil([&] { return isAsking(); })) << display.describe();
    keyboard.tap(Key::escape);
    ASSERT_TRUE(display.waitUntil([&] { return display.activeWindow() == window; })) << display.describe();
    keyboard.chord({Key::leftAlt, Key::leftShift, Key::leftBracket});
    tilora.signal(SIGTERM);
    ASSERT_EQ(tilora.waitForEnd(), cleanEnd);
    EXPECT_EQ(display.frame(window), before);
  }
}

TEST_F(RunningProgram, WhatACommandStoredIsOnTheDiskWhenTheProgramHasEnded) {
  giveConsent(session);
  harness::TestClient client(session);
  const xcb_window_t window = open(client, "Editor");
  ManagedProcess tilora = startTilora(session);
  ASSERT_TRUE(display.waitUntil([&] { return isFull(window); }));
  keyboard.chord({Key::leftAlt, Key::leftShift, Key::leftBracket});
  ASSERT_TRUE(display.waitUntil([&] { return display.frame(window)->width < display.rootGeometry().width / 2; })) << display.describe();
  tilora.signal(SIGTERM);
  ASSERT_EQ(tilora.waitForEnd(), cleanEnd);
  std::ifstream file(session.home().path() / "config/tilora/settings.json");
  const auto settings = nlohmann::json::parse(file);
  const auto placements = nlohmann::json::parse(settings.at("Tilora.AppPlacementPreferences").at("value").get<std::string>());
  EXPECT_EQ(placements, nlohmann::json({{"Editor||role:axwindow||axstandardwindow", "left"}}));
}

}  // namespace
}  // namespace tilora::app
