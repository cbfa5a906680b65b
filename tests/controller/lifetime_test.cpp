// Callbacks end with the object they speak for.
#include "controller/lifetime.h"

#include <gtest/gtest.h>

#include <functional>

namespace tilora {
namespace {

TEST(Lifetime, CallbacksWorkWhileItLasts) {
  int calls = 0;
  const Lifetime lifetime;

  lifetime.whileAlive([&] { ++calls; })();

  EXPECT_EQ(calls, 1);
}

TEST(Lifetime, CallbacksDoNothingAfterItsEnd) {
  int calls = 0;
  std::function<void()> ended;
  std::function<void()> orphaned;
  Lifetime lifetime;
  ended = lifetime.whileAlive([&] { ++calls; });
  {
    const Lifetime shorter;
    orphaned = shorter.whileAlive([&] { ++calls; });
  }

  lifetime.end();
  ended();
  orphaned();

  EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace tilora
