// Reading and writing the attributes of a simulated window.
#include "platform/simulated/simulated_window.h"

namespace tilora::simulated {

std::optional<AttributeValue> SimulatedWindow::value(AttributeName name) const {
  if (isClosed_) return std::nullopt;
  return traits_.attributes[name];
}

std::optional<bool> SimulatedWindow::isSettable(AttributeName name) const {
  if (isClosed_ || traits_.settable[name] == Settability::error) return std::nullopt;
  return traits_.settable[name] == Settability::yes;
}

void SimulatedWindow::set(AttributeName name, const BoxedValue& value) {
  if (isClosed_) return;
  std::visit([&](const auto& geometry) { onWrite_(*this, name, geometry); }, value.value);
}

void SimulatedWindow::set(AttributeName name, bool value) {
  if (!isClosed_) onWrite_(*this, name, value);
}

std::optional<std::int64_t> SimulatedWindow::windowNumber() const {
  const auto& number = traits_.attributes[AttributeName::windowNumber];
  if (!number) return std::nullopt;
  const auto* integer = std::get_if<Number>(&*number);
  if (integer == nullptr) return std::nullopt;
  return integer->toInteger();
}

}  // namespace tilora::simulated
