// Starting, replacing and ending what a desktop consists of.
#include "desk.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <fstream>
#include <iostream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "x_errors.h"

namespace tilora::chaos {
namespace {

using harness::PixelRect;
using harness::WindowManagerKind;

constexpr PixelRect leftMonitor = {0, 0, 901, 900};
constexpr PixelRect rightMonitor = {901, 0, 699, 900};
/// On a machine that has other things to do.
constexpr auto longestStart = std::chrono::seconds(30);
constexpr std::uint32_t virtualDesktops = 3;
/// What it says at each start: the check for updates is not due.
constexpr const char* expectedOutput = "Releasewatch: backed off";
/// What Tilora says when the X server has gone, the first two in the words of Qt and of Xlib.
constexpr std::array saidWithoutAServer = {"The X11 connection broke", "X connection to ", "tilora: there is no X server"};
constexpr std::string_view errorOfTheServer = "(EE) ";
constexpr const char* instanceSelection = "_TILORA_INSTANCE";

/// For AddressSanitizer, where it is built in: it keeps nothing of what has been freed, so that growth is Tilora's own; what the libraries
/// never free is not looked for.
const harness::Environment sanitizerSettings = {{"ASAN_OPTIONS", "detect_leaks=0:quarantine_size_mb=0:thread_local_quarantine_size_kb=0"},
                                                {"UBSAN_OPTIONS", "print_stacktrace=1"}};

std::optional<std::string> contentOf(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

/// Nothing when the process has ended.
Holdings memoryOf(pid_t process) {
  Holdings memory;
  std::ifstream lines("/proc/" + std::to_string(process) + "/smaps_rollup");
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string name;
    std::size_t kilobytes = 0;
    if (!(words >> name >> kilobytes)) continue;
    if (name == "Rss:") memory.residentKilobytes = kilobytes;
    if (name == "Anonymous:") memory.ownKilobytes = kilobytes;
  }
  return memory;
}

std::size_t openDescriptors(pid_t process) {
  std::error_code gone;
  const std::filesystem::directory_iterator open("/proc/" + std::to_string(process) + "/fd", gone);
  return static_cast<std::size_t>(std::distance(open, {}));
}

std::string lastLine(std::string text) {
  while (text.ends_with('\n')) text.pop_back();
  return text.substr(text.rfind('\n') + 1);
}

/// Fluxbox and JWM take no other's place, and leave theirs only when they end.
bool takesPlaces(WindowManagerKind kind) { return kind != WindowManagerKind::fluxbox && kind != WindowManagerKind::jwm; }

}  // namespace

Desk::Desk(WindowManagerKind kind, std::filesystem::path program, Counts& counts)
    : counts_(counts), program_(std::move(program)), server_(std::vector{leftMonitor, rightMonitor}), kind_(kind) {
  server_.plugIn(1);
  startWindowManager();
  session_.home().write("config/tilora/consent.json", R"({"Tilora.Consent": {"type": "bool", "value": true}})");
}

void Desk::expectServerRuns() {
  if (!serverRuns()) throw std::runtime_error("the X server is gone");
}

std::string Desk::describeServer() {
  const auto end = server_.process().running() ? std::nullopt : server_.process().waitForEnd();
  std::string text = harness::describe(end);
  std::istringstream output(server_.process().output());
  for (std::string line; std::getline(output, line);) {
    if (line.starts_with(errorOfTheServer) && line.size() > errorOfTheServer.size()) text += "\n  " + line;
  }
  return text;
}

void Desk::changeMonitors() {
  ++counts_.monitorChanges;
  if (std::exchange(hasSecondMonitor_, !hasSecondMonitor_)) {
    server_.unplug(1);
  } else {
    server_.plugIn(1);
  }
}

void Desk::startWindowManager() {
  manager_ = std::make_unique<harness::WindowManager>(kind_, session_, display_);
  display_.sendRootMessage(display_.root(), "_NET_NUMBER_OF_DESKTOPS", {virtualDesktops});
}

void Desk::replaceWindowManager(WindowManagerKind kind) {
  ++counts_.managersReplaced;
  const bool replaces = managerRuns() && takesPlaces(kind) && takesPlaces(kind_);
  kind_ = kind;
  try {
    if (replaces) {
      manager_ = std::make_unique<harness::WindowManager>(kind, session_, display_, harness::WindowManagerOptions{.replace = true});
    } else {
      manager_.reset();
      startWindowManager();
    }
  } catch (const std::runtime_error&) {
    // What the storm did to it was too much for one of the two; the calm after it starts the new one.
    ++counts_.managersFailed;
    manager_.reset();
  }
}

void Desk::killWindowManager() {
  if (!manager_) return;
  ++counts_.managersKilled;
  manager_->process().signal(SIGKILL);
  manager_->process().waitForEnd();
  manager_.reset();
}

void Desk::ensureWindowManager() {
  if (managerRuns()) return;
  if (manager_) {
    ++counts_.managersFailed;
    harness::ManagedProcess& process = manager_->process();
    const auto end = process.waitForEnd();
    std::clog << harness::nameOf(kind_) << " has ended by itself, " << harness::describe(end) << ": " << lastLine(process.output())
              << std::endl;
  }
  manager_.reset();
  try {
    startWindowManager();
  } catch (const std::runtime_error& failure) {
    ++counts_.managersFailed;
    std::clog << harness::nameOf(kind_) << " does not start: " << lastLine(failure.what()) << std::endl;
  }
}

void Desk::restartWindowManager() {
  ++counts_.managersFailed;
  if (manager_) {
    manager_->process().signal(SIGKILL);
    manager_->process().waitForEnd();
  }
  manager_.reset();
  ensureWindowManager();
}

std::string Desk::describeManager() {
  const std::string name = display_.windowManagerName();
  return (name.empty() ? "no window manager that answers" : name) + (managerRuns() ? ", its process runs" : ", its process does not run");
}

void Desk::startTilora() {
  if (tilora_) return;
  const auto isOwned = [this] { return display_.selectionOwner(instanceSelection) != XCB_WINDOW_NONE; };
  display_.waitUntil([&] { return !isOwned(); });
  tilora_.emplace(session_.start({program_.string()}, sanitizerSettings));
  ++lives_;
  // The selection makes no event of its own.
  const auto deadline = std::chrono::steady_clock::now() + longestStart;
  while (!isOwned() && tilora_->running() && std::chrono::steady_clock::now() < deadline) {
    display_.waitUntil(isOwned, std::chrono::milliseconds(20));
  }
  if (!isOwned()) fault("Tilora does not start: " + tilora_->output());
  tiloraResource_ = display_.selectionOwner(instanceSelection);
  awaitTold([this] { return tap_.of(tiloraResource_).connection > 0 && !tap_.of(tiloraResource_).ended; });
  tiloraConnection_ = tap_.of(tiloraResource_).connection;
  errorsSeen_ = 0;
}

void Desk::killTilora() {
  if (!tilora_) return;
  ++counts_.tiloraKilled;
  expectTiloraIsSilent();
  expectNoUnexpectedErrors();
  tilora_->signal(SIGKILL);
  const auto end = tilora_->waitForEnd();
  if (!end || end->signal != SIGKILL) fault("Tilora had ended before it was killed: " + tilora_->output());
  expectNoUnexpectedErrors();
  tilora_.reset();
}

void Desk::endTilora() {
  if (!tilora_) return;
  ++counts_.tiloraEnded;
  expectNoUnexpectedErrors();
  tilora_->signal(SIGTERM);
  const auto end = tilora_->waitForEnd(longestStart);
  if (end != harness::ProcessEnd{.status = 0, .signal = {}})
    fault("Tilora does not end well, " + harness::describe(end) + ": " + tilora_->output());
  expectTiloraIsSilent();
  expectNoUnexpectedErrors();
  tilora_.reset();
}

void Desk::awaitTold(const std::function<bool()>& holds) {
  constexpr auto interval = std::chrono::milliseconds(50);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
  do {
    display_.sync();
    if (tap_.waitUntil(holds, interval)) return;
  } while (std::chrono::steady_clock::now() < end && serverRuns());
}

void Desk::expectTiloraEndedWithTheServer() {
  if (!tilora_) return;
  const auto end = tilora_->waitForEnd();
  if (end != harness::ProcessEnd{.status = 1, .signal = {}})
    note("Tilora does not end well with the X server, " + harness::describe(end) + ": " + tilora_->output());
  expectTiloraIsSilent();
  tilora_.reset();
}

bool Desk::makesAPass(std::chrono::milliseconds deadline) {
  if (!tilora_ || tiloraResource_ == XCB_WINDOW_NONE) return true;
  tap_.waitUntil([] { return true; });
  // The pass that runs now may have begun before what the driver did.
  const int wanted = tap_.of(tiloraResource_).requests[queryPointer] + 2;
  return tap_.waitUntil([&] { return tap_.of(tiloraResource_).requests[queryPointer] >= wanted; }, deadline);
}

void Desk::expectTiloraRuns() {
  if (!tilora_ || tilora_->running()) return;
  const auto end = tilora_->waitForEnd();
  fault("Tilora has ended by itself, " + harness::describe(end) + ": " + tilora_->output());
  tilora_.reset();
}

void Desk::expectTiloraIsSilent() {
  std::istringstream output(tilora_ ? tilora_->output() : std::string());
  std::string unexpected;
  for (std::string line; std::getline(output, line);) {
    const auto saysLine = [&](const char* said) { return line.starts_with(said); };
    if (line.empty() || line.starts_with(expectedOutput)) continue;
    if (!std::any_of(saidWithoutAServer.begin(), saidWithoutAServer.end(), saysLine) || !serverEnds()) unexpected += line + "\n";
  }
  if (!unexpected.empty()) note("Tilora has printed: " + unexpected);
}

void Desk::expectNoUnexpectedErrors() {
  if (!tilora_ || tiloraResource_ == XCB_WINDOW_NONE) return;
  const bool runs = tilora_->running();
  const harness::Traffic& traffic = tap_.of(tiloraResource_);
  const auto isOfAnother = [&] { return traffic.connection != tiloraConnection_; };
  // The errors come before the end; that the server does not always tell.
  awaitTold([&] { return runs || traffic.ended || isOfAnother(); });
  if (isOfAnother()) {
    ++counts_.xErrorsUntold;
    return;
  }
  const auto& errors = traffic.errors;
  for (; errorsSeen_ < errors.size(); ++errorsSeen_) {
    const harness::WireError& error = errors[errorsSeen_];
    ++counts_.xErrors[nameOf(error)];
    if (isExpected(error)) continue;
    std::ostringstream text;
    text << nameOf(error) << " of request " << int{error.majorOpcode} << "." << error.minorOpcode << ", value 0x" << std::hex
         << error.badValue;
    note(text.str());
  }
}

std::optional<Holdings> Desk::tiloraHoldings() const {
  if (!tilora_) return std::nullopt;
  Holdings holdings = memoryOf(tilora_->pid());
  holdings.descriptors = openDescriptors(tilora_->pid());
  return holdings;
}

std::optional<std::map<std::string, std::string>> Desk::storedPlacements() const {
  const auto text = contentOf(session_.home().path() / "config/tilora/settings.json");
  const auto settings = nlohmann::json::parse(text.value_or(""), nullptr, false);
  if (!settings.is_object()) return std::nullopt;
  std::map<std::string, std::string> placements;
  const auto entry = settings.find("Tilora.AppPlacementPreferences");
  if (entry == settings.end()) return placements;
  const auto stored = nlohmann::json::parse(entry->value("value", ""), nullptr, false);
  if (!stored.is_object()) return std::nullopt;
  for (const auto& [key, value] : stored.items()) placements[key] = value.is_string() ? value.get<std::string>() : std::string();
  return placements;
}

void Desk::fault(const std::string& what) {
  if (serverEnds()) expectServerRuns();
  note(what);
}

void Desk::note(const std::string& what) {
  std::cout << "FAULT on " << harness::nameOf(kind_) << ": " << what << std::endl;
  counts_.faults.push_back(what);
}

}  // namespace tilora::chaos
