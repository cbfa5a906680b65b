// Taking key combinations, being called when they are pressed, and giving them back.
#include "shortcuts/global_hot_key_manager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/desktops.h"

namespace tilora {
namespace {

using simulated::HotKeyRegistered;
using simulated::HotKeyUnregistered;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t optionShift = 0xA00;

class HotKeyManager : public testing::Test {
 protected:
  GlobalHotKeyManager::Action note(const std::string& what) {
    return [this, what] { called_.push_back(what); };
  }
  void press(std::uint32_t keyCode) { desktop_->hotKeys().press({keyCode, optionShift}); }

  std::unique_ptr<simulated::SimulatedDesktop> desktop_ = test::laptop().build();
  std::vector<std::string> called_;
};

TEST_F(HotKeyManager, CallsTheActionOfTheCombinationThatIsPressed) {
  GlobalHotKeyManager manager(desktop_->hotKeys());
  EXPECT_TRUE(manager.registerHotKey(1, 33, optionShift, note("left")));
  EXPECT_TRUE(manager.registerHotKey(2, 30, optionShift, note("right")));

  press(30);
  press(33);
  press(49);

  EXPECT_THAT(called_, ElementsAre("right", "left"));
}

TEST_F(HotKeyManager, ACombinationThatCannotBeHadChangesNothing) {
  desktop_->hotKeys().setTaken({30, optionShift}, true);
  GlobalHotKeyManager manager(desktop_->hotKeys());
  EXPECT_TRUE(manager.registerHotKey(1, 33, optionShift, note("left")));

  EXPECT_FALSE(manager.registerHotKey(1, 30, optionShift, note("other")));
  press(33);
  press(30);

  EXPECT_THAT(called_, ElementsAre("left"));
}

TEST_F(HotKeyManager, ALaterActionUnderOneIdReplacesTheEarlier) {
  GlobalHotKeyManager manager(desktop_->hotKeys());
  EXPECT_TRUE(manager.registerHotKey(1, 33, optionShift, note("first")));
  EXPECT_TRUE(manager.registerHotKey(1, 30, optionShift, note("second")));

  press(33);
  press(30);

  EXPECT_THAT(called_, ElementsAre("second", "second"));
}

TEST_F(HotKeyManager, AfterGivingBackNothingIsActive) {
  GlobalHotKeyManager manager(desktop_->hotKeys());
  manager.registerHotKey(1, 33, optionShift, note("left"));
  manager.registerHotKey(2, 30, optionShift, note("right"));
  desktop_->takeEffects();

  manager.unregisterAll();
  manager.unregisterAll();
  press(33);

  EXPECT_THAT(called_, IsEmpty());
  EXPECT_THAT(desktop_->takeEffects(), ElementsAre(HotKeyUnregistered{1}, HotKeyUnregistered{2}));
  EXPECT_TRUE(manager.registerHotKey(1, 33, optionShift, note("again")));
  press(33);
  EXPECT_THAT(called_, ElementsAre("again"));
}

TEST_F(HotKeyManager, AnActionMayRegisterAnew) {
  GlobalHotKeyManager manager(desktop_->hotKeys());
  manager.registerHotKey(1, 33, optionShift, [&] {
    manager.unregisterAll();
    manager.registerHotKey(1, 30, optionShift, note("new"));
    called_.emplace_back("old");
  });

  press(33);
  press(33);
  press(30);

  EXPECT_THAT(called_, ElementsAre("old", "new"));
}

TEST_F(HotKeyManager, ItsEndGivesBackEverything) {
  {
    GlobalHotKeyManager manager(desktop_->hotKeys());
    manager.registerHotKey(1, 33, optionShift, note("left"));
    manager.registerHotKey(2, 30, optionShift, note("right"));
  }
  press(33);

  EXPECT_THAT(called_, IsEmpty());
  EXPECT_THAT(desktop_->takeEffects(), ElementsAre(HotKeyRegistered{1, 33, optionShift, true}, HotKeyRegistered{2, 30, optionShift, true},
                                                   HotKeyUnregistered{1}, HotKeyUnregistered{2}));
}

/// Hands its handler to the test, which calls it as the event system would.
class ScriptedHotKeys final : public HotKeys {
 public:
  explicit ScriptedHotKeys(bool canInstall) : canInstall_(canInstall) {}

  std::optional<Subscription> installHandler(std::function<void(std::uint32_t)> installed) override {
    handler = std::move(installed);
    if (!canInstall_) return std::nullopt;
    return Subscription([this] { log.emplace_back("remove handler"); });
  }
  std::optional<HotKeyReference> registerHotKey(std::uint32_t id, std::uint32_t, std::uint32_t) override { return HotKeyReference{id}; }
  void unregisterHotKey(HotKeyReference reference) override { log.push_back("unregister " + std::to_string(static_cast<int>(reference))); }

  std::function<void(std::uint32_t)> handler;
  std::vector<std::string> log;

 private:
  bool canInstall_;
};

TEST_F(HotKeyManager, APressWithoutAnActionIsIgnored) {
  ScriptedHotKeys hotKeys(true);
  GlobalHotKeyManager manager(hotKeys);
  manager.registerHotKey(1, 33, optionShift, note("left"));

  hotKeys.handler(2);
  hotKeys.handler(1);
  manager.unregisterAll();
  hotKeys.handler(1);

  EXPECT_THAT(called_, ElementsAre("left"));
}

TEST_F(HotKeyManager, TheHandlerGoesAfterTheCombinations) {
  ScriptedHotKeys hotKeys(true);
  {
    GlobalHotKeyManager manager(hotKeys);
    manager.registerHotKey(1, 33, optionShift, note("left"));
    manager.registerHotKey(2, 30, optionShift, note("right"));
  }

  EXPECT_THAT(hotKeys.log, ElementsAre("unregister 1", "unregister 2", "remove handler"));
}

TEST_F(HotKeyManager, AHandlerThatCouldNotBeInstalledIsNotRemoved) {
  ScriptedHotKeys hotKeys(false);
  {
    GlobalHotKeyManager manager(hotKeys);
    EXPECT_TRUE(manager.registerHotKey(1, 33, optionShift, note("left")));
  }

  EXPECT_THAT(hotKeys.log, ElementsAre("unregister 1"));
}

}  // namespace
}  // namespace tilora
