// Files as a test writes, reads and watches them.
#pragma once

#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstdint>
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

/// Sees what happens in a folder from now on: IN_DELETE, IN_MOVED_TO (inotify(7)).
class FolderWatch {
 public:
  FolderWatch(const std::filesystem::path& folder, std::uint32_t events) : queue_(inotify_init1(IN_CLOEXEC)) {
    inotify_add_watch(queue_.number(), folder.c_str(), events);
  }

  /// Waits until it has happened; false when the deadline passes first.
  bool wait() {
    std::array<char, 4096> events{};
    return harness::waitReadable(queue_.number(), harness::defaultDeadline) && read(queue_.number(), events.data(), events.size()) > 0;
  }

 private:
  harness::FileDescriptor queue_;
};

}  // namespace tilora::xdg
