// The windows and applications of the desktop as accessibility elements.
#pragma once

#include <memory>

#include "platform/accessibility.h"
#include "platform/x11/desktop_state.h"

namespace tilora::x11 {

/// One window, which owns it. Reads answer the requested state, writes of this turn included; writes wait for the end of the turn.
class WindowElement : public AccessibilityElement {
 public:
  /// The state must outlive it.
  WindowElement(ClientWindow& window, DesktopState& state) : window_(window), state_(state) {}

  std::optional<AttributeValue> value(AttributeName name) const override;
  std::optional<bool> isSettable(AttributeName name) const override;
  void set(AttributeName name, const BoxedValue& value) override;
  void set(AttributeName name, bool value) override;
  /// The window's XID.
  std::uint64_t hash() const override { return window_.id; }

 private:
  bool canBeMoved() const;
  bool canBeResized() const;

  ClientWindow& window_;
  DesktopState& state_;
};

/// One application: its windows and the focused one among them.
class ApplicationElement : public AccessibilityElement {
 public:
  ApplicationElement(ProcessId pid, DesktopState& state) : pid_(pid), state_(state) {}

  std::optional<AttributeValue> value(AttributeName name) const override;
  std::optional<bool> isSettable(AttributeName name) const override;
  void set(AttributeName, const BoxedValue&) override {}
  void set(AttributeName, bool) override {}
  /// The process id.
  std::uint64_t hash() const override { return static_cast<std::uint64_t>(pid_); }

 private:
  ProcessId pid_;
  DesktopState& state_;
};

class X11Accessibility : public Accessibility {
 public:
  /// The state must outlive it and all elements.
  explicit X11Accessibility(DesktopState& state) : state_(state) {}

  Element applicationElement(ProcessId pid) override;
  std::optional<BoxedValue> boxed(Point point) override { return BoxedValue{point, nullptr}; }
  std::optional<BoxedValue> boxed(Size size) override { return BoxedValue{size, nullptr}; }

 private:
  DesktopState& state_;
};

}  // namespace tilora::x11
