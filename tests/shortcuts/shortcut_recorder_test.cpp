// Recording a new key combination in the settings window.
#include "shortcuts/shortcut_recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/desktops.h"

namespace tilora {
namespace {

using simulated::KeyMonitorInstalled;
using simulated::KeyMonitorRemoved;
using testing::ElementsAre;
using testing::IsEmpty;
using enum ShortcutAction;

constexpr const char* refusal = "Use at least one modifier key and avoid duplicate shortcuts.";
constexpr std::uint32_t keyK = 40;
constexpr std::uint32_t escape = 53;
constexpr std::uint64_t capsLock = 1U << 16;
constexpr std::uint64_t shift = 1U << 17;
constexpr std::uint64_t option = 1U << 19;

/// Holds bindings and notes what is asked of it.
class NotingOwner final : public ShortcutBindingsOwner {
 public:
  bool isBindingInUse(const ShortcutBinding& binding, ShortcutAction excluded) const override {
    return tilora::isBindingInUse(bindings, binding, excluded);
  }
  void setBinding(const ShortcutBinding& binding, ShortcutAction action) override {
    bindings[action] = binding;
    calls.push_back("set " + std::string(id(action)));
  }
  void setShortcutBindings(const ShortcutBindings& all) override {
    bindings = all;
    calls.emplace_back("set all");
  }
  void saveShortcutBindings() override { calls.emplace_back("save"); }
  void registerHotKeys() override { calls.emplace_back("register"); }

  ShortcutBindings bindings;
  std::vector<std::string> calls;
};

class Recorder : public testing::Test {
 protected:
  /// Whether the key is swallowed.
  bool press(std::uint32_t keyCode, std::uint64_t flags) { return desktop_->keyMonitor().press({keyCode, flags}); }
  std::size_t monitors() { return desktop_->keyMonitor().installedMonitors(); }

  std::unique_ptr<simulated::SimulatedDesktop> desktop_ = test::laptop().build();
  NotingOwner owner_;
  ShortcutRecorder recorder_{desktop_->keyMonitor(), owner_};
};

TEST_F(Recorder, IsIdleAtFirst) {
  EXPECT_EQ(recorder_.recordingAction(), std::nullopt);
  EXPECT_EQ(recorder_.shortcutError(), std::nullopt);
  EXPECT_EQ(monitors(), 0);
}

TEST_F(Recorder, AnAcceptedCombinationIsSetSavedAndRegistered) {
  recorder_.toggle(moveRight);
  EXPECT_EQ(recorder_.recordingAction(), moveRight);
  EXPECT_EQ(monitors(), 1);

  EXPECT_TRUE(press(keyK, shift));

  EXPECT_EQ(owner_.bindings.moveRight, (ShortcutBinding{keyK, 0x200}));
  EXPECT_THAT(owner_.calls, ElementsAre("set moveRight", "save", "register"));
  EXPECT_EQ(recorder_.recordingAction(), std::nullopt);
  EXPECT_EQ(recorder_.shortcutError(), std::nullopt);
  EXPECT_EQ(monitors(), 0);
}

TEST_F(Recorder, CapsLockIsNoPartOfACombination) {
  recorder_.toggle(moveRight);
  press(keyK, shift | capsLock);

  EXPECT_EQ(owner_.bindings.moveRight, (ShortcutBinding{keyK, 0x200}));
}

TEST_F(Recorder, ACombinationWithoutModifiersIsRefused) {
  for (const auto flags : {std::uint64_t{0}, capsLock}) {
    recorder_.toggle(moveLeft);

    EXPECT_TRUE(press(keyK, flags));

    EXPECT_EQ(recorder_.shortcutError(), refusal);
    EXPECT_EQ(recorder_.recordingAction(), std::nullopt);
    EXPECT_EQ(monitors(), 0);
  }
  EXPECT_THAT(owner_.calls, IsEmpty());
  EXPECT_EQ(owner_.bindings, ShortcutBindings{});
}

TEST_F(Recorder, ACombinationOfAnotherActionIsRefused) {
  recorder_.toggle(moveRight);

  EXPECT_TRUE(press(owner_.bindings.moveLeft.keyCode, option | shift));

  EXPECT_EQ(recorder_.shortcutError(), refusal);
  EXPECT_THAT(owner_.calls, IsEmpty());
}

TEST_F(Recorder, AnActionsOwnCombinationIsAcceptedAgain) {
  recorder_.toggle(moveLeft);

  EXPECT_TRUE(press(owner_.bindings.moveLeft.keyCode, option | shift));

  EXPECT_EQ(recorder_.shortcutError(), std::nullopt);
  EXPECT_THAT(owner_.calls, ElementsAre("set moveLeft", "save", "register"));
  EXPECT_EQ(owner_.bindings, ShortcutBindings{});
}

TEST_F(Recorder, EscapeCancelsWhateverIsHeldWithIt) {
  for (const auto flags : {std::uint64_t{0}, shift, option | shift}) {
    recorder_.toggle(moveLeft);

    EXPECT_TRUE(press(escape, flags));

    EXPECT_EQ(recorder_.recordingAction(), std::nullopt);
    EXPECT_EQ(monitors(), 0);
  }
  EXPECT_EQ(recorder_.shortcutError(), std::nullopt);
  EXPECT_THAT(owner_.calls, IsEmpty());
}

TEST_F(Recorder, OneKeyEndsTheRecording) {
  recorder_.toggle(moveLeft);
  press(keyK, 0);

  EXPECT_FALSE(press(keyK, shift));
  EXPECT_EQ(owner_.bindings, ShortcutBindings{});
}

TEST_F(Recorder, TheErrorStaysUntilACombinationIsAccepted) {
  recorder_.toggle(moveLeft);
  press(keyK, 0);

  recorder_.toggle(moveLeft);
  EXPECT_EQ(recorder_.shortcutError(), refusal);
  press(escape, 0);
  EXPECT_EQ(recorder_.shortcutError(), refusal);
  recorder_.toggle(moveLeft);
  recorder_.toggle(moveLeft);
  EXPECT_EQ(recorder_.shortcutError(), refusal);
  recorder_.toggle(moveLeft);
  press(keyK, shift);
  EXPECT_EQ(recorder_.shortcutError(), std::nullopt);
}

TEST_F(Recorder, TheButtonOfTheRecordingRowStopsIt) {
  recorder_.toggle(moveLeft);
  recorder_.toggle(moveLeft);

  EXPECT_EQ(recorder_.recordingAction(), std::nullopt);
  EXPECT_THAT(desktop_->takeEffects(), ElementsAre(KeyMonitorInstalled{}, KeyMonitorRemoved{}));
}

TEST_F(Recorder, AnotherRowsButtonRemovesTheFirstMonitorBeforeItInstallsItsOwn) {
  recorder_.toggle(moveLeft);
  recorder_.toggle(moveRight);

  EXPECT_EQ(recorder_.recordingAction(), moveRight);
  EXPECT_THAT(desktop_->takeEffects(), ElementsAre(KeyMonitorInstalled{}, KeyMonitorRemoved{}, KeyMonitorInstalled{}));
  press(keyK, shift);
  EXPECT_EQ(owner_.bindings.moveRight, (ShortcutBinding{keyK, 0x200}));
  EXPECT_EQ(owner_.bindings.moveLeft, ShortcutBindings{}.moveLeft);
}

TEST_F(Recorder, StoppingWhileIdleDoesNothing) {
  recorder_.stopRecording();

  EXPECT_THAT(desktop_->takeEffects(), IsEmpty());
}

TEST_F(Recorder, ResettingBringsTheDefaultsBack) {
  owner_.bindings.moveLeft = {keyK, 0x200};
  recorder_.toggle(moveLeft);
  press(keyK, 0);
  recorder_.toggle(moveRight);

  recorder_.resetToDefaults();

  EXPECT_EQ(owner_.bindings, ShortcutBindings{});
  EXPECT_THAT(owner_.calls, ElementsAre("set all", "save", "register"));
  EXPECT_EQ(recorder_.shortcutError(), std::nullopt);
  EXPECT_EQ(recorder_.recordingAction(), std::nullopt);
  EXPECT_EQ(monitors(), 0);
}

TEST_F(Recorder, NoMonitorOutlivesTheRecorder) {
  {
    ShortcutRecorder other(desktop_->keyMonitor(), owner_);
    other.toggle(moveLeft);
    EXPECT_EQ(monitors(), 1);
  }
  EXPECT_EQ(monitors(), 0);
}

TEST_F(Recorder, ItsObserverIsToldOfEachChange) {
  std::vector<bool> recording;
  recorder_.onChange([&] { recording.push_back(recorder_.recordingAction().has_value()); });

  recorder_.toggle(moveLeft);
  press(escape, 0);
  recorder_.stopRecording();

  EXPECT_THAT(recording, ElementsAre(true, false));
}

/// Installs nothing.
class DeafMonitor final : public KeyMonitor {
 public:
  std::optional<Subscription> install(std::function<bool(const KeyEvent&)>) override { return std::nullopt; }
};

TEST_F(Recorder, RecordsOnThoughNoMonitorCouldBeInstalled) {
  DeafMonitor deaf;
  ShortcutRecorder recorder(deaf, owner_);

  recorder.toggle(moveLeft);
  EXPECT_EQ(recorder.recordingAction(), moveLeft);
  recorder.toggle(moveLeft);
  EXPECT_EQ(recorder.recordingAction(), std::nullopt);
}

}  // namespace
}  // namespace tilora
