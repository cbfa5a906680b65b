// The managed windows of the applications that one pass or command looks at.
#include "windows/window_scan.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <utility>

#include "windows/attribute_readers.h"
#include "windows/discovery.h"

namespace tilora {
namespace {

/// Gives windows with one key the identity of the last of them.
void shareIdentities(const std::vector<WindowIdentitySeed>& seeds, std::vector<std::string_view>& identities) {
  std::unordered_map<WindowKey, std::string_view> identityOf;
  for (std::size_t i = 0; i < seeds.size(); ++i) identityOf.insert_or_assign(seeds[i].key, identities[i]);
  for (std::size_t i = 0; i < seeds.size(); ++i) identities[i] = identityOf.at(seeds[i].key);
}

/// Reserves room for `count` more, at least doubling what there was, as growth by single records would; never for a few records only.
template <class Record>
void makeRoom(std::vector<Record>& records, std::size_t count) {
  constexpr std::size_t least = 16;
  const std::size_t needed = records.size() + count;
  if (needed > records.capacity()) records.reserve(std::max({needed, 2 * records.capacity(), least}));
}

}  // namespace

WindowScan::WindowScan(const Desktop& desktop, NamesMatter namesMatter)
    : desktop_(desktop),
      namesMatter_(std::move(namesMatter)),
      screens_(desktop.screens),
      texts_(std::make_unique<TextPool>()),
      namer_(*texts_) {}

void WindowScan::add(const RunningApplication& application) {
  const ProcessId pid = application.processIdentifier();
  auto elements = readElements(*desktop_.accessibility.applicationElement(pid), AttributeName::windows);
  if (!elements) return;
  const auto appIdentifier = texts_->keep(applicationIdentifier(application));
  const bool isNamed = !namesMatter_ || namesMatter_(appIdentifier);
  seeds_.clear();
  seeds_.reserve(elements->size());
  for (auto& element : *elements) appendSeed(std::move(element), pid, isNamed);
  bool areKeysNew = true;
  for (const auto& seed : seeds_) areKeysNew = keys_.insert(seed.key) && areKeysNew;
  if (!isNamed) return appendWindows(appIdentifier, nullptr);
  auto& identities = namer_.identities(seeds_);
  if (!areKeysNew) shareIdentities(seeds_, identities);
  appendWindows(appIdentifier, &identities);
}

void WindowScan::appendWindows(std::string_view appIdentifier, const std::vector<std::string_view>* identities) {
  makeRoom(windows_, seeds_.size());
  for (std::size_t i = 0; i < seeds_.size(); ++i) {
    auto& seed = seeds_[i];
    const auto identity = identities == nullptr ? std::string_view() : (*identities)[i];
    windows_.push_back({seed.key, std::move(seed.window), std::move(seed.screen), appIdentifier, identity});
  }
}

void WindowScan::appendSeed(Element window, ProcessId pid, bool isNamed) {
  const auto roles = rolesIfEligible(*window);
  if (!roles) return;
  auto screen = screens_.of(*window);
  if (!screen) return;
  auto& seed = seeds_.emplace_back();
  seed.key = {pid, windowNumberOf(*window)};
  seed.screen = std::move(screen);
  if (isNamed) {
    seed.role = roles->role;
    seed.subrole = roles->subrole;
    const auto identifier = window->value(AttributeName::identifier);
    if (const auto text = identifierIn(identifier)) seed.axIdentifier = texts_->keep(*text);
    const auto title = window->value(AttributeName::title);
    seed.title = texts_->keep(titleIn(title));
  }
  seed.window = std::move(window);
}

}  // namespace tilora
