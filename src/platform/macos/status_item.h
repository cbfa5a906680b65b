// The icon in the menu bar.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "platform/geometry.h"

namespace tilora::macos {

/// Shows a symbol of the system as a template: the menu bar gives it its colour.
class StatusItem {
 public:
  /// Calls `activated` with the icon's place on the screens when the user clicks it: origin bottom-left, in points.
  explicit StatusItem(std::function<void(const Rect&)> activated);
  StatusItem(const StatusItem&) = delete;
  StatusItem& operator=(const StatusItem&) = delete;
  /// Takes the icon away.
  ~StatusItem();

  /// `name` is the name of a system symbol; `description` is what a screen reader says.
  void setSymbol(std::string_view name, std::string_view description);

 private:
  struct Parts;

  std::unique_ptr<Parts> parts_;
};

}  // namespace tilora::macos
