// Tells whoever shows the controller's values that one of them is about to change.
#include "controller/change_notifier.h"

#include <array>
#include <utility>

namespace tilora {
namespace {

constexpr std::array<std::string_view, 5> names = {"windowPadding", "startOnLoginEnabled", "isAccessibilityTrusted", "shortcutBindings",
                                                   "startOnLoginError"};

}  // namespace

std::string_view text(PublishedProperty property) { return names[static_cast<std::size_t>(property)]; }

ChangeNotifier::ChangeNotifier() : observers_(std::make_shared<Observers>()) {}

Subscription ChangeNotifier::observe(Observer observer) {
  auto entry = std::make_shared<const Observer>(std::move(observer));
  observers_->push_back(entry);
  return Subscription([weakObservers = std::weak_ptr(observers_), entry] {
    if (const auto observers = weakObservers.lock()) std::erase(*observers, entry);
  });
}

void ChangeNotifier::willChange(PublishedProperty property) const {
  const auto observers = *observers_;  // an observer may come or go while they are called
  for (const auto& observer : observers) (*observer)(property);
}

}  // namespace tilora
