// Which windows are managed, which one has the focus, and how large a window is.
#include "windows/discovery.h"

#include <cmath>
#include <cstdint>
#include <utility>

#include "windows/attribute_readers.h"
#include "windows/checked_number.h"
#include "windows/identity.h"
#include "windows/screen_keys.h"

namespace tilora {
namespace {

/// The role and subrole of a window that passed the eligibility test, so that they are read once.
struct EligibleRoles {
  std::string role;
  std::optional<std::string> subrole;
};

std::optional<EligibleRoles> rolesIfEligible(const AccessibilityElement& window) {
  auto role = readString(window, AttributeName::role);
  if (!role || *role != "AXWindow") return std::nullopt;
  auto subrole = readString(window, AttributeName::subrole);
  if (subrole && *subrole != "AXStandardWindow") return std::nullopt;
  if (readBoolean(window, AttributeName::minimized).value_or(false)) return std::nullopt;
  if (!window.isSettable(AttributeName::position).value_or(false)) return std::nullopt;
  return EligibleRoles{std::move(*role), std::move(subrole)};
}

std::optional<WindowIdentitySeed> seedOf(Element window, ProcessId pid, Screens& screens) {
  auto roles = rolesIfEligible(*window);
  if (!roles) return std::nullopt;
  auto screen = screenOf(*window, screens);
  if (!screen) return std::nullopt;
  WindowIdentitySeed seed;
  seed.key = {pid, windowNumberOf(*window)};
  seed.screen = std::move(screen);
  seed.role = std::move(roles->role);
  seed.subrole = std::move(roles->subrole).value_or("<none>");
  seed.axIdentifier = identifierOf(*window);
  seed.title = titleOf(*window);
  seed.window = std::move(window);
  return seed;
}

std::vector<WindowIdentitySeed> seedsOf(std::vector<Element> windows, ProcessId pid, Screens& screens) {
  std::vector<WindowIdentitySeed> seeds;
  seeds.reserve(windows.size());
  for (auto& window : windows) {
    if (auto seed = seedOf(std::move(window), pid, screens)) seeds.push_back(std::move(*seed));
  }
  return seeds;
}

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

std::vector<ManagedWindow> managedWindows(const RunningApplication& application, const Desktop& desktop) {
  const ProcessId pid = application.processIdentifier();
  auto elements = readElements(*desktop.accessibility.applicationElement(pid), AttributeName::windows);
  if (!elements) return {};
  const std::string appIdentifier = applicationIdentifier(application);
  auto seeds = seedsOf(std::move(*elements), pid, desktop.screens);
  const auto identities = windowIdentities(seeds);
  std::vector<ManagedWindow> windows;
  windows.reserve(seeds.size());
  for (auto& seed : seeds) {
    const auto identity = identities.find(seed.key);
    windows.push_back({seed.key, std::move(seed.window), std::move(seed.screen), appIdentifier,
                       identity != identities.end() ? identity->second : titleIdentity(seed.title)});
  }
  return windows;
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
