// The lists of programs.
#include "figures/programs.h"

#include <algorithm>

namespace tilora::bench {
namespace {

void addOthers(std::vector<std::string>& names) {
  names.insert(names.end(), tilers.begin(), tilers.end());
  names.insert(names.end(), scripts.begin(), scripts.end());
}

}  // namespace

bool isTiler(const std::string& program) { return std::find(tilers.begin(), tilers.end(), program) != tilers.end(); }

bool isScript(const std::string& program) { return std::find(scripts.begin(), scripts.end(), program) != scripts.end(); }

std::string tiloraOn(const std::string& host) { return "Tilora on " + host; }

std::string floorOn(const std::string& host) { return "bare client on " + host; }

std::vector<std::string> contestants() {
  std::vector<std::string> names;
  for (const std::string& host : hosts) {
    names.push_back(tiloraOn(host));
    names.push_back(floorOn(host));
  }
  addOthers(names);
  return names;
}

std::vector<std::string> residents() {
  std::vector<std::string> names = {tiloraOn(firstHost)};
  addOthers(names);
  return names;
}

}  // namespace tilora::bench
