// Writing a file beside its target, syncing it and renaming it.
#include "platform/xdg/file_replacement.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace tilora::xdg {
namespace {

namespace fs = std::filesystem;

/// As many links as Linux itself follows.
constexpr int mostLinks = 40;

std::error_code lastError() { return {errno, std::generic_category()}; }

/// The file that `path` leads to, whether it exists or not.
fs::path followLinks(fs::path path, std::error_code& error) {
  for (int i = 0; i < mostLinks; ++i) {
    std::error_code notALink;
    const fs::path next = fs::read_symlink(path, notALink);
    const bool isEnd = notALink == std::errc::invalid_argument || notALink == std::errc::no_such_file_or_directory ||
                       notALink == std::errc::not_a_directory;
    if (isEnd) return path;
    if (notALink) {
      error = notALink;
      return {};
    }
    path = next.is_absolute() ? next : path.parent_path() / next;
  }
  error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
  return {};
}

/// Makes the missing folders on the way to `folder`, readable by the user alone.
std::error_code makeFolders(const fs::path& folder) {
  std::error_code error;
  if (fs::is_directory(folder, error)) return {};
  if (folder.has_parent_path() && folder.parent_path() != folder) {
    if (const auto failure = makeFolders(folder.parent_path())) return failure;
  }
  constexpr mode_t forTheUserAlone = 0700;
  return mkdir(folder.c_str(), forTheUserAlone) == 0 || errno == EEXIST ? std::error_code() : lastError();
}

/// Whether that is the open file; `error` when the system does not tell.
bool isTheFileAt(const fs::path& path, int descriptor, std::error_code& error) {
  struct stat opened {};
  struct stat named {};
  if (fstat(descriptor, &opened) != 0 || (lstat(path.c_str(), &named) != 0 && errno != ENOENT)) error = lastError();
  return opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

/// Opens `path` for this process alone: another one that has it is waited for, and may rename it meanwhile.
FileDescriptor openLocked(const fs::path& path, mode_t mode, std::error_code& error) {
  while (true) {
    FileDescriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, mode));
    if (!file) {
      error = lastError();
      return file;
    }
    // Not every file system has locks; there each process is on its own.
    while (flock(file.number(), LOCK_EX) != 0 && errno == EINTR) {
    }
    const bool isInPlace = isTheFileAt(path, file.number(), error);
    if (error) return {};
    if (isInPlace) return file;
  }
}

bool writeAll(int descriptor, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = write(descriptor, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

/// A rename is on the disk when its folder is. Where a folder cannot be synced there is nothing more to be done.
void syncFolder(const fs::path& folder) {
  const FileDescriptor opened(open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened) fsync(opened.number());
}

}  // namespace

FileContent readFile(const fs::path& path, std::size_t longest) {
  // Opening a named pipe would wait for whoever writes to it.
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file) return {{}, lastError()};
  struct stat status {};
  if (fstat(file.number(), &status) != 0) return {{}, lastError()};
  if (!S_ISREG(status.st_mode)) return {{}, std::make_error_code(std::errc::invalid_argument)};
  std::string content;
  std::array<char, 65536> part{};
  while (content.size() <= longest) {
    const ssize_t count = read(file.number(), part.data(), part.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return {{}, lastError()};
    if (count == 0) return {std::move(content), {}};
    content.append(part.data(), static_cast<std::size_t>(count));
  }
  return {{}, std::make_error_code(std::errc::file_too_large)};
}

std::optional<FileReplacement> FileReplacement::prepare(const fs::path& path, std::string_view content, mode_t mode,
                                                        std::error_code& error) {
  error.clear();
  fs::path target = followLinks(path, error);
  if (error) return std::nullopt;
  struct stat present {};
  if (stat(target.c_str(), &present) == 0 && !S_ISREG(present.st_mode)) {
    error = std::make_error_code(std::errc::invalid_argument);
    return std::nullopt;
  }
  if (error = makeFolders(target.parent_path()); error) return std::nullopt;
  fs::path beside = target;
  beside += ".new";
  FileDescriptor file = openLocked(beside, mode, error);
  if (!file) return std::nullopt;
  FileReplacement replacement(std::move(target), std::move(beside), std::move(file));
  const int descriptor = replacement.lock_.number();
  if (ftruncate(descriptor, 0) != 0 || fchmod(descriptor, mode) != 0 || !writeAll(descriptor, content) || fsync(descriptor) != 0) {
    error = lastError();
    return std::nullopt;
  }
  return replacement;
}

FileReplacement::FileReplacement(fs::path target, fs::path written, FileDescriptor lock)
    : target_(std::move(target)), written_(std::move(written)), lock_(std::move(lock)) {}

FileReplacement::FileReplacement(FileReplacement&& other) noexcept
    : target_(std::move(other.target_)), written_(std::exchange(other.written_, {})), lock_(std::move(other.lock_)) {}

FileReplacement::~FileReplacement() {
  if (!written_.empty()) unlink(written_.c_str());
}

std::error_code FileReplacement::commit() {
  if (rename(written_.c_str(), target_.c_str()) != 0) return lastError();
  written_.clear();
  syncFolder(target_.parent_path());
  return {};
}

}  // namespace tilora::xdg
