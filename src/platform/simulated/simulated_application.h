// One application of the simulated desktop, and its element.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/simulated/element_order.h"
#include "platform/simulated/simulated_window.h"
#include "platform/workspace.h"

namespace tilora::simulated {

/// How an application is declared.
struct ApplicationTraits {
  std::optional<std::string> bundle = {};
  std::optional<std::string> name = {};
  ActivationPolicy policy = ActivationPolicy::regular;
  bool hidden = false;
};

/// An application with the windows it lists. `hide` and `unhide` take effect at once.
class SimulatedApplication final : public RunningApplication {
 public:
  SimulatedApplication(ProcessId pid, ApplicationTraits traits, const EffectObserver& report)
      : pid_(pid), traits_(std::move(traits)), report_(report) {}

  ProcessId processIdentifier() const override { return pid_; }
  std::optional<std::string> bundleIdentifier() const override { return traits_.bundle; }
  std::optional<std::string> localizedName() const override { return traits_.name; }
  ActivationPolicy activationPolicy() const override { return traits_.policy; }
  bool isTerminated() const override { return isTerminated_; }
  bool isHidden() const override { return traits_.hidden; }
  void hide() override;
  void unhide() override;

  void setHidden(bool hidden) { traits_.hidden = hidden; }
  void terminate() { isTerminated_ = true; }

  /// The windows under "AXWindows", in their order.
  ElementOrder windows;
  bool windowsUnreadable = false;
  /// The element under "AXFocusedWindow"; null: none.
  std::shared_ptr<SimulatedWindow> focusedWindow;

 private:
  ProcessId pid_;
  ApplicationTraits traits_;
  bool isTerminated_ = false;
  const EffectObserver& report_;
};

/// The element of a process. It reads nothing when there is no such application.
class ApplicationElement final : public AccessibilityElement {
 public:
  /// `application` is null for a process that is gone.
  explicit ApplicationElement(ProcessId pid, std::shared_ptr<const SimulatedApplication> application)
      : pid_(pid), application_(std::move(application)) {}

  std::optional<AttributeValue> value(AttributeName name) const override;
  std::optional<bool> isSettable(AttributeName) const override { return std::nullopt; }
  void set(AttributeName, const BoxedValue&) override {}
  void set(AttributeName, bool) override {}
  std::uint64_t hash() const override { return static_cast<std::uint32_t>(pid_); }

 private:
  ProcessId pid_;
  std::shared_ptr<const SimulatedApplication> application_;
};

}  // namespace tilora::simulated
