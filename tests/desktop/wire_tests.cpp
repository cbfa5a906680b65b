// What Tilora asks of the server: in the steady state one question a pass and nothing else.
#include <map>

#include "desktop_test.h"

namespace tilora::harness {
namespace {

/// How many requests of each major opcode were made between two counts.
std::map<int, int> requestsBetween(const Traffic& before, const Traffic& later) {
  std::map<int, int> counts;
  for (std::size_t opcode = 0; opcode < before.requests.size(); ++opcode) {
    const int made = later.requests.at(opcode) - before.requests.at(opcode);
    if (made != 0) counts[static_cast<int>(opcode)] = made;
  }
  return counts;
}

class WireTest : public DesktopTest {};

TEST_P(WireTest, APassInTheSteadyStateMakesOneRoundTripAtMost) {
  WireTap everything(server.display());
  for (int number = 0; number < 10; ++number) open("app " + std::to_string(number));
  startTilora();
  EXPECT_TRUE(isTiled(apps.back().window, Place::full));
  const xcb_window_t resource = tiloraResource();
  const auto passesOf = [](const Traffic& traffic) { return traffic.requests[queryPointer]; };
  // A while after its last request Tilora looks once more at what came of it; that is over when so many passes in a row say nothing else.
  constexpr int rounds = 16;
  Traffic before = everything.of(resource);
  std::map<int, int> requests;
  const auto isSteady = [&] {
    const Traffic now = everything.of(resource);
    requests = requestsBetween(before, now);
    if (requests.size() > 1) before = now;
    return passesOf(now) >= passesOf(before) + rounds;
  };
  EXPECT_TRUE(everything.waitUntil(isSteady, 2 * defaultDeadline)) << testing::PrintToString(requests);
  const Traffic& later = everything.of(resource);
  // The reply to the last pass before may have come after it.
  EXPECT_LE(later.replies - before.replies, passesOf(later) - passesOf(before) + 1);
}

INSTANTIATE_TEST_SUITE_P(On, WireTest, testing::ValuesIn(allWindowManagers), windowManagerOf);

}  // namespace
}  // namespace tilora::harness
