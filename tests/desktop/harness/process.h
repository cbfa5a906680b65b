// Child processes and temporary directories that end with the test.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tilora::harness {

/// How long anything may take before a test gives it up. Nothing waits that long when all is well: every wait ends with an event.
inline constexpr std::chrono::milliseconds defaultDeadline{8000};

using Environment = std::map<std::string, std::string>;

/// An open file, closed by the destructor.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int number) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept;
  FileDescriptor& operator=(FileDescriptor&& other) noexcept;
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() { close(); }

  int number() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }
  void close();

 private:
  int number_ = -1;
};

/// The two ends of a pipe, both closed on exec.
struct Pipe {
  FileDescriptor reader;
  FileDescriptor writer;

  static Pipe make();
};

/// Whether `descriptor` can be read before the deadline.
bool waitReadable(int descriptor, std::chrono::milliseconds deadline);

/// A directory of its own, removed with all that is in it by the destructor.
class TemporaryDirectory {
 public:
  TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory();

  const std::filesystem::path& path() const { return path_; }
  /// Writes a file below the directory, making the folders on its way, and answers its path.
  std::filesystem::path write(const std::filesystem::path& relative, const std::string& text) const;

 private:
  std::filesystem::path path_;
};

/// What to start. The first argument is the program, found in PATH.
struct ProcessOptions {
  std::vector<std::string> arguments;
  /// The whole environment of the process: nothing is inherited.
  Environment environment;
  /// Descriptors that the child sees under the given numbers.
  std::map<int, int> descriptors;
  /// Where standard output and error go unless `descriptors` says otherwise; empty: nowhere.
  std::filesystem::path log;
};

/// How a process ended.
struct ProcessEnd {
  std::optional<int> status;
  std::optional<int> signal;

  bool operator==(const ProcessEnd&) const = default;
};

/// "signal 11", "status 1"; "it runs on" for none.
std::string describe(const std::optional<ProcessEnd>& end);

/// A child process in a process group of its own. The destructor ends it and what it started; it also ends when the test program does.
class ManagedProcess {
 public:
  /// Throws std::runtime_error when the program cannot be started.
  explicit ManagedProcess(ProcessOptions options);
  ManagedProcess(ManagedProcess&& other) noexcept;
  ManagedProcess& operator=(ManagedProcess&& other) noexcept;
  ManagedProcess(const ManagedProcess&) = delete;
  ManagedProcess& operator=(const ManagedProcess&) = delete;
  ~ManagedProcess();

  pid_t pid() const { return pid_; }
  bool running();
  /// Sends a signal to the process alone; nothing when it has ended.
  void signal(int number);
  /// Waits for the end; nothing when the deadline passes first.
  std::optional<ProcessEnd> waitForEnd(std::chrono::milliseconds deadline = defaultDeadline);
  /// Asks it to end, then makes it; ends the group with it.
  void terminate(std::chrono::milliseconds patience = std::chrono::milliseconds(3000));
  /// What the process wrote so far.
  std::string output() const;

 private:
  void reap(int waitStatus);

  pid_t pid_ = -1;
  FileDescriptor handle_;
  std::optional<ProcessEnd> end_;
  std::filesystem::path log_;
};

}  // namespace tilora::harness
