// Other programs' windows as accessibility elements: reading and writing their attributes.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/geometry.h"

namespace tilora {

/// A process id of the platform.
using ProcessId = std::int32_t;

/// The attributes that the program reads or writes, in the vocabulary of the macOS accessibility interface (AXAttributeConstants.h).
enum class AttributeName : std::uint8_t {
  focusedWindow,
  windows,
  role,
  subrole,
  minimized,
  position,
  size,
  title,
  identifier,
  windowNumber,
  hidden,
};

inline constexpr std::size_t attributeNameCount = 11;

/// The exact name of an attribute, "AXRole" for instance.
std::string_view text(AttributeName name);

/// The attribute of that exact name, or nothing.
std::optional<AttributeName> attributeNamed(std::string_view text);

class AccessibilityElement;

/// A shared reference to an element. Never null where an element is said to be there.
using Element = std::shared_ptr<AccessibilityElement>;

/// A number object. It answers as a whole number and as a truth value, whatever it was made from.
class Number {
 public:
  explicit Number(std::int64_t value) : value_(value) {}
  explicit Number(double value) : value_(value) {}

  /// True unless it is 0.
  bool toBool() const;
  /// Truncated toward zero; a value outside the range is the nearest bound, not-a-number is 0.
  std::int64_t toInteger() const;
  /// What it was made from.
  const std::variant<std::int64_t, double>& stored() const { return value_; }

  bool operator==(const Number&) const = default;

 private:
  std::variant<std::int64_t, double> value_;
};

/// A value of a type that no reader here accepts.
struct ForeignValue {
  bool operator==(const ForeignValue&) const = default;
};

/// What reading an attribute gave. Points have a top-left origin with y downwards, in points; text is valid UTF-8.
using AttributeValue = std::variant<ForeignValue, bool, Number, std::string, Point, Size, Element, std::vector<Element>>;

/// A point or size in the form in which the desktop takes it. `native` is the desktop's own box, if it has one.
struct BoxedValue {
  std::variant<Point, Size> value;
  std::shared_ptr<const void> native;
};

/// One window or application of another program. Every call may find it gone: reads then answer nothing and writes do nothing.
class AccessibilityElement {
 public:
  virtual ~AccessibilityElement() = default;

  /// The attribute's value, or nothing when it cannot be read (AXUIElementCopyAttributeValue).
  virtual std::optional<AttributeValue> value(AttributeName name) const = 0;
  /// Whether the attribute can be written; nothing when the query fails (AXUIElementIsAttributeSettable).
  virtual std::optional<bool> isSettable(AttributeName name) const = 0;
  /// Writes the attribute; what becomes of it is not reported (AXUIElementSetAttributeValue). Points have a top-left origin.
  virtual void set(AttributeName name, const BoxedValue& value) = 0;
  virtual void set(AttributeName name, bool value) = 0;
  /// The same for every reference to one element while it lives (CFHash).
  virtual std::uint64_t hash() const = 0;
};

class Accessibility {
 public:
  virtual ~Accessibility() = default;

  /// The element of a process; never null, also for a process that is gone.
  virtual Element applicationElement(ProcessId pid) = 0;
  /// The value in the form in which `AccessibilityElement::set` takes it; nothing when it cannot be made (AXValueCreate).
  virtual std::optional<BoxedValue> boxed(Point point) = 0;
  virtual std::optional<BoxedValue> boxed(Size size) = 0;
};

}  // namespace tilora
