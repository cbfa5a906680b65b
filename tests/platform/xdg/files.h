// Files as a test writes, reads and watches them.
#pragma once

#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "harness/process.h"

namespace tilora::xdg {

inline std::string contentOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

inline mode_t modeOf(const std::filesystem::path& file) {
  struct stat status {};
  return stat(file.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

/// The names in a folder, in alphabetical order.
inline std::vector<std::string> namesIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

/// Sees what is removed from a folder from now on.
class RemovalWatch {
 public:
  explicit RemovalWatch(const std::filesystem::path& folder) : queue_(inotify_init1(IN_CLOEXEC)) {
    inotify_add_watch(queue_.number(), folder.c_str(), IN_DELETE);
  }

  /// Waits until something has been removed; false when the deadline passes first.
  bool wait() {
    std::array<char, 4096> events{};
    return harness::waitReadable(queue_.number(), harness::defaultDeadline) && read(queue_.number(), events.data(), events.size()) > 0;
  }

 private:
  harness::FileDescriptor queue_;
};

}  // namespace tilora::xdg
