// Owning a reference to a Core Foundation object.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <memory>
#include <utility>

namespace tilora::macos {

/// Owns one reference to a Core Foundation object, or none. `Ref` is a reference type, CFArrayRef for instance.
template <class Ref>
class CfRef {
 public:
  CfRef() = default;
  CfRef(CfRef&& other) noexcept : ref_(std::exchange(other.ref_, nullptr)) {}
  CfRef& operator=(CfRef&& other) noexcept {
    std::swap(ref_, other.ref_);
    return *this;
  }
  CfRef(const CfRef&) = delete;
  CfRef& operator=(const CfRef&) = delete;
  ~CfRef() {
    if (ref_) CFRelease(ref_);
  }

  /// Takes over the reference that a function with Create or Copy in its name gave; null stays none.
  static CfRef adopt(Ref owned) { return CfRef(owned); }
  /// Adds a reference to an object that somebody else owns; null stays none.
  static CfRef retain(Ref borrowed) {
    if (borrowed) CFRetain(borrowed);
    return CfRef(borrowed);
  }

  /// Lent for as long as this lives; null: none.
  Ref get() const { return ref_; }
  explicit operator bool() const { return ref_ != nullptr; }

  /// The same reference under shared ownership, for holders that know no Core Foundation.
  std::shared_ptr<const void> share() && {
    if (!ref_) return nullptr;
    return {static_cast<CFTypeRef>(std::exchange(ref_, nullptr)), [](CFTypeRef object) { CFRelease(object); }};
  }

 private:
  explicit CfRef(Ref owned) : ref_(owned) {}

  Ref ref_ = nullptr;
};

}  // namespace tilora::macos
