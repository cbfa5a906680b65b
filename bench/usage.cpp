// Reading /proc.
#include "usage.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>

namespace tilora::bench {
namespace {

std::filesystem::path folderOf(pid_t process) { return "/proc/" + std::to_string(process); }

/// The parent, behind the name in parentheses, which may have any character in it.
pid_t parentOf(const std::filesystem::path& folder) {
  std::ifstream file(folder / "stat");
  std::string line;
  std::getline(file, line);
  const auto end = line.rfind(") ");
  constexpr std::size_t behindState = 4;
  if (end == std::string::npos || line.size() < end + behindState) return 0;
  pid_t parent = 0;
  std::from_chars(line.data() + end + behindState, line.data() + line.size(), parent);
  return parent;
}

std::multimap<pid_t, pid_t> childrenOfAll() {
  std::multimap<pid_t, pid_t> children;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const std::string name = entry.path().filename();
    pid_t process = 0;
    if (std::from_chars(name.data(), name.data() + name.size(), process).ec != std::errc()) continue;
    children.emplace(parentOf(entry.path()), process);
  }
  return children;
}

}  // namespace

Usage usageOf(pid_t process) {
  Usage usage;
  std::error_code gone;
  for (const auto& thread : std::filesystem::directory_iterator(folderOf(process) / "task", gone)) {
    double time = 0;
    std::ifstream(thread.path() / "schedstat") >> time;
    usage.processorTime += time;
    std::ifstream status(thread.path() / "status");
    for (std::string word; status >> word;) {
      if (word == "voluntary_ctxt_switches:" && status >> word) usage.waits += std::stol(word);
    }
  }
  return usage;
}

long memoryOf(pid_t process, const std::string& figure) {
  std::ifstream file(folderOf(process) / "smaps_rollup");
  for (std::string word; file >> word;) {
    if (word == figure && file >> word) return std::stol(word);
  }
  throw std::runtime_error("the system does not tell the memory of a process");
}

std::vector<pid_t> descendantsOf(pid_t process) {
  const std::multimap<pid_t, pid_t> children = childrenOfAll();
  std::vector<pid_t> found = {process};
  for (std::size_t i = 0; i < found.size(); ++i) {
    const auto [first, last] = children.equal_range(found[i]);
    for (auto child = first; child != last; ++child) found.push_back(child->second);
  }
  found.erase(found.begin());
  return found;
}

}  // namespace tilora::bench
