// Tells whoever shows the controller's values that one of them is about to change.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/subscription.h"

namespace tilora {

/// The values of the controller that an interface shows.
enum class PublishedProperty : std::uint8_t {
  windowPadding,
  startOnLoginEnabled,
  isAccessibilityTrusted,
  shortcutBindings,
  startOnLoginError,
};

/// The name of a property, "windowPadding" for instance.
std::string_view text(PublishedProperty property);

/// A list of observers. Main thread only.
class ChangeNotifier {
 public:
  using Observer = std::function<void(PublishedProperty)>;

  ChangeNotifier();

  /// Calls `observer` before every assignment to a published property, until the subscription ends. The subscription may outlive this.
  Subscription observe(Observer observer);

  /// Calls the observers in the order in which they came.
  void willChange(PublishedProperty property) const;

 private:
  using Observers = std::vector<std::shared_ptr<const Observer>>;
  std::shared_ptr<Observers> observers_;
};

}  // namespace tilora
