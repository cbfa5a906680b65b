// The engine against the plain model of it, on thousands of random desktops.
//
// TILORA_MODEL_DESKTOPS: how many; TILORA_MODEL_SEED: the first seed, the one that a failure names for instance.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>

#include "controller/window_manager_controller.h"
#include "model/dice.h"
#include "model/scenario.h"
#include "model/slow_model.h"
#include "tiling/placement.h"

namespace tilora::model {
namespace {

constexpr const char* paddingKey = "Tilora.WindowPadding";
constexpr const char* preferencesKey = "Tilora.AppPlacementPreferences";
constexpr std::size_t storyLength = 60;

/// The four maps, in the words of the model.
struct Memory {
  std::map<Key, Placement> placements;
  std::map<std::string, Placement> preferences;
  std::map<Key, Key> pairings;
  std::map<std::string, std::set<Key>> shown;

  bool operator==(const Memory&) const = default;
};

Key keyOf(const WindowKey& key) { return {key.pid, key.windowNumber}; }

Memory memoryOf(const WindowManagerController& controller) {
  Memory memory;
  for (const auto& [key, placement] : controller.windowPlacements()) memory.placements[keyOf(key)] = text(placement);
  for (const auto& [name, placement] : controller.appPlacementPreferences()) memory.preferences[name] = text(placement);
  for (const auto& [one, other] : controller.windowPairings()) memory.pairings[keyOf(one)] = keyOf(other);
  for (const auto& [screen, keys] : controller.visibleWindowKeysByScreen()) {
    for (const auto& key : keys) memory.shown[screen].insert(keyOf(key));
  }
  return memory;
}

Memory memoryOf(const SlowModel& model) { return {model.placements, model.preferences, model.pairings, model.shown}; }

std::ostream& operator<<(std::ostream& out, const Key& key) { return out << key.first << '/' << key.second; }

void print(std::ostream& out, const Memory& memory) {
  for (const auto& [key, placement] : memory.placements) out << "    placement " << key << ' ' << placement << '\n';
  for (const auto& [name, placement] : memory.preferences) out << "    preference " << name << ' ' << placement << '\n';
  for (const auto& [one, other] : memory.pairings) out << "    pair " << one << ' ' << other << '\n';
  for (const auto& [screen, keys] : memory.shown) {
    out << "    shown on " << screen;
    for (const auto& key : keys) out << ' ' << key;
    out << '\n';
  }
}

/// The process id of an application that was hidden or shown; nothing for any other effect.
std::optional<ProcessId> hiddenOrShown(const simulated::Effect& effect) {
  if (const auto* hidden = std::get_if<simulated::ApplicationHidden>(&effect)) return hidden->pid;
  if (const auto* unhidden = std::get_if<simulated::ApplicationUnhidden>(&effect)) return unhidden->pid;
  return std::nullopt;
}

/// What was done, in its order; only applications hidden or shown in a row may come in any order. Stored preferences count as what they
/// say.
std::vector<simulated::Effect> comparable(std::vector<simulated::Effect> effects) {
  for (auto from = effects.begin(); from != effects.end();) {
    const auto to = std::find_if_not(from, effects.end(), hiddenOrShown);
    std::sort(from, to, [](const auto& one, const auto& other) { return hiddenOrShown(one) < hiddenOrShown(other); });
    from = to == effects.end() ? to : to + 1;
  }
  for (auto& effect : effects) {
    auto* stored = std::get_if<simulated::SettingStored>(&effect);
    auto* data = stored != nullptr ? std::get_if<SettingData>(&stored->value) : nullptr;
    if (data != nullptr) data->bytes = nlohmann::json::parse(data->bytes).dump();
  }
  return effects;
}

/// How often something happened, by a name for it.
using Counts = std::map<std::string, std::size_t>;

std::string nameOf(const simulated::Effect& effect) {
  if (const auto* written = std::get_if<simulated::AttributeWritten>(&effect)) {
    const auto* truth = std::get_if<bool>(&written->value);
    return std::string(text(written->name)) + (truth == nullptr ? "" : *truth ? " true" : " false");
  }
  if (std::holds_alternative<simulated::ApplicationHidden>(effect)) return "hide";
  return std::holds_alternative<simulated::ApplicationUnhidden>(effect) ? "unhide" : "store";
}

void count(const std::vector<simulated::Effect>& effects, const Memory& memory, Counts& counts) {
  for (const auto& effect : effects) ++counts[nameOf(effect)];
  for (const auto& [key, placement] : memory.placements) ++counts[placement];
  counts["paired"] += memory.pairings.size();
  if (memory.shown.size() > 1) ++counts["two screens in use"];
  if (effects.empty() && !memory.shown.empty()) ++counts["nothing to do"];
}

/// Two desktops on which the same things happen. The engine works on one, the model on the other.
class Twins {
 public:
  explicit Twins(std::uint64_t seed) {
    Dice dice(seed);
    const double padding = paddingOf({StepKind::setPadding, 0, 0, dice.next()});
    const auto preferences = storedPreferences(dice.next());
    for (auto* desktop : {&mine_, &models_}) {
      desktop->setOwnProcessId(ownPid);
      desktop->settings().put(paddingKey, padding);
      desktop->settings().put(preferencesKey, SettingData{preferences});
    }
    restart();
  }

  const Counts& counts() const { return counts_; }

  /// Nothing, or how the two differ after the step.
  std::optional<std::string> run(const Step& step) {
    happen(step, mine_);
    happen(step, models_);
    switch (step.kind) {
      case StepKind::restart:
        restart();
        break;
      case StepKind::setPadding:
        setPadding(paddingOf(step));
        break;
      case StepKind::pass:
        controller_->retileAllWindows();
        model_->pass();
        break;
      case StepKind::command:
        controller_->assignPlacementToFocusedWindow(placementFrom(placementOf(step)).value());
        model_->command(placementOf(step));
        break;
      default:
        break;
    }
    return difference();
  }

 private:
  void restart() {
    controller_.reset();
    controller_.emplace(mine_.interfaces());
    mine_.takeEffects();
    const auto* preferences = models_.settings().find(preferencesKey);
    model_.emplace(models_.interfaces());
    setModelPadding(std::get<double>(*models_.settings().find(paddingKey)));
    model_->preferences = nlohmann::json::parse(std::get<SettingData>(*preferences).bytes).get<std::map<std::string, Placement>>();
  }

  void setPadding(double padding) {
    controller_->setWindowPadding(padding);
    mine_.takeEffects();
    setModelPadding(padding);
    models_.settings().put(paddingKey, model_->padding);
  }
  void setModelPadding(double padding) { model_->padding = std::max(padding, 0.0); }

  std::optional<std::string> difference() {
    const auto engineDid = comparable(mine_.takeEffects());
    const auto modelDid = comparable(models_.takeEffects());
    const auto engineKnows = memoryOf(*controller_);
    const auto modelKnows = memoryOf(*model_);
    count(engineDid, engineKnows, counts_);
    if (engineDid == modelDid && engineKnows == modelKnows) return std::nullopt;
    std::ostringstream out;
    const auto tell = [&](const char* who, const std::vector<simulated::Effect>& effects, const Memory& memory) {
      out << "  " << who << ":\n";
      for (const auto& effect : effects) out << "    " << effect << '\n';
      print(out, memory);
    };
    tell("the engine", engineDid, engineKnows);
    tell("the model", modelDid, modelKnows);
    return out.str();
  }

  simulated::SimulatedDesktop mine_;
  simulated::SimulatedDesktop models_;
  std::optional<WindowManagerController> controller_;
  std::optional<SlowModel> model_;
  Counts counts_;
};

std::optional<std::string> firstDifference(std::uint64_t seed, const std::vector<Step>& steps) {
  Twins twins(seed);
  for (const auto& step : steps) {
    if (auto difference = twins.run(step)) return difference;
  }
  return std::nullopt;
}

/// The story without every step that can be left out and still leads to a difference: first many at once, then one by one.
std::vector<Step> shortened(std::uint64_t seed, std::vector<Step> steps) {
  for (std::size_t atOnce = steps.size() / 2; atOnce > 0; atOnce /= 2) {
    for (std::size_t from = 0; from < steps.size();) {
      auto fewer = steps;
      const auto to = std::min(from + atOnce, fewer.size());
      fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(from), fewer.begin() + static_cast<std::ptrdiff_t>(to));
      if (firstDifference(seed, fewer)) {
        steps = std::move(fewer);
      } else {
        from += atOnce;
      }
    }
  }
  return steps;
}

/// Empty, or the shortest story that was found to part the two.
std::string disagreement(std::uint64_t seed) {
  const auto steps = randomScenario(seed, storyLength);
  if (!firstDifference(seed, steps)) return {};
  const auto shortest = shortened(seed, steps);
  std::ostringstream out;
  out << "They part on the desktop of seed " << seed << " (TILORA_MODEL_SEED=" << seed << " TILORA_MODEL_DESKTOPS=1), at the end of:\n";
  for (const auto& step : shortest) out << "  " << step << '\n';
  out << firstDifference(seed, shortest).value();
  return out.str();
}

std::uint64_t numberFrom(const char* variable, std::uint64_t otherwise) {
  const char* value = std::getenv(variable);
  return value != nullptr ? std::strtoull(value, nullptr, 10) : otherwise;
}

TEST(Agreement, TheEngineDoesOnEveryRandomDesktopWhatThePlainModelDoes) {
  const auto first = numberFrom("TILORA_MODEL_SEED", 1);
  const auto desktops = numberFrom("TILORA_MODEL_DESKTOPS", 5'000);
  for (auto seed = first; seed < first + desktops; ++seed) ASSERT_EQ(disagreement(seed), "");
}

TEST(Agreement, RandomDesktopsAreFullOfWhatTheEngineCanDo) {
  Counts counts;
  for (std::uint64_t seed = 1; seed <= 300; ++seed) {
    Twins twins(seed);
    for (const auto& step : randomScenario(seed, storyLength)) twins.run(step);
    for (const auto& [name, often] : twins.counts()) counts[name] += often;
  }
  for (const char* name : {"AXPosition", "AXSize", "AXHidden true", "AXHidden false", "hide", "unhide", "store", "full", "left", "right",
                           "floatCenter", "paired", "two screens in use", "nothing to do"}) {
    EXPECT_GT(counts[name], 300U) << name;
  }
  // Some windows are moved without being resized.
  EXPECT_GT(counts["AXPosition"], counts["AXSize"] + 300);
}

}  // namespace
}  // namespace tilora::model
