// Reading small files whole, and putting new content in their place in one step that survives a kill and a power cut.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/xdg/file_descriptor.h"

namespace tilora::xdg {

/// What there is to be read of a file. `content` is absent when there is no file, or when it cannot be read: `error` says which. A file
/// that is longer than asked for, or is no regular file, cannot be read.
struct FileContent {
  std::optional<std::string> content;
  std::error_code error;

  bool isMissing() const { return error == std::errc::no_such_file_or_directory; }
};

FileContent readFile(const std::filesystem::path& path, std::size_t longest);

/// New content for a file, complete on the disk beside it and not yet in its place. Two processes that replace the same file take turns. A
/// kill leaves at most one file beside the target, which the next replacement uses again.
class FileReplacement {
 public:
  /// Writes and syncs `content`. A symbolic link at `path` stays, and what it leads to is replaced. Missing folders are made, for the user
  /// alone. Nothing, and `error`, when it cannot be written, or when something other than a regular file is in the place.
  static std::optional<FileReplacement> prepare(const std::filesystem::path& path, std::string_view content, mode_t mode,
                                                std::error_code& error);
  FileReplacement(FileReplacement&& other) noexcept;
  FileReplacement& operator=(FileReplacement&&) = delete;
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;
  /// Takes the new content away again unless it has been committed.
  ~FileReplacement();

  /// The file that is replaced: `path` with its symbolic links followed.
  const std::filesystem::path& target() const { return target_; }
  /// Puts the content in its place: whoever opens the file finds the old content or the new.
  std::error_code commit();

 private:
  FileReplacement(std::filesystem::path target, std::filesystem::path written, FileDescriptor lock);

  std::filesystem::path target_;
  /// Where the new content is; empty when it has been committed.
  std::filesystem::path written_;
  /// The new file, locked.
  FileDescriptor lock_;
};

}  // namespace tilora::xdg
