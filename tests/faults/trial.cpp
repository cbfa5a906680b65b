// The life of the program in a trial, and the questions after it.
#include "trial.h"

#include <algorithm>
#include <csignal>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <utility>

#include "harness/place.h"

namespace tilora::faults {
namespace {

using harness::Key;

constexpr harness::PixelRect wholeScreen = {0, 0, 1600, 900};
/// With a fault in it the program may do less than it should; that is not waited for longer than this.
constexpr auto patience = std::chrono::milliseconds(2500);
constexpr int mostAttempts = 3;
constexpr auto longestEnd = std::chrono::seconds(5);
constexpr auto longestOwnEnd = std::chrono::seconds(1);
constexpr const char* instanceSelection = "_TILORA_INSTANCE";
constexpr const char* mark = "_TILORA_HIDDEN";
constexpr const char* settingsFile = "config/tilora/settings.json";
constexpr const char* placementsKey = "Tilora.AppPlacementPreferences";
/// What an earlier life has stored.
constexpr const char* earlierSettings =
    R"({"lastUpdateCheck": {"type": "date", "value": 4102444800000000000},
        "Tilora.AppPlacementPreferences": {"type": "data", "value": "{\"earlier\":\"left\"}"}})";

std::string contentOf(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// The places that a settings file holds; null when it cannot be decoded.
nlohmann::json placementsIn(const std::filesystem::path& path) {
  const auto settings = nlohmann::json::parse(contentOf(path), nullptr, false);
  if (!settings.is_object() || !settings.contains(placementsKey)) return {};
  return nlohmann::json::parse(settings.at(placementsKey).value("value", ""), nullptr, false);
}

bool holds(const nlohmann::json& placements, const std::string& application) {
  return placements.is_object() && std::any_of(placements.items().begin(), placements.items().end(),
                                               [&](const auto& entry) { return entry.key().find(application) != std::string::npos; });
}

}  // namespace

Trials::Trials(std::filesystem::path program) : program_(std::move(program)) {
  for (const char* name : {"first", "second", "third"}) {
    auto& client = clients_.emplace_back(session_);
    windows_.push_back(client.open({.title = name, .instance = name, .className = name}));
    display_.watch(windows_.back());
  }
}

void Trials::reset() {
  std::filesystem::remove_all(session_.home().path() / "config/tilora");
  session_.home().write(settingsFile, earlierSettings);
  session_.home().write("config/tilora/consent.json", R"({"Tilora.Consent": {"type": "bool", "value": true}})");
  display_.activate(windows_.front());
  display_.waitUntil([&] { return display_.activeWindow() == windows_.front(); }, patience);
}

Outcome Trials::run(const harness::Environment& additions) {
  Outcome outcome;
  reset();
  display_.waitUntil([&] { return display_.selectionOwner(instanceSelection) == XCB_WINDOW_NONE; }, patience);
  harness::ManagedProcess program = session_.start({program_.string()}, additions);
  live(program, outcome);
  // One whose connection has gone is about to end by itself, and may have put its handlers away by now.
  if (display_.selectionOwner(instanceSelection) == XCB_WINDOW_NONE) program.waitForEnd(longestOwnEnd);
  program.signal(SIGTERM);
  outcome.end = program.waitForEnd(longestEnd);
  if (!outcome.end) {
    outcome.isAskedTwice = true;
    program.signal(SIGTERM);
    outcome.end = program.waitForEnd();
  }
  if (!outcome.end) outcome.failures.emplace_back("it does not end");
  if (outcome.end && outcome.end->signal) {
    outcome.failures.push_back("it ends by " + harness::describe(outcome.end) + ": " + program.output());
  }
  program.terminate();
  expectWindows(outcome);
  expectSettings(outcome);
  display_.clearEvents();
  return outcome;
}

void Trials::live(harness::ManagedProcess& program, Outcome& outcome) {
  const auto deadline = std::chrono::steady_clock::now() + 2 * patience;
  const auto isOwned = [&] { return display_.selectionOwner(instanceSelection) != XCB_WINDOW_NONE; };
  while (program.running() && !isOwned() && std::chrono::steady_clock::now() < deadline) {
    display_.waitUntil(isOwned, std::chrono::milliseconds(20));
  }
  const xcb_window_t resource = display_.selectionOwner(instanceSelection);
  if (!isOwned() || !tap_.waitUntil([&] { return tap_.of(resource).requests[queryPointer] > 0; }, patience)) return;
  const xcb_window_t second = windows_.at(1), third = windows_.at(2);
  const auto fits = [&](xcb_window_t window, harness::Place place) {
    const auto frame = display_.frame(window);
    return frame && display_.viewable(window) && harness::fits(*frame, harness::edgesOf(place, wholeScreen), {});
  };
  // A window manager that is told to show a window and at once to hide it does both.
  display_.waitUntil([&] { return display_.iconic(second) && display_.iconic(third); }, patience);
  display_.activate(second);
  if (!program.running() ||
      !display_.waitUntil([&] { return display_.activeWindow() == second && fits(second, harness::Place::full); }, patience))
    return;
  // On a busy machine the key may overtake the activation.
  for (int attempt = 0; attempt < mostAttempts && !outcome.tiled && program.running(); ++attempt) {
    keyboard_.chord({Key::leftAlt, Key::leftShift, Key::leftBracket});
    outcome.tiled = display_.waitUntil([&] { return fits(second, harness::Place::left); }, patience);
  }
  display_.activate(third);
  display_.waitUntil([&] { return display_.iconic(second) && fits(third, harness::Place::full); }, patience);
}

bool Trials::comesBack(xcb_window_t window) {
  const auto isShown = [&] { return display_.viewable(window) && !display_.iconic(window); };
  display_.activate(window);
  return display_.waitUntil(isShown);
}

void Trials::expectWindows(Outcome& outcome) {
  const bool isClean = outcome.end && outcome.end->status == 0;
  for (const xcb_window_t window : windows_) {
    const auto isFree = [&] { return !display_.iconic(window) && !display_.hasProperty(window, mark); };
    if (isClean && !display_.waitUntil(isFree)) outcome.failures.push_back("a window is hidden after a clean end: " + display_.describe());
    if (!comesBack(window)) outcome.failures.push_back("a window is lost: " + display_.describe());
  }
}

void Trials::expectSettings(Outcome& outcome) {
  const auto file = session_.home().path() / settingsFile;
  const auto now = placementsIn(file);
  outcome.placeIsStored = holds(now, "second");
  const auto kept = std::filesystem::path(file.string() + ".broken");
  if (!holds(now, "earlier") && !holds(placementsIn(kept), "earlier")) {
    outcome.failures.push_back("the earlier settings are lost: " + contentOf(file));
  }
}

}  // namespace tilora::faults
