// Which windows are managed, which one has the focus, and how large a window is.
#include "windows/discovery.h"

#include <cmath>
#include <cstdint>
#include <utility>

#include "windows/attribute_readers.h"
#include "windows/checked_number.h"
#include "windows/identity.h"

namespace tilora {
namespace {

constexpr std::string_view managedRole = "AXWindow";
constexpr std::string_view managedSubrole = "AXStandardWindow";
constexpr std::string_view unreadableSubrole = "<none>";

bool isPositive(Size size) { return size.width > 0 && size.height > 0; }

bool hasExtent(double width, double height) { return std::abs(width) > 0 && std::abs(height) > 0; }

}  // namespace

std::vector<Application> scannedApplications(const Desktop& desktop) {
  auto applications = desktop.workspace.runningApplications();
  std::erase_if(applications, [&](const Application& application) {
    return application->activationPolicy() != ActivationPolicy::regular || application->isTerminated() ||
           application->processIdentifier() == desktop.ownProcessId;
  });
  return applications;
}

bool isEligible(const AccessibilityElement& window) { return rolesIfEligible(window).has_value(); }

std::optional<WindowRoles> rolesIfEligible(const AccessibilityElement& window) {
  const auto role = window.value(AttributeName::role);
  const auto* roleText = textIn(role);
  if (!roleText || *roleText != managedRole) return std::nullopt;
  const auto subrole = window.value(AttributeName::subrole);
  const auto* subroleText = textIn(subrole);
  if (subroleText && *subroleText != managedSubrole) return std::nullopt;
  if (readBoolean(window, AttributeName::minimized).value_or(false)) return std::nullopt;
  if (!window.isSettable(AttributeName::position).value_or(false)) return std::nullopt;
  return WindowRoles{managedRole, subroleText ? managedSubrole : unreadableSubrole};
}

std::optional<FocusedWindow> focusedWindow(const Desktop& desktop) {
  const auto application = desktop.workspace.frontmostApplication();
  if (!application) return std::nullopt;
  const ProcessId pid = application->processIdentifier();
  if (pid == desktop.ownProcessId) return std::nullopt;
  auto window = readElement(*desktop.accessibility.applicationElement(pid), AttributeName::focusedWindow);
  if (!window) return std::nullopt;
  const WindowKey key = {pid, windowNumberOf(*window)};
  return FocusedWindow{std::move(window), key, applicationIdentifier(*application)};
}

std::optional<Rect> windowServerBounds(const WindowKey& key, WindowServer& windowServer) {
  const auto entries = windowServer.entries(checkedInteger<std::uint32_t>(key.windowNumber));
  if (entries.empty()) return std::nullopt;
  const auto& first = entries.front();
  if (first.ownerPid && *first.ownerPid != key.pid) return std::nullopt;
  return first.bounds;
}

std::optional<Size> usableSize(const WindowKey& key, const AccessibilityElement& window, WindowServer& windowServer) {
  if (const auto size = readSize(window, AttributeName::size); size && isPositive(*size)) return size;
  if (const auto bounds = windowServerBounds(key, windowServer); bounds && hasExtent(bounds->width, bounds->height)) {
    return Size{std::abs(bounds->width), std::abs(bounds->height)};
  }
  const auto position = readPoint(window, AttributeName::position);
  const auto size = readSize(window, AttributeName::size);
  if (position && size && hasExtent(size->width, size->height)) return size;
  return std::nullopt;
}

}  // namespace tilora
