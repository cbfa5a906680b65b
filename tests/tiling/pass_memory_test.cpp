// A pass leaves no memory behind: however many passes are made, the engine holds what it held.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <new>
#include <string>
#include <utility>

#include "support/desktops.h"
#include "tiling/retile.h"

namespace {

std::size_t liveBlocks = 0;
std::size_t allocations = 0;

void* allocate(std::size_t size) {
  ++liveBlocks;
  ++allocations;
  void* const block = std::malloc(size == 0 ? 1 : size);
  if (block == nullptr) std::abort();
  return block;
}

void release(void* block) {
  if (block == nullptr) return;
  --liveBlocks;
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) { return allocate(size); }
void operator delete(void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }

namespace tilora {
namespace {

constexpr ProcessId applications = 40;
constexpr simulated::WindowId windowsEach = 5;

std::unique_ptr<simulated::SimulatedDesktop> crowd() {
  auto builder = test::twoScreens();
  for (ProcessId pid = 1; pid <= applications; ++pid) {
    builder.app(100 + pid, "com.example.application" + std::to_string(pid));
    for (simulated::WindowId i = 0; i < windowsEach; ++i) {
      const auto id = static_cast<simulated::WindowId>(pid) * windowsEach + i;
      builder.window(id, {.title = "A document with a long title, number " + std::to_string(id), .frame = {100.0 * pid, 60, 400, 300}});
    }
  }
  return builder.front(101, windowsEach).build();
}

TEST(PassMemory, StaysTheSameFromPassToPass) {
  const auto desktop = crowd();
  desktop->observeEffects([](const simulated::Effect&) {});
  PlacementMemory memory;
  memory.setAppPlacementPreferences({{"com.example.application1", WindowPlacement::left},
                                     {"com.example.application2", WindowPlacement::right},
                                     {"com.example.application3||title:another title", WindowPlacement::left}});
  const auto pass = [&] {
    const std::size_t before = allocations;
    retile(desktop->interfaces(), memory, test::gap);
    return allocations - before;
  };
  pass();
  pass();
  const std::size_t held = liveBlocks;
  const std::size_t allocated = pass();

  for (int i = 0; i < 100; ++i) EXPECT_EQ(pass(), allocated);
  EXPECT_EQ(liveBlocks, held);
}

/// What one pass allocates with `others` choices stored for other applications and `own` for other windows of one that runs.
std::size_t allocationsOfAPass(int others, int own) {
  const auto desktop = crowd();
  desktop->observeEffects([](const simulated::Effect&) {});
  PlacementPreferences preferences;
  for (int i = 0; i < others; ++i) preferences.emplace("com.example.other" + std::to_string(i) + "||title:a", WindowPlacement::left);
  for (int i = 0; i < own; ++i) preferences.emplace("com.example.application1||title:" + std::to_string(i), WindowPlacement::right);
  PlacementMemory memory;
  memory.setAppPlacementPreferences(std::move(preferences));
  retile(desktop->interfaces(), memory, test::gap);
  const std::size_t before = allocations;
  retile(desktop->interfaces(), memory, test::gap);
  return allocations - before;
}

TEST(PassMemory, IsTheSameHoweverManyChoicesAreStored) {
  const std::size_t withFew = allocationsOfAPass(1, 1);

  EXPECT_EQ(allocationsOfAPass(10'000, 1), withFew);
  EXPECT_EQ(allocationsOfAPass(1, 10'000), withFew);
}

TEST(PassMemory, IsGivenBackWithTheWindows) {
  const auto desktop = crowd();
  desktop->observeEffects([](const simulated::Effect&) {});
  PlacementMemory memory;
  memory.setAppPlacementPreferences({{"com.example.application1", WindowPlacement::left}});
  const auto heldByMemory = [&] {
    const std::size_t before = liveBlocks;
    retile(desktop->interfaces(), memory, test::gap);
    return static_cast<std::int64_t>(liveBlocks) - static_cast<std::int64_t>(before);
  };
  const auto gained = heldByMemory();
  for (ProcessId pid = 1; pid <= applications; ++pid) desktop->quit(100 + pid);
  const auto lost = heldByMemory();

  EXPECT_GT(gained, 0);
  EXPECT_LE(gained + lost, 4);  // empty tables keep their slots
  EXPECT_TRUE(memory.windowPlacements().empty());
  EXPECT_TRUE(memory.visibleWindowKeysByScreen().empty());
}

}  // namespace
}  // namespace tilora
