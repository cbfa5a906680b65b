// The system that the fake frameworks answer for.
#pragma once

#include <ApplicationServices/ApplicationServices.h>
#include <Carbon/Carbon.h>

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "fakes/app_kit_state.h"
#include "fakes/cf_objects.h"
#include "platform/simulated/simulated_desktop.h"

namespace tilora::macos::fake {

/// One call to RegisterEventHotKey.
struct HotKeyCall {
  OSType signature = 0;
  std::uint32_t id = 0;
  std::uint32_t keyCode = 0;
  std::uint32_t modifiers = 0;
  OptionBits options = 0;

  bool operator==(const HotKeyCall&) const = default;
};

/// Answers the functions of the fake frameworks from a simulated desktop, which also records what is done to it, and from what a test says
/// otherwise. One at a time.
class FakeSystem {
 public:
  /// Puts a value in place of an attribute's; the caller of the copy function owns it.
  using Answer = std::function<AXError(CFTypeRef* value)>;

  /// `world` must outlive the system.
  explicit FakeSystem(simulated::SimulatedDesktop& world);
  FakeSystem(const FakeSystem&) = delete;
  FakeSystem& operator=(const FakeSystem&) = delete;
  ~FakeSystem();

  /// The one that there is; without one, the process ends.
  static FakeSystem& current();
  static bool isThere();

  simulated::SimulatedDesktop& world() { return world_; }

  /// How every element answers for an attribute, in place of the world; an empty answer takes that back.
  void answer(AttributeName name, Answer answer);
  /// Every call to this process runs into its time-out, which passes on `now`.
  void hang(ProcessId pid, bool hangs = true);
  std::chrono::steady_clock::time_point now() const { return now_; }
  void pass(std::chrono::milliseconds duration) { now_ += duration; }
  /// Accessibility calls that reached an application, hung or not, since the last call of this.
  std::size_t takeCalls() { return std::exchange(calls_, 0); }

  // For the fake functions.
  AXError call(const CfElement& element, const std::function<AXError()>& body);
  const Answer* answerTo(AttributeName name) const;

  /// What RegisterEventHotKey answers in place of the world, and whether it makes a reference.
  struct HotKeyAnswer {
    OSStatus status = noErr;
    bool makesReference = true;
  };
  std::optional<HotKeyAnswer> hotKeyAnswer;
  std::vector<HotKeyCall> hotKeyCalls;
  /// What the window list answers in place of the world; the caller owns it.
  std::function<CFArrayRef()> windowList;
  OSStatus handlerInstallation = noErr;
  AppKitState appKit;
  /// The seconds after which a call fails, as set on the system-wide element.
  std::optional<float> defaultTimeout;

 private:
  simulated::SimulatedDesktop& world_;
  std::map<AttributeName, Answer> answers_;
  std::set<ProcessId> hung_;
  std::chrono::steady_clock::time_point now_{};
  std::size_t calls_ = 0;
};

/// Hot-key registrations and installed event handlers that have not been given back.
std::size_t registeredHotKeys();
std::size_t installedHandlers();
/// What the event handler answered last.
std::optional<OSStatus> lastHandlerStatus();
/// Sends the installed handlers a hot-key event. `status` is what reading its parameter gives; without an event they get null.
void sendHotKeyEvent(std::uint32_t id, OSType signature, OSStatus status = noErr, bool withEvent = true);

}  // namespace tilora::macos::fake
