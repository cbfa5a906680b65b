// One copy of the program on a display.
#include "platform/x11/instance.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>

#include "bare_server.h"
#include "platform/x11/event_type.h"

namespace tilora::x11 {
namespace {

class InstanceTest : public testing::Test {
 public:
  BareServer bare;
  int shown = 0;
  int lost = 0;
  Instance::Start first = Instance::acquire(*bare.connection);
  EventPump pump{*bare.connection, [this](const xcb_generic_event_t& event) {
                   if (first.instance) first.instance->handleEvent(event);
                 }};

  void SetUp() override {
    ASSERT_EQ(first.outcome, Instance::Outcome::acquired);
    first.instance->onAskedToShow([this] { ++shown; });
    first.instance->onLost([this] { ++lost; });
  }

  Instance::Outcome startAnother() const {
    const auto connection = Connection::open(bare.server.display());
    return Instance::acquire(*connection).outcome;
  }
};

TEST_F(InstanceTest, ASecondCopyLearnsOfTheFirstWhichIsAskedToShowItself) {
  EXPECT_EQ(startAnother(), Instance::Outcome::alreadyRunning);
  EXPECT_TRUE(pump.until([this] { return shown == 1; }));
  EXPECT_EQ(startAnother(), Instance::Outcome::alreadyRunning);
  EXPECT_TRUE(pump.until([this] { return shown == 2; }));
  EXPECT_EQ(lost, 0);
}

TEST_F(InstanceTest, WhenTheFirstHasEndedAnotherMayStart) {
  first.instance.reset();
  bare.display.sync();
  EXPECT_EQ(startAnother(), Instance::Outcome::acquired);
}

TEST_F(InstanceTest, WhenTheFirstHasCrashedAnotherMayStart) {
  auto connection = Connection::open(bare.server.display());
  first.instance.reset();
  pump.takeAll();
  auto second = Instance::acquire(*connection);
  ASSERT_EQ(second.outcome, Instance::Outcome::acquired);
  // What the server does when the process is gone: it closes the connection and the windows with it.
  xcb_kill_client(bare.display.xcb(), second.instance->window());
  bare.display.sync();
  EXPECT_EQ(startAnother(), Instance::Outcome::acquired);
}

TEST_F(InstanceTest, ACopyWhoseSelectionIsTakenAwayIsTold) {
  const xcb_window_t thief = xcb_generate_id(bare.display.xcb());
  xcb_create_window(bare.display.xcb(), 0, thief, bare.display.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0,
                    nullptr);
  xcb_set_selection_owner(bare.display.xcb(), thief, bare.connection->atoms()._TILORA_INSTANCE, bare.display.serverTime());
  bare.display.sync();
  EXPECT_TRUE(pump.until([this] { return lost == 1; }));
}

TEST_F(InstanceTest, AStartIsAnnouncedAsAManagersIs) {
  first.instance.reset();
  pump.takeAll();
  const auto listener = Connection::open(bare.server.display());
  const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(listener->xcb(), listener->root(), XCB_CW_EVENT_MASK, &mask);
  std::vector<std::uint32_t> announced;
  EventPump announcements{*listener, [&](const xcb_generic_event_t& event) {
                            if (typeOf(event) != XCB_CLIENT_MESSAGE) return;
                            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
                            if (message.type != listener->atoms().MANAGER) return;
                            announced = {message.data.data32[1], message.data.data32[2]};
                          }};
  announcements.takeAll();
  const auto start = Instance::acquire(*bare.connection);
  ASSERT_EQ(start.outcome, Instance::Outcome::acquired);
  EXPECT_TRUE(announcements.until([&] { return !announced.empty(); }));
  EXPECT_EQ(announced, (std::vector<std::uint32_t>{bare.connection->atoms()._TILORA_INSTANCE, start.instance->window()}));
}

TEST_F(InstanceTest, ARequestForTheSelectionsValueIsRefused) {
  const auto client = Connection::open(bare.server.display());
  const xcb_window_t requestor = xcb_generate_id(client->xcb());
  xcb_create_window(client->xcb(), 0, requestor, client->root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0,
                    nullptr);
  std::optional<xcb_atom_t> answered;
  EventPump answers{*client, [&](const xcb_generic_event_t& event) {
                      if (typeOf(event) != XCB_SELECTION_NOTIFY) return;
                      answered = reinterpret_cast<const xcb_selection_notify_event_t&>(event).property;
                    }};
  xcb_convert_selection(client->xcb(), requestor, client->atoms()._TILORA_INSTANCE, XCB_ATOM_STRING, XCB_ATOM_STRING, XCB_CURRENT_TIME);
  answers.takeAll();
  pump.takeAll();
  EXPECT_TRUE(answers.until([&] { return answered.has_value(); }));
  EXPECT_EQ(answered, xcb_atom_t{XCB_ATOM_NONE});
}

TEST_F(InstanceTest, EventsOfOthersAreLeftToOthers) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = first.instance->window();
  message.type = XCB_ATOM_STRING;
  EXPECT_FALSE(first.instance->handleEvent(reinterpret_cast<const xcb_generic_event_t&>(message)));
  message.type = bare.connection->atoms()._TILORA_INSTANCE;
  message.window = bare.connection->root();
  EXPECT_FALSE(first.instance->handleEvent(reinterpret_cast<const xcb_generic_event_t&>(message)));
  message.window = first.instance->window();
  EXPECT_TRUE(first.instance->handleEvent(reinterpret_cast<const xcb_generic_event_t&>(message)));
  EXPECT_EQ(shown, 1);
}

TEST_F(InstanceTest, OfTwoCopiesThatStartTogetherOneWins) {
  first.instance.reset();
  pump.takeAll();
  for (int round = 0; round < 30; ++round) {
    std::array<std::unique_ptr<Connection>, 2> connections = {Connection::open(bare.server.display()),
                                                              Connection::open(bare.server.display())};
    std::array<Instance::Start, 2> starts;
    std::thread rival([&] { starts[1] = Instance::acquire(*connections[1]); });
    starts[0] = Instance::acquire(*connections[0]);
    rival.join();
    const bool firstWon = starts[0].outcome == Instance::Outcome::acquired;
    EXPECT_EQ(starts[firstWon ? 0 : 1].outcome, Instance::Outcome::acquired);
    EXPECT_EQ(starts[firstWon ? 1 : 0].outcome, Instance::Outcome::alreadyRunning);
  }
}

TEST_F(InstanceTest, WithoutAServerTheStartFails) {
  const auto connection = Connection::open(bare.server.display());
  bare.server.process().terminate();
  EXPECT_EQ(Instance::acquire(*connection).outcome, Instance::Outcome::failed);
}

}  // namespace
}  // namespace tilora::x11
