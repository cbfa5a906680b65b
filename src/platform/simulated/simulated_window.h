// One window of the simulated desktop.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <variant>

#include "platform/simulated/effects.h"
#include "platform/window_server.h"

namespace tilora::simulated {

/// What the settability query of an attribute answers; `error`: the query fails, and a write stores nothing.
enum class Settability : std::uint8_t { no, yes, error };

/// A value for each attribute, by name.
template <typename Value>
class ByAttribute {
 public:
  Value& operator[](AttributeName name) { return values_[static_cast<std::size_t>(name)]; }
  const Value& operator[](AttributeName name) const { return values_[static_cast<std::size_t>(name)]; }

 private:
  std::array<Value, attributeNameCount> values_{};
};

/// How a window is declared.
struct WindowTraits {
  ByAttribute<std::optional<AttributeValue>> attributes = {};
  ByAttribute<Settability> settable = {};
  std::uint64_t hash = 0;
  /// What the window server tells of it, when it is asked for this window's "AXWindowNumber".
  std::optional<WindowServerEntry> server = {};
  /// Whether it is among its application's "AXWindows".
  bool listed = true;
  /// Its place there; nothing: at the end.
  std::optional<std::size_t> at = {};
};

/// Answers from its attributes and reports each write. Once closed it can neither be read nor written.
class SimulatedWindow final : public AccessibilityElement {
 public:
  using WriteHandler = std::function<void(SimulatedWindow&, AttributeName, const std::variant<bool, Point, Size>&)>;

  SimulatedWindow(WindowId id, ProcessId pid, WindowTraits traits, const WriteHandler& onWrite)
      : id_(id), pid_(pid), traits_(std::move(traits)), onWrite_(onWrite) {}

  std::optional<AttributeValue> value(AttributeName name) const override;
  std::optional<bool> isSettable(AttributeName name) const override;
  void set(AttributeName name, const BoxedValue& value) override;
  void set(AttributeName name, bool value) override;
  std::uint64_t hash() const override { return traits_.hash; }

  WindowId id() const { return id_; }
  ProcessId pid() const { return pid_; }
  const std::optional<WindowServerEntry>& server() const { return traits_.server; }
  bool isListed() const { return traits_.listed; }
  /// The window number that can be read now.
  std::optional<std::int64_t> windowNumber() const;

  void store(AttributeName name, std::optional<AttributeValue> value) { traits_.attributes[name] = std::move(value); }
  void setSettability(AttributeName name, Settability answer) { traits_.settable[name] = answer; }
  void close() { isClosed_ = true; }

 private:
  WindowId id_;
  ProcessId pid_;
  WindowTraits traits_;
  bool isClosed_ = false;
  const WriteHandler& onWrite_;
};

}  // namespace tilora::simulated
