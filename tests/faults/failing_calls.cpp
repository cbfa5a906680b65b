// A library to be preloaded: the program's own calls to the system work, but for the one of a given number, or all of a given kind.
//
// TILORA_FAULT_NUMBER: the number of the call that fails, from 1 on. TILORA_FAULT_KIND: the name of the call that fails every time, with
// "open-to-write" and "open-to-read" for the two uses of open, "write-to-pipe" for what is no file. TILORA_FAULT_LOG: the file that is told
// of each call that was made to fail.
//
// Whose calls: those of the program itself and of the C++ library for it. The ones that other libraries make are theirs to deal with, but
// for socket and connect: no other way leads to a server.
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <poll.h>
#include <pthread.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Range {
  std::uintptr_t begin = 0;
  std::uintptr_t end = 0;
};

/// Where the code is whose calls fail. The first object is the program.
std::vector<Range> rangesOfTheProgram() {
  std::vector<Range> ranges;
  dl_iterate_phdr(
      [](dl_phdr_info* info, std::size_t, void* to) {
        const std::string_view name = info->dlpi_name;
        if (!name.empty() && name.find("libstdc++") == std::string_view::npos) return 0;
        for (int index = 0; index < info->dlpi_phnum; ++index) {
          const auto& part = info->dlpi_phdr[index];
          if (part.p_type != PT_LOAD || (part.p_flags & PF_X) == 0) continue;
          const std::uintptr_t begin = info->dlpi_addr + part.p_vaddr;
          static_cast<std::vector<Range>*>(to)->push_back({begin, begin + part.p_memsz});
        }
        return 0;
      },
      &ranges);
  return ranges;
}

std::string_view variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string_view() : std::string_view(value);
}

template <class Function>
Function real(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

void log(std::string_view call) {
  static const auto openFile = real<int (*)(const char*, int, ...)>("open");
  static const auto writeFile = real<ssize_t (*)(int, const void*, std::size_t)>("write");
  const std::string path(variable("TILORA_FAULT_LOG"));
  if (path.empty()) return;
  constexpr mode_t forTheUserAlone = 0600;
  const int file = openFile(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, forTheUserAlone);
  if (file < 0) return;
  const std::string line = std::string(call) + "\n";
  static_cast<void>(writeFile(file, line.data(), line.size()));
  close(file);
}

/// Whether this call is to fail; it then has `error` in errno.
bool fails(std::string_view call, int error, const void* caller, bool whoever = false) {
  static const std::vector<Range> ranges = rangesOfTheProgram();
  static const long number = std::strtol(std::string(variable("TILORA_FAULT_NUMBER")).c_str(), nullptr, 10);
  static const std::string_view kind = variable("TILORA_FAULT_KIND");
  static std::atomic<long> count = 0;
  const auto place = reinterpret_cast<std::uintptr_t>(caller);
  bool own = whoever;
  for (const Range& range : ranges) own = own || (place >= range.begin && place < range.end);
  if (!own || (++count != number && call != kind)) return false;
  log(call);
  errno = error;
  return true;
}

}  // namespace

#define TILORA_CALLER __builtin_return_address(0)

// The parameters' names in the C library's headers are reserved for it, and a list of parameters takes no more parentheses.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name,bugprone-macro-parentheses)
extern "C" {

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const auto mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : mode_t{0};
  va_end(rest);
  const bool writes = (flags & O_ACCMODE) != O_RDONLY;
  if (fails(writes ? "open-to-write" : "open-to-read", writes ? EROFS : EACCES, TILORA_CALLER)) return -1;
  static const auto next = real<int (*)(const char*, int, ...)>("open");
  return next(path, flags, mode);
}

ssize_t read(int file, void* to, std::size_t size) {
  if (fails("read", EIO, TILORA_CALLER)) return -1;
  static const auto next = real<ssize_t (*)(int, void*, std::size_t)>("read");
  return next(file, to, size);
}

ssize_t write(int file, const void* from, std::size_t size) {
  struct stat status {};
  const bool isFile = fstat(file, &status) == 0 && S_ISREG(status.st_mode);
  if (fails(isFile ? "write" : "write-to-pipe", isFile ? ENOSPC : EBADF, TILORA_CALLER)) return -1;
  static const auto next = real<ssize_t (*)(int, const void*, std::size_t)>("write");
  return next(file, from, size);
}

ssize_t readlink(const char* path, char* to, std::size_t size) {
  if (fails("readlink", EIO, TILORA_CALLER)) return -1;
  static const auto next = real<ssize_t (*)(const char*, char*, std::size_t)>("readlink");
  return next(path, to, size);
}

int fcntl(int file, int command, ...) {
  va_list rest;
  va_start(rest, command);
  void* const argument = va_arg(rest, void*);
  va_end(rest);
  if (fails("fcntl", EBADF, TILORA_CALLER)) return -1;
  static const auto next = real<int (*)(int, int, ...)>("fcntl");
  return next(file, command, argument);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*work)(void*), void* argument) {
  if (fails("pthread_create", EAGAIN, TILORA_CALLER)) return EAGAIN;
  static const auto next = real<int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*)>("pthread_create");
  return next(thread, attributes, work, argument);
}

int socket(int domain, int type, int protocol) {
  if (fails("socket", EMFILE, TILORA_CALLER, true)) return -1;
  static const auto next = real<int (*)(int, int, int)>("socket");
  return next(domain, type, protocol);
}

int connect(int file, const sockaddr* address, socklen_t length) {
  if (fails("connect", ECONNREFUSED, TILORA_CALLER, true)) return -1;
  static const auto next = real<int (*)(int, const sockaddr*, socklen_t)>("connect");
  return next(file, address, length);
}

/// The calls whose arguments are just handed on, and that answer 0 or -1.
#define TILORA_FAILING_CALL(name, error, parameters, arguments) \
  int name parameters {                                         \
    if (fails(#name, error, TILORA_CALLER)) return -1;          \
    static const auto next = real<int(*) parameters>(#name);    \
    return next arguments;                                      \
  }

TILORA_FAILING_CALL(fstat, EIO, (int file, struct stat* to), (file, to))
TILORA_FAILING_CALL(stat, EIO, (const char* path, struct stat* to), (path, to))
TILORA_FAILING_CALL(lstat, EIO, (const char* path, struct stat* to), (path, to))
TILORA_FAILING_CALL(ftruncate, ENOSPC, (int file, off_t length), (file, length))
TILORA_FAILING_CALL(fchmod, EPERM, (int file, mode_t mode), (file, mode))
TILORA_FAILING_CALL(fsync, EIO, (int file), (file))
TILORA_FAILING_CALL(flock, ENOLCK, (int file, int operation), (file, operation))
TILORA_FAILING_CALL(rename, ENOSPC, (const char* from, const char* to), (from, to))
TILORA_FAILING_CALL(unlink, EACCES, (const char* path), (path))
TILORA_FAILING_CALL(mkdir, ENOSPC, (const char* path, mode_t mode), (path, mode))
TILORA_FAILING_CALL(pipe, EMFILE, (int* ends), (ends))
TILORA_FAILING_CALL(poll, ENOMEM, (pollfd * entries, nfds_t count, int timeout), (entries, count, timeout))

}  // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name,bugprone-macro-parentheses)
