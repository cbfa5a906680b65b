// Callbacks that do nothing once the object they speak for is gone.
#pragma once

#include <memory>
#include <utility>

namespace tilora {

/// Held by an object as a member; callbacks made with it do nothing from the moment it is gone. Main thread only.
class Lifetime {
 public:
  template <class Work>
  auto whileAlive(Work work) const {
    return [alive = std::weak_ptr(alive_), work = std::move(work)] {
      if (!alive.expired()) work();
    };
  }

  /// Callbacks do nothing from now on.
  void end() { alive_.reset(); }

 private:
  std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace tilora
