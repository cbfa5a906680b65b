// The picture of the desktop that events keep true, on a server where the test itself plays the window manager.
#include "platform/x11/client_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>

#include "bare_server.h"
#include "harness/test_client.h"

namespace tilora::x11 {
namespace {

class ClientModelTest : public testing::Test {
 public:
  BareServer bare;
  harness::TestClient client{bare.session};
  ClientModel model{*bare.connection};
  EventPump pump{*bare.connection, [this](const xcb_generic_event_t& event) { model.handleEvent(event); }};

  xcb_window_t root() const { return bare.display.root(); }

  xcb_window_t makeWindow() const {
    auto* xcb = bare.display.xcb();
    const xcb_window_t window = xcb_generate_id(xcb);
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, root(), 0, 0, 10, 10, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0,
                      nullptr);
    return window;
  }

  /// What a window manager announces itself with.
  xcb_window_t announceManager(const std::string& name = "playing") {
    const xcb_window_t check = makeWindow();
    bare.display.setCardinals(check, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
    setText(check, "_NET_WM_NAME", name);
    bare.display.setCardinals(root(), "_NET_SUPPORTED", "ATOM", {bare.display.atom("_NET_ACTIVE_WINDOW")});
    bare.display.setCardinals(root(), "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
    return check;
  }

  void setText(xcb_window_t window, std::string_view property, const std::string& text, std::string_view type = "UTF8_STRING") {
    xcb_change_property(bare.display.xcb(), XCB_PROP_MODE_REPLACE, window, bare.display.atom(property), bare.display.atom(type), 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
  }

  void setAtoms(xcb_window_t window, std::string_view property, const std::vector<std::string>& names) {
    std::vector<std::uint32_t> values;
    values.reserve(names.size());
    for (const auto& name : names) values.push_back(bare.display.atom(name));
    bare.display.setCardinals(window, property, "ATOM", values);
  }

  void list(const std::vector<xcb_window_t>& windows) { bare.display.setCardinals(root(), "_NET_CLIENT_LIST", "WINDOW", windows); }

  /// Brings the model up to what the server holds now, the events of its own first reads included.
  void settle() {
    bare.display.sync();
    pump.takeAll();
    model.refresh();
    pump.takeAll();
    model.refresh();
  }

  /// A mapped window of the client, listed and known to the model.
  ClientWindowRef known(const harness::WindowOptions& options = {}) {
    const xcb_window_t window = client.open(options);
    list({window});
    settle();
    auto found = model.find(window);
    if (!found) throw std::runtime_error("the window is not known");
    return found;
  }

  std::vector<xcb_window_t> listed() const {
    std::vector<xcb_window_t> ids;
    for (const auto& window : model.windows()) ids.push_back(window->id);
    return ids;
  }
};

TEST_F(ClientModelTest, WithoutAWindowManagerNothingIsKnown) {
  settle();
  EXPECT_EQ(model.facts().windowManager, xcb_window_t{XCB_WINDOW_NONE});
  EXPECT_TRUE(model.windows().empty());
  EXPECT_FALSE(model.facts().supports(bare.connection->atoms()._NET_ACTIVE_WINDOW));
}

TEST_F(ClientModelTest, AWindowManagerThatComesLaterIsSeen) {
  settle();
  model.takeChanges();
  const xcb_window_t check = announceManager("Grüße");
  settle();
  EXPECT_EQ(model.facts().windowManager, check);
  EXPECT_EQ(model.facts().windowManagerName, "Grüße");
  EXPECT_TRUE(model.facts().supports(bare.connection->atoms()._NET_ACTIVE_WINDOW));
  EXPECT_FALSE(model.facts().supports(bare.connection->atoms()._NET_MOVERESIZE_WINDOW));
  EXPECT_TRUE(model.takeChanges().windowManager);
  EXPECT_FALSE(model.takeChanges().windowManager);
}

TEST_F(ClientModelTest, ACheckWindowThatDoesNotNameItselfIsNoWindowManager) {
  const xcb_window_t stale = makeWindow();
  bare.display.setCardinals(root(), "_NET_SUPPORTING_WM_CHECK", "WINDOW", {stale});
  settle();
  EXPECT_EQ(model.facts().windowManager, xcb_window_t{XCB_WINDOW_NONE});
  bare.display.setCardinals(root(), "_NET_SUPPORTING_WM_CHECK", "WINDOW", {0x7FFFFFFF});
  settle();
  EXPECT_EQ(model.facts().windowManager, xcb_window_t{XCB_WINDOW_NONE});
}

TEST_F(ClientModelTest, AWindowManagerThatEndsIsNoLongerThere) {
  const xcb_window_t check = announceManager();
  settle();
  model.takeChanges();
  xcb_destroy_window(bare.display.xcb(), check);
  settle();
  EXPECT_EQ(model.facts().windowManager, xcb_window_t{XCB_WINDOW_NONE});
  EXPECT_TRUE(model.takeChanges().windowManager);
}

TEST_F(ClientModelTest, AWindowManagerWhosePredecessorTakesTheAnnouncementAwayIsThereUntilItEnds) {
  const xcb_window_t before = announceManager("first");
  settle();
  const xcb_window_t check = announceManager("second");
  settle();
  model.takeChanges();
  xcb_delete_property(bare.display.xcb(), root(), bare.display.atom("_NET_SUPPORTING_WM_CHECK"));
  xcb_destroy_window(bare.display.xcb(), before);
  settle();
  EXPECT_EQ(model.facts().windowManager, check);
  EXPECT_EQ(model.facts().windowManagerName, "second");
  EXPECT_FALSE(model.takeChanges().windowManager);
  xcb_destroy_window(bare.display.xcb(), check);
  settle();
  EXPECT_EQ(model.facts().windowManager, xcb_window_t{XCB_WINDOW_NONE});
}

TEST_F(ClientModelTest, WindowsStayKnownWhileOneManagerReplacesAnother) {
  const xcb_window_t check = announceManager("first");
  const auto window = known();
  xcb_destroy_window(bare.display.xcb(), check);
  list({});
  settle();
  EXPECT_EQ(listed(), std::vector<xcb_window_t>{window->id});
  announceManager("second");
  settle();
  EXPECT_EQ(listed(), std::vector<xcb_window_t>{window->id});
  EXPECT_EQ(model.find(window->id), window) << "it is the same record";
}

TEST_F(ClientModelTest, TheListsOrderIsKept) {
  announceManager();
  const std::vector<xcb_window_t> windows = {client.open(), client.open(), client.open()};
  list({windows[2], windows[0], windows[1]});
  settle();
  EXPECT_EQ(listed(), (std::vector<xcb_window_t>{windows[2], windows[0], windows[1]}));
}

TEST_F(ClientModelTest, AWindowThatLeavesTheListIsForgotten) {
  announceManager();
  const auto window = known();
  model.takeChanges();
  list({});
  settle();
  EXPECT_TRUE(model.windows().empty());
  EXPECT_TRUE(window->isGone);
  EXPECT_EQ(model.find(window->id), nullptr);
  EXPECT_TRUE(model.takeChanges().vanished);
}

TEST_F(ClientModelTest, ADestroyedWindowIsForgottenBeforeTheListSaysSo) {
  announceManager();
  const auto window = known();
  client.destroy(window->id);
  settle();
  EXPECT_TRUE(window->isGone);
  EXPECT_TRUE(model.windows().empty());
}

TEST_F(ClientModelTest, AListOfWindowsThatDoNotExistHoldsNothing) {
  announceManager();
  std::vector<std::uint32_t> nonsense = {0, 0, root() + 0x10000000U, 0x7FFFFFFF, 0xFFFFFFFF};
  list(nonsense);
  settle();
  EXPECT_TRUE(model.windows().empty());
}

TEST_F(ClientModelTest, AWindowListedTwiceIsKnownOnce) {
  announceManager();
  const xcb_window_t window = client.open();
  list({window, window});
  settle();
  const auto ids = listed();
  EXPECT_EQ(std::set<xcb_window_t>(ids.begin(), ids.end()), std::set<xcb_window_t>{window});
  list({});
  settle();
  EXPECT_TRUE(model.windows().empty());
}

TEST_F(ClientModelTest, WhatAWindowDeclaresIsRead) {
  announceManager();
  const xcb_window_t parent = client.open();
  const auto window = known({.title = "Grüße",
                             .instance = "instance",
                             .className = "Class",
                             .role = "browser",
                             .type = "DIALOG",
                             .minWidth = 200,
                             .minHeight = 100,
                             .maxWidth = 800,
                             .maxHeight = 600,
                             .widthIncrement = 7,
                             .heightIncrement = 13,
                             .transientFor = parent,
                             .leader = parent,
                             .processId = 4321,
                             .machine = "elsewhere",
                             .states = {"SKIP_TASKBAR", "FULLSCREEN"}});
  EXPECT_EQ(window->name, "Grüße");
  EXPECT_EQ(window->instanceName, "instance");
  EXPECT_EQ(window->className, "Class");
  EXPECT_EQ(window->role, "browser");
  EXPECT_EQ(window->type, WindowType::dialog);
  EXPECT_EQ(window->limits, (SizeLimits{200, 100, 800, 600, 7, 13}));
  EXPECT_EQ(window->transientFor, parent);
  EXPECT_EQ(window->leader, parent);
  EXPECT_EQ(window->declaredProcess, 4321U);
  EXPECT_EQ(window->machine, "elsewhere");
  EXPECT_TRUE(window->states.skipTaskbar);
  EXPECT_TRUE(window->states.fullscreen);
  EXPECT_FALSE(window->states.maximized());
}

TEST_F(ClientModelTest, TheServerKnowsWhichProcessMadeAWindow) {
  announceManager();
  const auto window = known({.declaresProcess = false});
  EXPECT_EQ(window->declaredProcess, 0U);
  EXPECT_EQ(window->clientProcess, static_cast<std::uint32_t>(client.pid()));
}

TEST_F(ClientModelTest, AChangedPropertyIsReadAgain) {
  announceManager();
  const auto window = known({.title = "before"});
  client.setTitle(window->id, "after");
  settle();
  EXPECT_EQ(window->name, "after");
  setAtoms(window->id, "_NET_WM_STATE", {"_NET_WM_STATE_HIDDEN", "_NET_WM_STATE_MAXIMIZED_VERT"});
  settle();
  EXPECT_TRUE(window->states.hidden);
  EXPECT_TRUE(window->states.maximizedVertically);
  const auto touched = model.takeChanges().touched;
  EXPECT_NE(std::find(touched.begin(), touched.end(), window), touched.end());
  xcb_delete_property(bare.display.xcb(), window->id, bare.display.atom("_NET_WM_STATE"));
  settle();
  EXPECT_EQ(window->states, WindowStates());
}

TEST_F(ClientModelTest, AMovedWindowIsWhereTheServerHasIt) {
  announceManager();
  const auto window = known({.geometry = {10, 20, 300, 200}});
  EXPECT_EQ(window->client, (PixelRect{10, 20, 300, 200}));
  client.configure(window->id, {40, 50, 320, 240});
  client.keysPressed(window->id);
  settle();
  EXPECT_EQ(window->client, (PixelRect{40, 50, 320, 240}));
}

TEST_F(ClientModelTest, InsideAFrameTheWindowIsWhereItIsOnTheRoot) {
  announceManager();
  const auto window = known({.geometry = {10, 20, 300, 200}});
  auto* xcb = bare.display.xcb();
  const xcb_window_t frame = xcb_generate_id(xcb);
  xcb_create_window(xcb, XCB_COPY_FROM_PARENT, frame, root(), 100, 100, 310, 230, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0,
                    nullptr);
  xcb_reparent_window(xcb, window->id, frame, 5, 25);
  bare.display.setCardinals(window->id, "_NET_FRAME_EXTENTS", "CARDINAL", {5, 5, 25, 5});
  settle();
  EXPECT_EQ(window->client, (PixelRect{105, 125, 300, 200}));
  EXPECT_EQ(window->visible(), (PixelRect{100, 100, 310, 230}));
  const std::array<std::uint32_t, 2> position = {7, 30};
  xcb_configure_window(xcb, window->id, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, position.data());
  settle();
  EXPECT_EQ(window->client, (PixelRect{107, 130, 300, 200})) << "the coordinates of a real event are relative to the frame";
}

TEST_F(ClientModelTest, ASyntheticConfigureEventIsInRootCoordinates) {
  announceManager();
  const auto window = known({.geometry = {10, 20, 300, 200}});
  xcb_configure_notify_event_t told{};
  told.response_type = XCB_CONFIGURE_NOTIFY;
  told.event = told.window = window->id;
  told.x = 400;
  told.y = 300;
  told.width = 300;
  told.height = 200;
  std::array<char, 32> bytes{};
  std::copy_n(reinterpret_cast<const char*>(&told), sizeof(told), bytes.begin());
  xcb_send_event(bare.display.xcb(), 0, window->id, XCB_EVENT_MASK_STRUCTURE_NOTIFY, bytes.data());
  settle();
  EXPECT_EQ(window->client, (PixelRect{400, 300, 300, 200}));
}

TEST_F(ClientModelTest, TheActiveWindowTheDesktopAndShowDesktopAreFollowed) {
  announceManager();
  const auto window = known();
  model.takeChanges();
  bare.display.setCardinals(root(), "_NET_ACTIVE_WINDOW", "WINDOW", {window->id});
  settle();
  EXPECT_EQ(model.facts().active, window->id);
  EXPECT_TRUE(model.takeChanges().active);
  bare.display.setCardinals(root(), "_NET_CURRENT_DESKTOP", "CARDINAL", {2});
  settle();
  EXPECT_EQ(model.facts().currentDesktop, 2U);
  EXPECT_TRUE(model.takeChanges().desktop);
  bare.display.setCardinals(root(), "_NET_SHOWING_DESKTOP", "CARDINAL", {1});
  settle();
  EXPECT_TRUE(model.facts().showingDesktop);
  EXPECT_TRUE(model.takeChanges().desktop);
}

TEST_F(ClientModelTest, TheWorkAreaIsThatOfTheCurrentDesktop) {
  announceManager();
  bare.display.setCardinals(root(), "_NET_WORKAREA", "CARDINAL", {0, 0, 1600, 900, 0, 24, 1600, 876});
  settle();
  EXPECT_EQ(model.facts().workArea, (PixelRect{0, 0, 1600, 900}));
  bare.display.setCardinals(root(), "_NET_CURRENT_DESKTOP", "CARDINAL", {1});
  settle();
  EXPECT_EQ(model.facts().workArea, (PixelRect{0, 24, 1600, 876}));
  xcb_delete_property(bare.display.xcb(), root(), bare.display.atom("_NET_WORKAREA"));
  settle();
  EXPECT_EQ(model.facts().workArea, std::nullopt);
}

TEST_F(ClientModelTest, AStrutIsFollowedUntilItsWindowGoes) {
  announceManager();
  const auto panel = known({.type = "DOCK", .strut = {0, 0, 24, 0, 0, 0, 0, 0, 0, 1599, 0, 0}});
  ASSERT_TRUE(panel->strutPartial);
  EXPECT_EQ(panel->strutPartial->top, 24);
  EXPECT_EQ(panel->strutPartial->topEnd, 1599);
  EXPECT_TRUE(model.takeChanges().struts);
  client.setStrut(panel->id, {0, 0, 48, 0, 0, 0, 0, 0, 0, 1599, 0, 0});
  settle();
  EXPECT_EQ(panel->strutPartial->top, 48);
  EXPECT_TRUE(model.takeChanges().struts);
  client.destroy(panel->id);
  settle();
  EXPECT_TRUE(model.takeChanges().struts);
}

TEST_F(ClientModelTest, ValuesThatMakeNoSenseCountAsAbsent) {
  announceManager();
  const auto window = known();
  bare.display.setCardinals(window->id, "_NET_FRAME_EXTENTS", "CARDINAL", {0xFFFFFFFF, 5, 5, 5});
  bare.display.setCardinals(window->id, "_GTK_FRAME_EXTENTS", "CARDINAL", {5, 5});
  bare.display.setCardinals(window->id, "_NET_WM_STRUT_PARTIAL", "CARDINAL", {0xFFFFFFFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  bare.display.setCardinals(window->id, "_NET_WM_STRUT", "CARDINAL", {1, 2});
  bare.display.setCardinals(window->id, "_NET_WM_DESKTOP", "ATOM", {3});
  bare.display.setCardinals(window->id, "WM_NORMAL_HINTS", "WM_SIZE_HINTS", {0xFFFFFFFF});
  bare.display.setCardinals(window->id, "_NET_WM_WINDOW_TYPE", "CARDINAL", {1, 2, 3});
  bare.display.setCardinals(window->id, "_TILORA_HIDDEN", "ATOM", {1});
  settle();
  EXPECT_EQ(window->decoration, Extents());
  EXPECT_EQ(window->shadow, Extents());
  EXPECT_FALSE(window->strutPartial);
  EXPECT_FALSE(window->strut);
  EXPECT_EQ(window->desktop, std::nullopt);
  EXPECT_EQ(window->limits, SizeLimits());
  EXPECT_EQ(window->type, WindowType::unset);
  EXPECT_FALSE(window->storedMarks.any());
}

TEST_F(ClientModelTest, HostileSizeHintsAreNoLimits) {
  announceManager();
  const auto window = known();
  std::vector<std::uint32_t> hints(18, 0x80000000U);
  hints[0] = 0xFFFFFFFF;
  bare.display.setCardinals(window->id, "WM_NORMAL_HINTS", "WM_SIZE_HINTS", hints);
  settle();
  EXPECT_EQ(window->limits, SizeLimits());
}

TEST_F(ClientModelTest, ALongTitleIsCutAndAnEmptyOneIsAbsent) {
  announceManager();
  const auto window = known();
  setText(window->id, "_NET_WM_NAME", std::string(500000, 'x'));
  settle();
  ASSERT_TRUE(window->name);
  EXPECT_EQ(*window->name, std::string(4096, 'x'));
  setText(window->id, "_NET_WM_NAME", "");
  settle();
  EXPECT_EQ(window->name, std::nullopt);
}

TEST_F(ClientModelTest, TheFirstKnownTypeOfAListCounts) {
  announceManager();
  const auto window = known();
  setAtoms(window->id, "_NET_WM_WINDOW_TYPE", {"_SOME_OTHER_TYPE", "_NET_WM_WINDOW_TYPE_UTILITY", "_NET_WM_WINDOW_TYPE_NORMAL"});
  settle();
  EXPECT_EQ(window->type, WindowType::palette);
}

TEST_F(ClientModelTest, AllowedActionsAreTheOnesOfTheListIfThereIsOne) {
  announceManager();
  const auto window = known();
  EXPECT_FALSE(window->listsActions);
  setAtoms(window->id, "_NET_WM_ALLOWED_ACTIONS", {"_NET_WM_ACTION_MOVE"});
  settle();
  EXPECT_TRUE(window->listsActions);
  EXPECT_TRUE(window->mayMove);
  EXPECT_FALSE(window->mayResize);
}

TEST_F(ClientModelTest, AWindowOnAllDesktopsHasNone) {
  announceManager();
  const auto window = known();
  bare.display.setCardinals(window->id, "_NET_WM_DESKTOP", "CARDINAL", {1});
  settle();
  EXPECT_EQ(window->desktop, 1U);
  bare.display.setCardinals(window->id, "_NET_WM_DESKTOP", "CARDINAL", {0xFFFFFFFF});
  settle();
  EXPECT_EQ(window->desktop, std::nullopt);
}

TEST_F(ClientModelTest, WindowsThatComeAndGoAsFastAsTheyCanLeaveNothingBehind) {
  announceManager();
  for (int round = 0; round < 20; ++round) {
    const std::vector<xcb_window_t> windows = {client.open(), client.open()};
    list(windows);
    bare.display.sync();
    pump.takeAll();
    for (const auto window : windows) client.destroy(window);
    model.refresh();
  }
  list({});
  settle();
  EXPECT_TRUE(model.windows().empty());
}

TEST_F(ClientModelTest, AHungClientHoldsNothingUp) {
  announceManager();
  const auto window = known({.title = "before"});
  client.suspend();
  setText(window->id, "_NET_WM_NAME", "after");
  settle();
  EXPECT_EQ(window->name, "after");
  client.resume();
}

TEST_F(ClientModelTest, ADeadServerEndsNothingButTheConnection) {
  announceManager();
  const auto window = known();
  client.setTitle(window->id, "never read");
  pump.takeAll();
  bare.server.process().terminate();
  model.refresh();
  EXPECT_TRUE(bare.connection->failed());
}

}  // namespace
}  // namespace tilora::x11
