// Objects of the fake Foundation, for the fakes alone.
#pragma once

#import <Foundation/Foundation.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/setting_value.h"

namespace tilora::macos::fake {

NSString* stringOf(const std::u16string& text);
/// `utf8` is valid.
NSString* stringOf(const std::string& utf8);
/// Nil for nothing.
NSString* stringOf(const std::optional<std::string>& utf8);
std::string textOf(NSString* string);
NSArray* arrayOf(std::vector<id> objects);
NSDictionary* dictionaryOf(NSString* key, id value);
NSNumber* numberOf(unsigned long long value);
NSError* errorOf(const std::string& description);
NSURL* urlOf(const std::string& text);
std::string textOf(NSURL* url);
/// A text becomes a string, data data, a moment a date, all others a number.
id objectOf(const SettingValue& value);

/// Says that the system keeps this object for good.
template <class Type>
Type* immortal(Type* object);

void markImmortal(id object);

template <class Type>
Type* immortal(Type* object) {
  markImmortal(object);
  return object;
}

/// A new centre; `isOfWorkspace`: the one that tells of applications and spaces, not of screens.
NSNotificationCenter* centerOf(bool isOfWorkspace);

}  // namespace tilora::macos::fake
