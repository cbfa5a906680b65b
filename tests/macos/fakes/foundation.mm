// A Foundation in memory: values, and the user's defaults over the settings of the fake system's world.
#import <Foundation/Foundation.h>

#include <algorithm>

#include "fakes/app_kit_state.h"
#include "fakes/fake_system.h"
#include "fakes/foundation_objects.h"

using namespace tilora;
using namespace tilora::macos::fake;

extern "C" {
void* objc_autoreleasePoolPush();
void objc_autoreleasePoolPop(void* mark);
}

@implementation NSString

- (instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)length encoding:(NSStringEncoding)encoding {
  if (encoding != NSUTF8StringEncoding) crash("bytes were read in an encoding that the fake does not know");
  const std::string utf8(static_cast<const char*>(bytes), length);
  const std::u16string units = utf16Text(utf8);
  // What is not UTF-8 shows as the replacement character.
  if (utf8Text(units) != utf8) return nil;
  return stringOf(units);
}

- (NSUInteger)length {
  crash("a string without characters");
}

- (void)getCharacters:(unichar*)buffer range:(NSRange)range {
  (void)buffer;
  (void)range;
  crash("a string without characters");
}

- (BOOL)isEqualToString:(NSString*)string {
  return textOf(self) == textOf(string);
}

- (BOOL)isEqual:(id)object {
  return [object isKindOfClass:[NSString class]] && [self isEqualToString:object];
}

@end

@interface FakeString : NSString
- (instancetype)initWithUnits:(const std::u16string&)units;
@end

@implementation FakeString {
  std::u16string _units;
}

- (instancetype)initWithUnits:(const std::u16string&)units {
  self = [super init];
  if (self) _units = units;
  return self;
}

- (NSUInteger)length {
  return _units.size();
}

- (void)getCharacters:(unichar*)buffer range:(NSRange)range {
  if (range.location + range.length > _units.size()) crash("a range beyond the end of a string");
  std::copy_n(_units.begin() + static_cast<std::ptrdiff_t>(range.location), range.length, buffer);
}

@end

namespace {

/// How the compiler lays out a constant string of ASCII characters.
struct ConstantLayout {
  void* isa;
  std::uint32_t flags;
  std::uint32_t length;
  std::uint32_t size;
  std::uint32_t hash;
  const char* characters;
};

const ConstantLayout& layoutOf(NSString* constant) { return *static_cast<const ConstantLayout*>((__bridge const void*)constant); }

/// How the compiler puts up to 8 characters of 7 bits into a reference, the first one highest; the length is behind the 3 bits of the tag.
constexpr int tagBits = 3;
constexpr std::uintptr_t lengthMask = 0x1F;
constexpr int highestCharacter = 57;
constexpr int characterBits = 7;

}  // namespace

@implementation NSConstantString

- (NSUInteger)length {
  return layoutOf(self).length;
}

- (void)getCharacters:(unichar*)buffer range:(NSRange)range {
  std::copy_n(layoutOf(self).characters + range.location, range.length, buffer);
}

@end

@interface NSTinyString : NSString
@end

@implementation NSTinyString

- (NSUInteger)length {
  return reinterpret_cast<std::uintptr_t>((__bridge void*)self) >> tagBits & lengthMask;
}

- (void)getCharacters:(unichar*)buffer range:(NSRange)range {
  const auto bits = reinterpret_cast<std::uintptr_t>((__bridge void*)self);
  for (NSUInteger index = 0; index < range.length; ++index) {
    const auto shift = highestCharacter - static_cast<int>(range.location + index) * characterBits;
    buffer[index] = bits >> shift & 0x7FU;
  }
}

@end

@implementation NSValue
@end

@interface FakeNumber : NSNumber
@property unsigned long long value;
@end

@implementation NSNumber

- (unsigned long long)unsignedLongLongValue {
  return static_cast<FakeNumber*>(self).value;
}

@end

@implementation FakeNumber
@end

@interface FakeArray : NSArray
- (instancetype)initWithObjects:(std::vector<id>)objects;
@end

@implementation NSArray

- (NSUInteger)count {
  crash("an array without objects");
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state objects:(id __unsafe_unretained*)buffer count:(NSUInteger)length {
  (void)state;
  (void)buffer;
  (void)length;
  crash("an array without objects");
}

@end

@implementation FakeArray {
  std::vector<id> _objects;
}

- (instancetype)initWithObjects:(std::vector<id>)objects {
  self = [super init];
  if (self) _objects = std::move(objects);
  return self;
}

- (NSUInteger)count {
  return _objects.size();
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state objects:(id __unsafe_unretained*)buffer count:(NSUInteger)length {
  (void)buffer;
  (void)length;
  if (state->state != 0) return 0;
  static unsigned long mutations = 0;
  state->state = 1;
  state->itemsPtr = reinterpret_cast<id __unsafe_unretained*>(_objects.data());
  state->mutationsPtr = &mutations;
  return _objects.size();
}

@end

@interface FakeDictionary : NSDictionary
@property(strong) NSString* key;
@property(strong) id value;
@end

@implementation NSDictionary

- (id)objectForKeyedSubscript:(id)key {
  auto* dictionary = static_cast<FakeDictionary*>(self);
  return [dictionary.key isEqual:key] ? dictionary.value : nil;
}

@end

@implementation FakeDictionary
@end

@interface FakeData : NSData
@property const std::string& text;
@end

@implementation NSData

+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length {
  auto* data = [FakeData new];
  data.text = std::string(static_cast<const char*>(bytes), length);
  return data;
}

- (NSUInteger)length {
  return static_cast<FakeData*>(self).text.size();
}

- (const void*)bytes {
  const std::string& text = static_cast<FakeData*>(self).text;
  return text.empty() ? nullptr : text.data();
}

@end

@implementation FakeData {
  std::string _bytes;
}

- (const std::string&)text {
  return _bytes;
}

- (void)setText:(const std::string&)text {
  _bytes = text;
}

@end

@interface FakeDate : NSDate
@property double seconds;
@end

@implementation NSDate

+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)seconds {
  auto* date = [FakeDate new];
  date.seconds = seconds;
  return date;
}

- (NSTimeInterval)timeIntervalSince1970 {
  return static_cast<FakeDate*>(self).seconds;
}

@end

@implementation FakeDate
@end

@interface FakeUrl : NSURL
@property(strong) NSString* text;
@end

@implementation NSURL

+ (instancetype)URLWithString:(NSString*)URLString {
  return textOf(URLString).find(' ') == std::string::npos ? urlOf(textOf(URLString)) : nil;
}

@end

@implementation FakeUrl
@end

@interface FakeError : NSError
@property(strong) NSString* text;
@end

@implementation NSError

- (NSString*)localizedDescription {
  return static_cast<FakeError*>(self).text;
}

@end

@implementation FakeError
@end

namespace tilora::macos::fake {
namespace {

struct ObjectMaker {
  id operator()(bool value) const { return numberOf(value ? 1 : 0); }
  id operator()(double value) const { return numberOf(static_cast<unsigned long long>(value)); }
  id operator()(const std::string& value) const { return stringOf(value); }
  id operator()(const SettingData& value) const { return [NSData dataWithBytes:value.bytes.data() length:value.bytes.size()]; }
  id operator()(const SettingDate& value) const {
    return [NSDate dateWithTimeIntervalSince1970:std::chrono::duration<double>(value.time_since_epoch()).count()];
  }
};

simulated::SimulatedSettings& settings() { return FakeSystem::current().world().settings(); }

}  // namespace

NSString* stringOf(const std::u16string& text) { return [[FakeString alloc] initWithUnits:text]; }
NSString* stringOf(const std::string& utf8) { return stringOf(utf16Text(utf8)); }
NSString* stringOf(const std::optional<std::string>& utf8) { return utf8 ? stringOf(*utf8) : nil; }

std::string textOf(NSString* string) {
  std::u16string units(string.length, u'\0');
  [string getCharacters:reinterpret_cast<unichar*>(units.data()) range:NSMakeRange(0, units.size())];
  return utf8Text(units);
}

NSArray* arrayOf(std::vector<id> objects) { return [[FakeArray alloc] initWithObjects:std::move(objects)]; }

NSDictionary* dictionaryOf(NSString* key, id value) {
  auto* dictionary = [FakeDictionary new];
  dictionary.key = key;
  dictionary.value = value;
  return dictionary;
}

NSNumber* numberOf(unsigned long long value) {
  auto* number = [FakeNumber new];
  number.value = value;
  return number;
}

NSError* errorOf(const std::string& description) {
  auto* error = [FakeError new];
  error.text = stringOf(description);
  return error;
}

NSURL* urlOf(const std::string& text) {
  auto* url = [FakeUrl new];
  url.text = stringOf(text);
  return url;
}

std::string textOf(NSURL* url) { return textOf(static_cast<FakeUrl*>(url).text); }

id objectOf(const SettingValue& value) { return std::visit(ObjectMaker{}, value); }

Pool::Pool() : mark_(objc_autoreleasePoolPush()) {}
Pool::~Pool() { objc_autoreleasePoolPop(mark_); }

void inPool(const std::function<void()>& work) {
  const Pool pool;
  work();
}

}  // namespace tilora::macos::fake

@implementation NSUserDefaults

+ (NSUserDefaults*)standardUserDefaults {
  static NSUserDefaults* defaults = immortal([NSUserDefaults new]);
  return defaults;
}

- (id)objectForKey:(NSString*)defaultName {
  const SettingValue* value = settings().find(textOf(defaultName));
  return value ? objectOf(*value) : nil;
}

- (NSData*)dataForKey:(NSString*)defaultName {
  id object = [self objectForKey:defaultName];
  return [object isKindOfClass:[NSData class]] ? object : nil;
}

- (BOOL)boolForKey:(NSString*)defaultName {
  return settings().boolValue(textOf(defaultName));
}

- (double)doubleForKey:(NSString*)defaultName {
  return settings().doubleValue(textOf(defaultName));
}

- (void)setObject:(id)value forKey:(NSString*)defaultName {
  const std::string key = textOf(defaultName);
  if ([value isKindOfClass:[NSData class]]) {
    settings().setData(key, static_cast<FakeData*>(value).text);
  } else if ([value isKindOfClass:[NSDate class]]) {
    const std::chrono::duration<double> seconds(static_cast<NSDate*>(value).timeIntervalSince1970);
    settings().setDate(key, SettingDate(std::chrono::round<SettingDate::duration>(seconds)));
  } else {
    crash("something was stored that the fake does not know");
  }
}

- (void)setBool:(BOOL)value forKey:(NSString*)defaultName {
  settings().setBool(textOf(defaultName), value);
}

- (void)setDouble:(double)value forKey:(NSString*)defaultName {
  settings().setDouble(textOf(defaultName), value);
}

@end
