// What Tilora asks of the server: in the steady state one question a pass and nothing else.
#include "desktop_test.h"

namespace tilora::harness {
namespace {

class WireTest : public DesktopTest {};

TEST_P(WireTest, APassInTheSteadyStateMakesOneRoundTripAtMost) {
  WireTap everything(server.display());
  for (int number = 0; number < 10; ++number) open("app " + std::to_string(number));
  startTilora();
  EXPECT_TRUE(isTiled(apps.back().window, Place::full));
  const xcb_window_t resource = tiloraResource();
  const auto passesOf = [](const Traffic& traffic) { return traffic.requests[queryPointer]; };
  const auto after = [&](const Traffic from, int passes) {
    EXPECT_TRUE(everything.waitUntil([&] { return passesOf(everything.of(resource)) >= passesOf(from) + passes; }));
    return everything.of(resource);
  };
  // Tilora looks a last time at each window that it moved; then two passes in a row have nothing else to say.
  Traffic before = everything.of(resource);
  const auto settles = [&] {
    const Traffic now = everything.of(resource);
    if (passesOf(now) < passesOf(before) + 2) return false;
    const bool quiet = now.allRequests() - before.allRequests() == passesOf(now) - passesOf(before);
    before = now;
    return quiet;
  };
  ASSERT_TRUE(everything.waitUntil(settles));
  constexpr int rounds = 8;
  const Traffic later = after(before, rounds);
  EXPECT_LE(later.replies - before.replies, rounds);
  EXPECT_EQ(later.allRequests() - before.allRequests(), rounds);
}

INSTANTIATE_TEST_SUITE_P(On, WireTest, testing::ValuesIn(allWindowManagers), windowManagerOf);

}  // namespace
}  // namespace tilora::harness
