// The accessibility interface over the world of the fake system.
#include <ApplicationServices/ApplicationServices.h>

#include <cstring>

#include "fakes/fake_system.h"

namespace tilora::macos::fake {
namespace {

constexpr double none = 0;

/// The attribute of that name; nothing: no element here has one.
std::optional<AttributeName> attributeIn(CFStringRef name) { return attributeNamed(utf8Text(objectAs<CfString>(name).units)); }

AXError copyFromWorld(const CfElement& element, AttributeName name, CFTypeRef* value) {
  const auto known = element.element->value(name);
  if (!known) return kAXErrorNoValue;
  *value = makeValue(*known, element.pid.value_or(0));
  return kAXErrorSuccess;
}

AXError write(AccessibilityElement& element, AttributeName name, CfObject& value) {
  if (const auto* truth = dynamic_cast<const CfBoolean*>(&value)) {
    element.set(name, truth->value);
    return kAXErrorSuccess;
  }
  const auto* boxed = dynamic_cast<const CfGeometry*>(&value);
  if (!boxed) return kAXErrorIllegalArgument;
  const CGPoint numbers = boxed->geometry.origin;
  if (name == AttributeName::position && boxed->kind == kAXValueTypeCGPoint) {
    element.set(name, BoxedValue{Point{numbers.x, numbers.y}, nullptr});
    return kAXErrorSuccess;
  }
  if (name == AttributeName::size && boxed->kind == kAXValueTypeCGSize) {
    element.set(name, BoxedValue{Size{numbers.x, numbers.y}, nullptr});
    return kAXErrorSuccess;
  }
  return kAXErrorIllegalArgument;
}

/// Whether the world lets such a value be boxed.
bool canBox(AXValueType type) {
  auto& accessibility = FakeSystem::current().world().interfaces().accessibility;
  if (type == kAXValueTypeCGPoint) return accessibility.boxed(Point{none, none}).has_value();
  if (type == kAXValueTypeCGSize) return accessibility.boxed(Size{none, none}).has_value();
  return type == kAXValueTypeCGRect;
}

std::size_t bytesOf(AXValueType type) { return type == kAXValueTypeCGRect ? sizeof(CGRect) : sizeof(CGPoint); }

}  // namespace
}  // namespace tilora::macos::fake

using namespace tilora::macos::fake;

extern "C" {

const CFStringRef kAXTrustedCheckOptionPrompt = constantStringForTests("AXTrustedCheckOptionPrompt");

Boolean AXIsProcessTrusted() { return FakeSystem::current().world().trust().isProcessTrusted(); }

Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options) {
  const auto prompt = options ? CFDictionaryGetValue(options, kAXTrustedCheckOptionPrompt) : nullptr;
  return FakeSystem::current().world().trust().isProcessTrusted(prompt && CFBooleanGetValue(static_cast<CFBooleanRef>(prompt)));
}

CFTypeID AXUIElementGetTypeID() { return static_cast<CFTypeID>(CfType::element); }

AXUIElementRef AXUIElementCreateApplication(pid_t pid) {
  auto& accessibility = FakeSystem::current().world().interfaces().accessibility;
  return static_cast<AXUIElementRef>(make<CfElement>(accessibility.applicationElement(pid), pid, true));
}

AXUIElementRef AXUIElementCreateSystemWide() { return static_cast<AXUIElementRef>(make<CfElement>(nullptr, std::nullopt, false)); }

AXError AXUIElementSetMessagingTimeout(AXUIElementRef reference, float seconds) {
  auto& element = objectAs<CfElement>(reference);
  if (seconds < 0) return kAXErrorIllegalArgument;
  if (!element.pid) FakeSystem::current().defaultTimeout = seconds;
  element.timeout = seconds;
  return kAXErrorSuccess;
}

AXError AXUIElementCopyAttributeValue(AXUIElementRef reference, CFStringRef attribute, CFTypeRef* value) {
  auto& system = FakeSystem::current();
  const auto& element = objectAs<CfElement>(reference);
  const auto name = attributeIn(attribute);
  return system.call(element, [&] {
    if (!name) return kAXErrorAttributeUnsupported;
    if (const auto* answer = system.answerTo(*name)) return (*answer)(value);
    return copyFromWorld(element, *name, value);
  });
}

AXError AXUIElementIsAttributeSettable(AXUIElementRef reference, CFStringRef attribute, Boolean* settable) {
  const auto& element = objectAs<CfElement>(reference);
  const auto name = attributeIn(attribute);
  return FakeSystem::current().call(element, [&] {
    const auto answer = name ? element.element->isSettable(*name) : std::nullopt;
    if (!answer) return kAXErrorAttributeUnsupported;
    *settable = *answer;
    return kAXErrorSuccess;
  });
}

AXError AXUIElementSetAttributeValue(AXUIElementRef reference, CFStringRef attribute, CFTypeRef value) {
  const auto& element = objectAs<CfElement>(reference);
  const auto name = attributeIn(attribute);
  auto& written = object(value);
  return FakeSystem::current().call(element, [&] { return name ? write(*element.element, *name, written) : kAXErrorAttributeUnsupported; });
}

CFTypeID AXValueGetTypeID() { return static_cast<CFTypeID>(CfType::geometry); }

AXValueRef AXValueCreate(AXValueType type, const void* value) {
  if (!canBox(type)) return nullptr;
  CGRect geometry{};
  std::memcpy(&geometry, value, bytesOf(type));
  return static_cast<AXValueRef>(make<CfGeometry>(type, geometry));
}

AXValueType AXValueGetType(AXValueRef value) { return objectAs<CfGeometry>(value).kind; }

Boolean AXValueGetValue(AXValueRef value, AXValueType type, void* result) {
  const auto& boxed = objectAs<CfGeometry>(value);
  if (boxed.kind != type) return false;
  std::memcpy(result, &boxed.geometry, bytesOf(type));
  return true;
}

}  // extern "C"
