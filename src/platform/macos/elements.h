// Other programs' windows through the accessibility interface of the system.
#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <memory>

#include "platform/accessibility.h"
#include "platform/macos/call_guard.h"
#include "platform/macos/cf_ref.h"

namespace tilora::macos {

/// The name of an attribute as the system takes it; lives as long as the process.
CFStringRef attributeString(AttributeName name);

/// An AXUIElement. Calls go through the guard; one that fails answers nothing.
class AxElement final : public AccessibilityElement {
 public:
  /// `ref` holds an element of the process `pid`.
  AxElement(CfRef<AXUIElementRef> ref, ProcessId pid, std::shared_ptr<CallGuard> guard)
      : ref_(std::move(ref)), pid_(pid), guard_(std::move(guard)) {}

  std::optional<AttributeValue> value(AttributeName name) const override;
  std::optional<bool> isSettable(AttributeName name) const override;
  /// Takes only values that `AxAccessibility` boxed; others are passed over.
  void set(AttributeName name, const BoxedValue& value) override;
  void set(AttributeName name, bool value) override;
  std::uint64_t hash() const override { return CFHash(ref_.get()); }

 private:
  AttributeValue read(CFTypeRef value) const;
  AttributeValue readElements(CFArrayRef array) const;
  Element elementFrom(AXUIElementRef borrowed) const;
  void write(AttributeName name, CFTypeRef value);

  CfRef<AXUIElementRef> ref_;
  ProcessId pid_;
  std::shared_ptr<CallGuard> guard_;
};

/// Gives every application the messaging time-out.
class AxAccessibility final : public Accessibility {
 public:
  explicit AxAccessibility(CallGuard::Clock now = std::chrono::steady_clock::now);

  Element applicationElement(ProcessId pid) override;
  std::optional<BoxedValue> boxed(Point point) override;
  std::optional<BoxedValue> boxed(Size size) override;

 private:
  std::shared_ptr<CallGuard> guard_;
};

}  // namespace tilora::macos
