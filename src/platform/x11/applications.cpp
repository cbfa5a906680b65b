// Grouping windows into applications.
#include "platform/x11/applications.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <unordered_map>

namespace tilora::x11 {
namespace {

/// Process ids of Linux end far below.
constexpr ProcessId firstMadeUp = 0x40000000;

std::string hostName() {
  std::array<char, 256> name{};
  if (gethostname(name.data(), name.size() - 1) != 0) return {};
  return name.data();
}

std::string processName(ProcessId pid) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/comm");
  std::string name;
  std::getline(file, name);
  return repairedUtf8(name);
}

std::optional<std::string> unlessEmpty(const std::string& text) { return text.empty() ? std::nullopt : std::optional(text); }

bool isStable(const std::string& role) {
  return !role.empty() && std::ranges::none_of(role, [](unsigned char letter) { return std::isdigit(letter) != 0; });
}

void findIdentifyingRoles(const std::vector<ClientWindowRef>& windows) {
  std::unordered_map<std::string, int> counts;
  for (const auto& window : windows) ++counts[window->role];
  for (const auto& window : windows) window->roleIdentifies = isStable(window->role) && counts[window->role] == 1;
}

void sortByFocus(std::vector<ClientWindowRef>& windows) {
  std::ranges::stable_sort(windows, std::ranges::greater{}, [](const ClientWindowRef& window) { return window->focusSerial; });
}

}  // namespace

std::optional<std::string> X11Application::bundleIdentifier() const {
  for (const auto& window : windows_) {
    if (!window->applicationId.empty()) return window->applicationId;
  }
  return windows_.empty() ? std::nullopt : unlessEmpty(windows_.front()->className);
}

std::optional<std::string> X11Application::localizedName() const {
  if (windows_.empty()) return std::nullopt;
  if (!windows_.front()->instanceName.empty()) return windows_.front()->instanceName;
  return pid_ < firstMadeUp ? unlessEmpty(processName(pid_)) : std::nullopt;
}

ActivationPolicy X11Application::activationPolicy() const {
  const bool regular = std::ranges::any_of(windows_, [](const auto& window) { return window->isNormal() && !window->states.skipTaskbar; });
  return regular ? ActivationPolicy::regular : ActivationPolicy::accessory;
}

bool X11Application::countsAsHideable(const ClientWindow& window) const {
  return window.isOrdinary() && window.isOn(model_.facts().currentDesktop) && !window.isMinimizedByUser() && !window.isFullscreen() &&
         !window.refusesHiding && !window.isSettling();
}

bool X11Application::isHidden() const {
  bool hidden = false;
  for (const auto& window : windows_) {
    if (!countsAsHideable(*window)) continue;
    if (!window->marks.application) return false;
    hidden = true;
  }
  return hidden;
}

void X11Application::hide() {
  for (const auto& window : windows_) {
    if (!countsAsHideable(*window) || window->marks.application) continue;
    window->marks.application = true;
    marksChanged_(window);
  }
}

void X11Application::unhide() {
  for (const auto& window : windows_) {
    if (!window->marks.application || !window->isOn(model_.facts().currentDesktop)) continue;
    window->marks.application = false;
    marksChanged_(window);
  }
}

void X11Application::dissolveHiding() {
  for (const auto& window : windows_) {
    if (!window->marks.application || !window->isOn(model_.facts().currentDesktop)) continue;
    window->marks.application = false;
    window->marks.window |= window->isNormal();
    marksChanged_(window);
  }
}

ApplicationRegistry::ApplicationRegistry(const ClientModel& model, MarksChanged marksChanged)
    : model_(model), marksChanged_(std::move(marksChanged)), host_(hostName()), lastMadeUp_(firstMadeUp) {}

ApplicationRegistry::ProcessName ApplicationRegistry::processOf(const ClientWindow& window) const {
  const auto isPlausible = [](std::uint32_t pid) { return pid > 0 && pid < static_cast<std::uint32_t>(firstMadeUp); };
  if (isPlausible(window.clientProcess)) return std::to_string(window.clientProcess);
  if (isPlausible(window.declaredProcess) && window.machine == host_) return std::to_string(window.declaredProcess);
  if (window.leader != XCB_WINDOW_NONE) return "leader " + std::to_string(window.leader);
  return "class " + window.className + " of " + window.machine;
}

ProcessId ApplicationRegistry::assign(const ClientWindow& window) {
  const ProcessName process = processOf(window);
  const auto [entry, isNew] = assigned_.try_emplace({process, window.className}, 0);
  if (!isNew) return entry->second;
  const bool isReal = std::isdigit(static_cast<unsigned char>(process.front())) != 0;
  const ProcessId real = isReal ? std::stoi(process) : 0;
  const bool taken = std::ranges::any_of(assigned_, [&](const auto& other) { return other.second == real; });
  // The new entry itself holds 0 until here, so 0 counts as taken.
  entry->second = taken ? ++lastMadeUp_ : real;
  return entry->second;
}

ApplicationRegistry::Changes ApplicationRegistry::update() {
  Changes changes;
  std::map<ProcessId, std::vector<ClientWindowRef>> windows;
  std::vector<ProcessId> order;
  for (const auto& window : model_.windows()) {
    if (window->application == 0) window->application = assign(*window);
    auto& group = windows[window->application];
    if (group.empty()) order.push_back(window->application);
    group.push_back(window);
  }
  for (auto it = byPid_.begin(); it != byPid_.end();) {
    const bool gone = !windows.contains(it->first);
    if (gone) it->second->setWindows({});
    changes.terminated |= gone;
    it = gone ? byPid_.erase(it) : std::next(it);
  }
  std::erase_if(assigned_, [&](const auto& entry) { return !windows.contains(entry.second); });
  all_.clear();
  for (const auto pid : order) {
    auto& application = byPid_[pid];
    if (!application) {
      application = std::make_shared<X11Application>(pid, model_, marksChanged_);
      changes.launched = true;
    }
    auto& group = windows[pid];
    findIdentifyingRoles(group);
    sortByFocus(group);
    application->setWindows(std::move(group));
    all_.push_back(application);
  }
  std::ranges::stable_sort(all_, std::ranges::greater{}, [](const Application& application) {
    return static_cast<const X11Application&>(*application).windows().front()->focusSerial;
  });
  return changes;
}

void ApplicationRegistry::settleHiding() {
  for (const auto& window : model_.windows()) {
    // It was on its own when it was hidden, and has a parent to follow now.
    if (window->isNormal() || !window->isOrdinary() || !window->marks.window) continue;
    window->marks.window = false;
    marksChanged_(window);
  }
  const auto isShown = [&](const ClientWindowRef& window) {
    return window->isNormal() && window->isOn(model_.facts().currentDesktop) && !window->marks.any() && !window->storedMarks.any() &&
           !window->states.hidden && !window->isFullscreen() && !window->refusesHiding;
  };
  for (const auto& [pid, application] : byPid_) {
    const auto& windows = application->windows();
    const bool hiding = std::ranges::any_of(windows, [](const auto& window) { return window->marks.application; });
    if (hiding && std::ranges::any_of(windows, isShown)) application->dissolveHiding();
  }
}

X11ApplicationRef ApplicationRegistry::find(ProcessId pid) const {
  const auto found = byPid_.find(pid);
  return found == byPid_.end() ? nullptr : found->second;
}

}  // namespace tilora::x11
