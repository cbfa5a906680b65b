// A module that is loaded into Tilora before its libraries, and takes the time from reading a key press to writing the last request of
// the same turn of the event loop: a line of nanoseconds for each press, appended to the file that KEY_SHARE_FILE names.
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <optional>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t unit = 32;
constexpr std::size_t unitOfSetup = 8;
constexpr unsigned char reply = 1;
constexpr unsigned char keyPress = 2;
constexpr unsigned char genericEvent = 35;
constexpr unsigned char sentByClient = 0x80;

/// Follows what the server sends on one connection, message by message (X11 protocol, section 1).
class MessageStream {
 public:
  /// Whether a key press was among the bytes.
  bool take(const unsigned char* bytes, std::size_t count) {
    bool pressed = false;
    while (count > 0) {
      const std::size_t step = std::min(count, rest_ > 0 ? rest_ : headerSize() - header_.size());
      if (rest_ > 0) {
        rest_ -= step;
      } else {
        header_.insert(header_.end(), bytes, bytes + step);
        if (header_.size() == headerSize()) pressed |= endHeader();
      }
      bytes += step;
      count -= step;
    }
    return pressed;
  }

 private:
  /// The first message answers the connection set-up and has another form.
  std::size_t headerSize() const { return isSetUp_ ? unit : unitOfSetup; }

  bool endHeader() {
    if (!isSetUp_) {
      std::uint16_t words = 0;
      std::memcpy(&words, header_.data() + 6, sizeof words);
      rest_ = std::size_t{words} * 4;
      header_.clear();
      isSetUp_ = true;
      return false;
    }
    const unsigned char type = header_.front() & ~sentByClient;
    if (type == reply || type == genericEvent) {
      std::uint32_t words = 0;
      std::memcpy(&words, header_.data() + 4, sizeof words);
      rest_ = std::size_t{words} * 4;
    }
    header_.clear();
    return type == keyPress;
  }

  std::vector<unsigned char> header_;
  std::size_t rest_ = 0;
  bool isSetUp_ = false;
};

std::map<int, MessageStream> streams;
std::optional<Clock::time_point> pressedAt;
std::optional<Clock::time_point> writtenAt;

template <typename Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

void received(int socket, const void* bytes, ssize_t count) {
  if (count <= 0) return;
  const auto now = Clock::now();
  if (!streams[socket].take(static_cast<const unsigned char*>(bytes), static_cast<std::size_t>(count)) || pressedAt) return;
  pressedAt = now;
  writtenAt.reset();
}

void written() {
  if (pressedAt) writtenAt = Clock::now();
}

void turnEnded() {
  if (!pressedAt) return;
  static const int file = open(std::getenv("KEY_SHARE_FILE"), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (writtenAt) dprintf(file, "%lld\n", static_cast<long long>(std::chrono::nanoseconds(*writtenAt - *pressedAt).count()));
  pressedAt.reset();
}

}  // namespace

extern "C" {

ssize_t recvmsg(int socket, msghdr* message, int flags) {
  static auto* const original = next<ssize_t(int, msghdr*, int)>("recvmsg");
  const ssize_t count = original(socket, message, flags);
  if (message->msg_iovlen == 1) received(socket, message->msg_iov[0].iov_base, count);
  return count;
}

ssize_t recv(int socket, void* bytes, size_t size, int flags) {
  static auto* const original = next<ssize_t(int, void*, size_t, int)>("recv");
  const ssize_t count = original(socket, bytes, size, flags);
  received(socket, bytes, count);
  return count;
}

ssize_t writev(int file, const iovec* parts, int count) {
  static auto* const original = next<ssize_t(int, const iovec*, int)>("writev");
  const ssize_t result = original(file, parts, count);
  written();
  return result;
}

/// The client library waits on its one connection; the event loop on several descriptors.
int poll(pollfd* files, nfds_t count, int timeout) {
  static auto* const original = next<int(pollfd*, nfds_t, int)>("poll");
  if (count > 1 && timeout != 0) turnEnded();
  return original(files, count, timeout);
}

int ppoll(pollfd* files, nfds_t count, const timespec* timeout, const sigset_t* mask) {
  static auto* const original = next<int(pollfd*, nfds_t, const timespec*, const sigset_t*)>("ppoll");
  const bool waits = timeout == nullptr || timeout->tv_sec != 0 || timeout->tv_nsec != 0;
  if (count > 1 && waits) turnEnded();
  return original(files, count, timeout, mask);
}
}
