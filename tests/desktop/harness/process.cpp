// Child processes: fork, exec, and waiting on a process handle.
#include "harness/process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace tilora::harness {

namespace {

[[noreturn]] void fail(const std::string& what) { throw std::system_error(errno, std::generic_category(), what); }

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  result.reserve(texts.size() + 1);
  for (std::string& text : texts) result.push_back(text.data());
  result.push_back(nullptr);
  return result;
}

/// Where the shell would find the program.
std::string programPath(const std::string& name, const Environment& environment) {
  if (name.find('/') != std::string::npos) return name;
  const auto path = environment.find("PATH");
  std::istringstream folders(path == environment.end() ? "/usr/bin:/bin" : path->second);
  for (std::string folder; std::getline(folders, folder, ':');) {
    std::string candidate = folder;
    candidate.append("/").append(name);
    if (::access(candidate.c_str(), X_OK) == 0) return candidate;
  }
  throw std::runtime_error("no program named " + name);
}

/// Everything between fork and exec: only calls that are safe there.
[[noreturn]] void becomeChild(const char* program, char* const* arguments, char* const* environment,
                              const std::vector<std::pair<int, int>>& moves, pid_t parent) {
  ::setpgid(0, 0);
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != parent) ::_exit(127);
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  for (const auto& [from, to] : moves) {
    if (from == to) {
      ::fcntl(to, F_SETFD, 0);
    } else if (::dup2(from, to) < 0) {
      ::_exit(127);
    }
  }
  ::execve(program, arguments, environment);
  ::_exit(127);
}

}  // namespace

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
  if (this != &other) {
    close();
    number_ = std::exchange(other.number_, -1);
  }
  return *this;
}

void FileDescriptor::close() {
  if (number_ >= 0) ::close(std::exchange(number_, -1));
}

Pipe Pipe::make() {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) fail("pipe");
  return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

bool waitReadable(int descriptor, std::chrono::milliseconds deadline) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  while (true) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now()).count();
    pollfd entry{descriptor, POLLIN, 0};
    const int ready = ::poll(&entry, 1, static_cast<int>(left < 0 ? 0 : left));
    if (ready > 0) return true;
    if (ready == 0 || errno != EINTR) return false;
  }
}

TemporaryDirectory::TemporaryDirectory() {
  const std::string toBeReplaced(6, 'X');  // mkdtemp(3)
  std::string pattern = (std::filesystem::temp_directory_path() / ("tilora-test-" + toBeReplaced)).string();
  if (::mkdtemp(pattern.data()) == nullptr) fail("mkdtemp");
  path_ = pattern;
}

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TemporaryDirectory::write(const std::filesystem::path& relative, const std::string& text) const {
  std::filesystem::path file = path_ / relative;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  if (!stream.flush()) throw std::runtime_error("cannot write " + file.string());
  return file;
}

std::string describe(const std::optional<ProcessEnd>& end) {
  if (!end) return "it runs on";
  return end->signal ? "signal " + std::to_string(*end->signal) : "status " + std::to_string(end->status.value_or(0));
}

ManagedProcess::ManagedProcess(ProcessOptions options) : log_(options.log) {
  std::string program = programPath(options.arguments.at(0), options.environment);
  std::vector<std::string> variables;
  variables.reserve(options.environment.size());
  for (const auto& [name, value] : options.environment) variables.emplace_back(name).append("=").append(value);
  FileDescriptor sink(::open(log_.empty() ? "/dev/null" : log_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
  FileDescriptor nothing(::open("/dev/null", O_RDONLY | O_CLOEXEC));
  if (!sink || !nothing) fail("open");
  std::vector<std::pair<int, int>> moves = {{nothing.number(), 0}, {sink.number(), 1}, {sink.number(), 2}};
  for (const auto& [to, from] : options.descriptors) moves.emplace_back(from, to);
  std::vector<char*> arguments = pointers(options.arguments);
  std::vector<char*> environment = pointers(variables);
  const pid_t parent = ::getpid();
  pid_ = ::fork();
  if (pid_ < 0) fail("fork");
  if (pid_ == 0) becomeChild(program.c_str(), arguments.data(), environment.data(), moves, parent);
  ::setpgid(pid_, pid_);
  handle_ = FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid_, 0)));
  if (!handle_) fail("pidfd_open");
}

ManagedProcess::ManagedProcess(ManagedProcess&& other) noexcept
    : pid_(std::exchange(other.pid_, -1)), handle_(std::move(other.handle_)), end_(other.end_), log_(std::move(other.log_)) {}

ManagedProcess& ManagedProcess::operator=(ManagedProcess&& other) noexcept {
  if (this != &other) {
    if (pid_ > 0) terminate();
    pid_ = std::exchange(other.pid_, -1);
    handle_ = std::move(other.handle_);
    end_ = other.end_;
    log_ = std::move(other.log_);
  }
  return *this;
}

ManagedProcess::~ManagedProcess() {
  if (pid_ > 0) terminate();
}

bool ManagedProcess::running() { return !waitForEnd(std::chrono::milliseconds(0)); }

void ManagedProcess::signal(int number) {
  if (pid_ > 0 && !end_) ::kill(pid_, number);
}

void ManagedProcess::reap(int waitStatus) {
  end_ = ProcessEnd{};
  if (WIFEXITED(waitStatus)) end_->status = WEXITSTATUS(waitStatus);
  if (WIFSIGNALED(waitStatus)) end_->signal = WTERMSIG(waitStatus);
}

std::optional<ProcessEnd> ManagedProcess::waitForEnd(std::chrono::milliseconds deadline) {
  if (end_ || pid_ < 0) return end_;
  if (!waitReadable(handle_.number(), deadline)) return std::nullopt;
  int waitStatus = 0;
  if (::waitpid(pid_, &waitStatus, 0) == pid_) reap(waitStatus);
  return end_;
}

void ManagedProcess::terminate(std::chrono::milliseconds patience) {
  if (pid_ < 0) return;
  signal(SIGTERM);
  if (!waitForEnd(patience)) {
    signal(SIGKILL);
    waitForEnd();
  }
  ::kill(-pid_, SIGKILL);
  pid_ = -1;
}

std::string ManagedProcess::output() const {
  std::ifstream stream(log_, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  return text.str();
}

}  // namespace tilora::harness
