// A Core Foundation in memory.
#include <CoreFoundation/CoreFoundation.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <unordered_map>

#include "fakes/cf_objects.h"

namespace tilora::macos::fake {
namespace {

using Objects = std::unordered_map<CFTypeRef, std::unique_ptr<CfObject>>;

Objects& objects() {
  static Objects all;
  return all;
}

CfBoolean& truth(bool value) {
  static auto& yes = objectAs<CfBoolean>(make<CfBoolean>(true));
  static auto& no = objectAs<CfBoolean>(make<CfBoolean>(false));
  return value ? yes : no;
}

bool isGone(const CfObject& object) { return object.references == 0 && !object.isImmortal; }

struct ValueMaker {
  ProcessId pid;

  CFTypeRef operator()(const ForeignValue&) const { return make<CfData>(); }
  CFTypeRef operator()(bool value) const { return static_cast<const void*>(&truth(value)); }
  CFTypeRef operator()(const Number& value) const { return make<CfNumber>(value.stored()); }
  CFTypeRef operator()(const std::string& value) const { return make<CfString>(utf16Text(value)); }
  CFTypeRef operator()(const Point& value) const { return make<CfGeometry>(kAXValueTypeCGPoint, CGRect{{value.x, value.y}, {}}); }
  CFTypeRef operator()(const Size& value) const { return make<CfGeometry>(kAXValueTypeCGSize, CGRect{{value.width, value.height}, {}}); }
  CFTypeRef operator()(const Element& value) const { return make<CfElement>(value, pid, false); }
  CFTypeRef operator()(const std::vector<Element>& value) const {
    std::vector<CFTypeRef> entries;
    entries.reserve(value.size());
    for (const auto& element : value) entries.push_back((*this)(element));
    return make<CfArray>(std::move(entries));
  }
};

std::int64_t wholeNumber(const CfNumber& number) {
  return std::visit([](auto value) { return Number(value).toInteger(); }, number.value);
}

double realNumber(const CfNumber& number) {
  return std::visit([](auto value) { return static_cast<double>(value); }, number.value);
}

}  // namespace

void crash(const char* why) {
  std::fprintf(stderr, "fake system: %s\n", why);
  std::abort();
}

CFHashCode CfObject::hash() const { return std::hash<const void*>{}(this); }

bool CfString::equals(const CfObject& other) const {
  const auto* string = dynamic_cast<const CfString*>(&other);
  return string && string->units == units;
}

void CfArray::letGo() {
  for (const auto entry : entries) CFRelease(entry);
}

void CfDictionary::letGo() {
  for (const auto& [key, value] : entries) {
    CFRelease(key);
    CFRelease(value);
  }
}

bool CfElement::equals(const CfObject& other) const {
  const auto* same = dynamic_cast<const CfElement*>(&other);
  if (!same || same->isApplication != isApplication || same->pid != pid) return false;
  return isApplication || same->element == element;
}

CFHashCode CfElement::hash() const { return element ? element->hash() : 0; }

CFTypeRef add(std::unique_ptr<CfObject> object) {
  const CFTypeRef reference = object.get();
  objects().emplace(reference, std::move(object));
  return reference;
}

CfObject& object(CFTypeRef reference) {
  if (!reference) crash("null was passed to a function that takes an object");
  const auto found = objects().find(reference);
  if (found == objects().end()) crash("something that is no object was passed to a function");
  if (isGone(*found->second)) crash("an object was used after its last reference was released");
  return *found->second;
}

long liveObjects() {
  return std::count_if(objects().begin(), objects().end(),
                       [](const auto& entry) { return !entry.second->isImmortal && !isGone(*entry.second); });
}

void forgetObjects() {
  std::erase_if(objects(), [](const auto& entry) { return !entry.second->isImmortal; });
}

std::u16string utf16Text(std::string_view utf8) {
  const auto text = icu::UnicodeString::fromUTF8({utf8.data(), static_cast<std::int32_t>(utf8.size())});
  return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

std::string utf8Text(const std::u16string& units) {
  std::string text;
  icu::UnicodeString(units.data(), static_cast<std::int32_t>(units.size())).toUTF8String(text);
  return text;
}

CFTypeRef makeValue(const AttributeValue& value, ProcessId pid) { return std::visit(ValueMaker{pid}, value); }

}  // namespace tilora::macos::fake

using namespace tilora::macos::fake;

struct CFDictionaryKeyCallBacks {};
struct CFDictionaryValueCallBacks {};

extern "C" {

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFBooleanRef kCFBooleanTrue = static_cast<CFBooleanRef>(makeValue(true, 0));
const CFBooleanRef kCFBooleanFalse = static_cast<CFBooleanRef>(makeValue(false, 0));
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks{};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks{};

CFStringRef constantStringForTests(const char* text) {
  static std::map<std::string, CFTypeRef> strings;
  auto& string = strings[text];
  if (!string) {
    string = make<CfString>(utf16Text(text));
    object(string).isImmortal = true;
  }
  return static_cast<CFStringRef>(string);
}

CFTypeRef CFRetain(CFTypeRef reference) {
  ++object(reference).references;
  return reference;
}

void CFRelease(CFTypeRef reference) {
  auto& released = object(reference);
  if (released.isImmortal) return;
  if (--released.references == 0) released.letGo();
}

CFTypeID CFGetTypeID(CFTypeRef reference) { return static_cast<CFTypeID>(object(reference).type()); }
Boolean CFEqual(CFTypeRef one, CFTypeRef other) { return object(one).equals(object(other)); }
CFHashCode CFHash(CFTypeRef reference) { return object(reference).hash(); }

CFTypeID CFStringGetTypeID() { return static_cast<CFTypeID>(CfType::string); }
CFTypeID CFBooleanGetTypeID() { return static_cast<CFTypeID>(CfType::boolean); }
CFTypeID CFNumberGetTypeID() { return static_cast<CFTypeID>(CfType::number); }
CFTypeID CFArrayGetTypeID() { return static_cast<CFTypeID>(CfType::array); }
CFTypeID CFDictionaryGetTypeID() { return static_cast<CFTypeID>(CfType::dictionary); }

CFIndex CFStringGetLength(CFStringRef string) { return static_cast<CFIndex>(objectAs<CfString>(string).units.size()); }

void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer) {
  const auto& units = objectAs<CfString>(string).units;
  if (range.location < 0 || range.length < 0 || static_cast<std::size_t>(range.location + range.length) > units.size()) {
    crash("a range beyond the end of a string");
  }
  std::copy_n(units.begin() + range.location, range.length, buffer);
}

Boolean CFBooleanGetValue(CFBooleanRef boolean) { return objectAs<CfBoolean>(boolean).value; }

Boolean CFNumberIsFloatType(CFNumberRef number) { return std::holds_alternative<double>(objectAs<CfNumber>(number).value); }

Boolean CFNumberGetValue(CFNumberRef reference, CFNumberType type, void* value) {
  const auto& number = objectAs<CfNumber>(reference);
  if (type == kCFNumberSInt64Type) {
    const auto whole = wholeNumber(number);
    std::memcpy(value, &whole, sizeof(whole));
    return static_cast<double>(whole) == realNumber(number);
  }
  if (type == kCFNumberSInt32Type) {
    const auto whole = static_cast<std::int32_t>(wholeNumber(number));
    std::memcpy(value, &whole, sizeof(whole));
    return whole == wholeNumber(number);
  }
  if (type == kCFNumberFloat64Type || type == kCFNumberDoubleType) {
    const auto real = realNumber(number);
    std::memcpy(value, &real, sizeof(real));
    return true;
  }
  crash("a number was asked for as a type that the fake does not know");
}

CFIndex CFArrayGetCount(CFArrayRef array) { return static_cast<CFIndex>(objectAs<CfArray>(array).entries.size()); }

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
  const auto& entries = objectAs<CfArray>(array).entries;
  if (index < 0 || static_cast<std::size_t>(index) >= entries.size()) crash("an index beyond the end of an array");
  return entries[static_cast<std::size_t>(index)];
}

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef /*allocator*/, const void** keys, const void** values, CFIndex count,
                                   const CFDictionaryKeyCallBacks* keyCallBacks, const CFDictionaryValueCallBacks* valueCallBacks) {
  if (keyCallBacks != &kCFTypeDictionaryKeyCallBacks || valueCallBacks != &kCFTypeDictionaryValueCallBacks) {
    crash("a dictionary that does not retain what it holds");
  }
  std::vector<std::pair<CFTypeRef, CFTypeRef>> entries;
  for (CFIndex index = 0; index < count; ++index) entries.emplace_back(CFRetain(keys[index]), CFRetain(values[index]));
  return static_cast<CFDictionaryRef>(make<CfDictionary>(std::move(entries)));
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
  for (const auto& [ownKey, value] : objectAs<CfDictionary>(dictionary).entries) {
    if (CFEqual(ownKey, key)) return value;
  }
  return nullptr;
}

}  // extern "C"
