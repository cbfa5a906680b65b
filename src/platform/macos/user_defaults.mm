// The user's settings, through NSUserDefaults.
#include "platform/macos/user_defaults.h"

#import <Foundation/Foundation.h>

#include <algorithm>

#include "platform/macos/ns_strings.h"

namespace tilora::macos {
namespace {

using Moment = std::chrono::system_clock::time_point;
using Seconds = std::chrono::duration<double>;

NSUserDefaults* defaults() { return NSUserDefaults.standardUserDefaults; }

/// The nearest moment that the clock has: a date can be thousands of years away.
Moment momentOf(NSDate* date) {
  const Seconds seconds(date.timeIntervalSince1970);
  if (seconds >= Seconds(Moment::max().time_since_epoch())) return Moment::max();
  if (seconds <= Seconds(Moment::min().time_since_epoch())) return Moment::min();
  return Moment(std::chrono::duration_cast<Moment::duration>(seconds));
}

}  // namespace

bool UserDefaults::contains(std::string_view key) { return [defaults() objectForKey:nsString(key)] != nil; }

bool UserDefaults::boolValue(std::string_view key) { return [defaults() boolForKey:nsString(key)]; }

double UserDefaults::doubleValue(std::string_view key) { return [defaults() doubleForKey:nsString(key)]; }

std::optional<std::string> UserDefaults::data(std::string_view key) {
  NSData* data = [defaults() dataForKey:nsString(key)];
  if (!data) return std::nullopt;
  const auto* bytes = static_cast<const char*>(data.bytes);
  return std::string(bytes, bytes + data.length);
}

std::optional<Moment> UserDefaults::date(std::string_view key) {
  id object = [defaults() objectForKey:nsString(key)];
  if (![object isKindOfClass:[NSDate class]]) return std::nullopt;
  return momentOf(static_cast<NSDate*>(object));
}

void UserDefaults::setBool(std::string_view key, bool value) { [defaults() setBool:value forKey:nsString(key)]; }

void UserDefaults::setDouble(std::string_view key, double value) { [defaults() setDouble:value forKey:nsString(key)]; }

void UserDefaults::setData(std::string_view key, std::string bytes) {
  [defaults() setObject:[NSData dataWithBytes:bytes.data() length:bytes.size()] forKey:nsString(key)];
}

void UserDefaults::setDate(std::string_view key, Moment value) {
  NSDate* date = [NSDate dateWithTimeIntervalSince1970:Seconds(value.time_since_epoch()).count()];
  [defaults() setObject:date forKey:nsString(key)];
}

}  // namespace tilora::macos
