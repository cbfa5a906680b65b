// The token of something that was installed and must be taken away again.
#pragma once

#include <functional>
#include <utility>

namespace tilora {

/// Owns one installation (an observer, a timer, a monitor). Destroying or resetting it undoes the installation; after that the callback is
/// never called again. It must not outlive the desktop that handed it out. Main thread only.
class [[nodiscard]] Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::function<void()> undo) : undo_(std::move(undo)) {}
  Subscription(Subscription&& other) noexcept : undo_(std::exchange(other.undo_, nullptr)) {}
  Subscription& operator=(Subscription&& other) noexcept {
    if (this != &other) {
      reset();
      undo_ = std::exchange(other.undo_, nullptr);
    }
    return *this;
  }
  Subscription(const Subscription&) = delete;
  Subscription& operator=(const Subscription&) = delete;
  ~Subscription() { reset(); }

  /// Undoes the installation now. Doing so again has no effect.
  void reset() {
    if (auto undo = std::exchange(undo_, nullptr)) undo();
  }

  explicit operator bool() const { return static_cast<bool>(undo_); }

 private:
  std::function<void()> undo_;
};

}  // namespace tilora
