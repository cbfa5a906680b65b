// The objects of the fake Core Foundation: each is counted, and none can be used once it is gone.
#pragma once

#include <ApplicationServices/ApplicationServices.h>
#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/accessibility.h"

namespace tilora::macos::fake {

/// Ends the process with a message: a program did what crashes it on the real system.
[[noreturn]] void crash(const char* why);

enum class CfType : CFTypeID {
  string = 7,
  data = 20,
  dictionary = 18,
  array = 19,
  boolean = 21,
  number = 22,
  element = 300,
  geometry = 301
};

/// One object. It is made with one reference and kept in memory, but unusable, when the last one goes.
class CfObject {
 public:
  explicit CfObject(CfType type) : type_(type) {}
  CfObject(const CfObject&) = delete;
  CfObject& operator=(const CfObject&) = delete;
  virtual ~CfObject() = default;

  CfType type() const { return type_; }
  virtual bool equals(const CfObject& other) const { return this == &other; }
  virtual CFHashCode hash() const;
  /// Gives up what it holds itself.
  virtual void letGo() {}

  long references = 1;
  bool isImmortal = false;

 private:
  CfType type_;
};

class CfString final : public CfObject {
 public:
  explicit CfString(std::u16string text) : CfObject(CfType::string), units(std::move(text)) {}
  bool equals(const CfObject& other) const override;

  const std::u16string units;
};

/// A value of a type that nobody expects.
class CfData final : public CfObject {
 public:
  CfData() : CfObject(CfType::data) {}
};

class CfBoolean final : public CfObject {
 public:
  explicit CfBoolean(bool truth) : CfObject(CfType::boolean), value(truth) { isImmortal = true; }

  const bool value;
};

class CfNumber final : public CfObject {
 public:
  explicit CfNumber(std::variant<std::int64_t, double> number) : CfObject(CfType::number), value(number) {}

  const std::variant<std::int64_t, double> value;
};

/// Owns one reference to each entry.
class CfArray final : public CfObject {
 public:
  explicit CfArray(std::vector<CFTypeRef> owned) : CfObject(CfType::array), entries(std::move(owned)) {}
  void letGo() override;

  const std::vector<CFTypeRef> entries;
};

/// Owns one reference to each key and value.
class CfDictionary final : public CfObject {
 public:
  explicit CfDictionary(std::vector<std::pair<CFTypeRef, CFTypeRef>> owned) : CfObject(CfType::dictionary), entries(std::move(owned)) {}
  void letGo() override;

  const std::vector<std::pair<CFTypeRef, CFTypeRef>> entries;
};

/// A boxed point, size or rectangle; of a point or size the first two numbers count.
class CfGeometry final : public CfObject {
 public:
  CfGeometry(AXValueType geometryType, CGRect numbers) : CfObject(CfType::geometry), kind(geometryType), geometry(numbers) {}

  const AXValueType kind;
  const CGRect geometry;
};

/// An element of the world behind the fakes. The system-wide one has no element there.
class CfElement final : public CfObject {
 public:
  CfElement(Element elementOfWorld, std::optional<ProcessId> owner, bool isOfApplication)
      : CfObject(CfType::element), element(std::move(elementOfWorld)), pid(owner), isApplication(isOfApplication) {}
  bool equals(const CfObject& other) const override;
  CFHashCode hash() const override;
  void letGo() override { element.reset(); }

  Element element;
  const std::optional<ProcessId> pid;
  const bool isApplication;
  /// What AXUIElementSetMessagingTimeout said of this reference, in seconds.
  std::optional<float> timeout;
};

/// Puts an object under the eyes of the counter; the caller owns its one reference.
CFTypeRef add(std::unique_ptr<CfObject> object);

template <class Object, class... Arguments>
CFTypeRef make(Arguments&&... arguments) {
  return add(std::make_unique<Object>(std::forward<Arguments>(arguments)...));
}

/// The object behind a reference. A null, foreign or dead one, or one of another type, crashes.
CfObject& object(CFTypeRef reference);

template <class Object>
Object& objectAs(CFTypeRef reference) {
  auto* typed = dynamic_cast<Object*>(&object(reference));
  if (!typed) crash("an object of another type was passed to a function");
  return *typed;
}

/// Objects made and not yet gone, but for the immortal ones.
long liveObjects();
/// Forgets every object that can go.
void forgetObjects();

std::u16string utf16Text(std::string_view utf8);
std::string utf8Text(const std::u16string& units);
/// A new object of that value. The elements in it belong to the process `pid`.
CFTypeRef makeValue(const AttributeValue& value, ProcessId pid);

}  // namespace tilora::macos::fake
