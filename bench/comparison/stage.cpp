// Which program runs on what.
#include "stage.h"

#include <algorithm>

#include "figures/programs.h"
#include "run.h"

namespace tilora::bench {
namespace {

/// Nothing for one that is a window manager itself.
std::optional<harness::WindowManagerKind> hostOf(const std::string& program) {
  if (isTiler(program)) return std::nullopt;
  for (const auto kind : harness::allWindowManagers) {
    const std::string host = harness::nameOf(kind);
    if (program == tiloraOn(host) || program == floorOn(host) || (host == firstHost && isScript(program))) return kind;
  }
  throw Failure("there is no program " + program);
}

std::unique_ptr<Contestant> started(const std::string& program, Desk& desk, Probe probe) {
  if (isTiler(program)) return startTiler(desk, program);
  if (isScript(program)) return startScript(desk, program);
  const bool isFloor = std::any_of(hosts.begin(), hosts.end(), [&](const std::string& host) { return program == floorOn(host); });
  if (isFloor) return startFloor(desk, Run::besides("tilora-comparison-floor"));
  return startTilora(desk, Run::besides("tilora"), probe == Probe::ownShare);
}

}  // namespace

Stage::Stage(const std::string& program, int crowd, Probe probe) {
  desk_.setCrowd(static_cast<std::size_t>(crowd));
  if (probe == Probe::cost) desk_.setWard(Run::besides("tilora-comparison-ward"));
  if (const auto host = hostOf(program)) host_.emplace(*host, desk_.session(), display_);
  contestant_ = started(program, desk_, probe);
}

}  // namespace tilora::bench
