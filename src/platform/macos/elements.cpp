// Reading and writing the attributes of AXUIElements.
#include "platform/macos/elements.h"

#include <array>
#include <utility>

#include "platform/macos/cf_values.h"

namespace tilora::macos {
namespace {

std::optional<CGPoint> pointIn(AXValueRef value) {
  CGPoint point{};
  if (!AXValueGetValue(value, kAXValueTypeCGPoint, &point)) return std::nullopt;
  return point;
}

std::optional<CGSize> sizeIn(AXValueRef value) {
  CGSize size{};
  if (!AXValueGetValue(value, kAXValueTypeCGSize, &size)) return std::nullopt;
  return size;
}

AttributeValue readGeometry(AXValueRef value) {
  const AXValueType type = AXValueGetType(value);
  if (type == kAXValueTypeCGPoint) {
    if (const auto point = pointIn(value)) return Point{point->x, point->y};
  }
  if (type == kAXValueTypeCGSize) {
    if (const auto size = sizeIn(value)) return Size{size->width, size->height};
  }
  return ForeignValue{};
}

bool isElement(CFTypeRef object) { return object && CFGetTypeID(object) == AXUIElementGetTypeID(); }

std::optional<BoxedValue> boxedAs(AXValueType type, const void* geometry, std::variant<Point, Size> value) {
  auto native = CfRef<AXValueRef>::adopt(AXValueCreate(type, geometry));
  if (!native) return std::nullopt;
  return BoxedValue{value, std::move(native).share()};
}

}  // namespace

CFStringRef attributeString(AttributeName name) {
  static const std::array<CFStringRef, attributeNameCount> strings = {
      CFSTR("AXFocusedWindow"), CFSTR("AXWindows"),      CFSTR("AXRole"),   CFSTR("AXSubrole"),
      CFSTR("AXMinimized"),     CFSTR("AXPosition"),     CFSTR("AXSize"),   CFSTR("AXTitle"),
      CFSTR("AXIdentifier"),    CFSTR("AXWindowNumber"), CFSTR("AXHidden"),
  };
  return strings[static_cast<std::size_t>(name)];
}

std::optional<AttributeValue> AxElement::value(AttributeName name) const {
  CFTypeRef copied = nullptr;
  const AXError error = guard_->call(pid_, [&] { return AXUIElementCopyAttributeValue(ref_.get(), attributeString(name), &copied); });
  const auto value = CfRef<CFTypeRef>::adopt(copied);
  if (error != kAXErrorSuccess || !value) return std::nullopt;
  return read(value.get());
}

AttributeValue AxElement::read(CFTypeRef value) const {
  if (const auto string = asString(value)) return utf8Text(string);
  if (const auto boolean = asBoolean(value)) return CFBooleanGetValue(boolean) != 0;
  if (const auto number = asNumber(value)) return numberOf(number);
  if (CFGetTypeID(value) == AXValueGetTypeID()) return readGeometry(static_cast<AXValueRef>(value));
  if (isElement(value)) return elementFrom(static_cast<AXUIElementRef>(value));
  if (const auto array = asArray(value)) return readElements(array);
  return ForeignValue{};
}

AttributeValue AxElement::readElements(CFArrayRef array) const {
  const CFIndex count = CFArrayGetCount(array);
  std::vector<Element> elements;
  elements.reserve(static_cast<std::size_t>(count));
  for (CFIndex index = 0; index < count; ++index) {
    const CFTypeRef entry = CFArrayGetValueAtIndex(array, index);
    if (!isElement(entry)) return ForeignValue{};
    elements.push_back(elementFrom(static_cast<AXUIElementRef>(entry)));
  }
  return elements;
}

Element AxElement::elementFrom(AXUIElementRef borrowed) const {
  return std::make_shared<AxElement>(CfRef<AXUIElementRef>::retain(borrowed), pid_, guard_);
}

std::optional<bool> AxElement::isSettable(AttributeName name) const {
  Boolean settable = 0;
  const AXError error = guard_->call(pid_, [&] { return AXUIElementIsAttributeSettable(ref_.get(), attributeString(name), &settable); });
  if (error != kAXErrorSuccess) return std::nullopt;
  return settable != 0;
}

void AxElement::set(AttributeName name, const BoxedValue& value) {
  if (value.native) write(name, value.native.get());
}

void AxElement::set(AttributeName name, bool value) { write(name, value ? kCFBooleanTrue : kCFBooleanFalse); }

void AxElement::write(AttributeName name, CFTypeRef value) {
  // What becomes of it nobody is told: the next pass reads and writes again.
  guard_->call(pid_, [&] { return AXUIElementSetAttributeValue(ref_.get(), attributeString(name), value); });
}

AxAccessibility::AxAccessibility(CallGuard::Clock now) : guard_(std::make_shared<CallGuard>(std::move(now))) {
  // On the system-wide element it is the default of this process, for elements that do not inherit the value of their application.
  const auto systemWide = CfRef<AXUIElementRef>::adopt(AXUIElementCreateSystemWide());
  AXUIElementSetMessagingTimeout(systemWide.get(), messagingTimeout);
}

Element AxAccessibility::applicationElement(ProcessId pid) {
  auto application = CfRef<AXUIElementRef>::adopt(AXUIElementCreateApplication(pid));
  AXUIElementSetMessagingTimeout(application.get(), messagingTimeout);
  return std::make_shared<AxElement>(std::move(application), pid, guard_);
}

std::optional<BoxedValue> AxAccessibility::boxed(Point point) {
  const CGPoint geometry{point.x, point.y};
  return boxedAs(kAXValueTypeCGPoint, &geometry, point);
}

std::optional<BoxedValue> AxAccessibility::boxed(Size size) {
  const CGSize geometry{size.width, size.height};
  return boxedAs(kAXValueTypeCGSize, &geometry, size);
}

}  // namespace tilora::macos
