// Following the X protocol far enough to count requests and replies.
#include "x_proxy.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <map>
#include <memory>
#include <stdexcept>
#include <utility>

#include "harness/wire_format.h"

namespace tilora::faults {
namespace {

using harness::messageHead;
using harness::numberAt;
using harness::wireUnit;

using Clock = std::chrono::steady_clock;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t errorMessage = 0;
constexpr std::uint8_t replyMessage = 1;
constexpr std::uint8_t genericEvent = 35;
constexpr std::uint8_t badAlloc = 11;

std::size_t padded(std::size_t length) { return (length + wireUnit - 1) / wireUnit * wireUnit; }

sockaddr_un addressOf(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(static_cast<char*>(address.sun_path), sizeof(address.sun_path) - 1);
  return address;
}

/// Where the server of a display listens.
std::string socketOf(const std::string& display) { return "/tmp/.X11-unix/X" + display.substr(1); }

bool sendAll(int file, const Bytes& bytes) {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t count = ::send(file, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    sent += static_cast<std::size_t>(count);
  }
  return true;
}

}  // namespace

/// One connection of the program and its continuation to the server.
class XProxy::Stream {
 public:
  Stream(XProxy& proxy, harness::FileDescriptor client, harness::FileDescriptor server, bool isFirst)
      : proxy_(proxy), client_(std::move(client)), server_(std::move(server)), isFirst_(isFirst) {}

  int client() const { return client_.number(); }
  /// None while the replies are withheld.
  int server() const { return Clock::now() < heldUntil_ ? -1 : server_.number(); }
  bool isHeld() const { return Clock::now() < heldUntil_; }

  /// False: the connection is at its end.
  bool takeFromClient() {
    Bytes bytes;
    if (!receive(client_.number(), bytes)) return false;
    if (!isFirst_) return sendAll(server_.number(), bytes);
    requests_.insert(requests_.end(), bytes.begin(), bytes.end());
    while (const std::size_t length = requestLength()) {
      const Bytes request(requests_.begin(), requests_.begin() + static_cast<std::ptrdiff_t>(length));
      requests_.erase(requests_.begin(), requests_.begin() + static_cast<std::ptrdiff_t>(length));
      if (!sendAll(server_.number(), request)) return false;
      if (!std::exchange(clientIsSetUp_, true)) continue;
      ++sequence_;
      opcodes_[static_cast<std::uint16_t>(sequence_)] = request.front();
      if (is(ProxyFault::Kind::cut, sequence_)) {
        fire(request.front());
        return false;
      }
    }
    return true;
  }

  bool takeFromServer() {
    Bytes bytes;
    if (!receive(server_.number(), bytes)) return false;
    if (!isFirst_) return sendAll(client_.number(), bytes);
    answers_.insert(answers_.end(), bytes.begin(), bytes.end());
    return deliver();
  }

  /// Hands on what was withheld, once it is time.
  bool release() { return !isCounted_ || isHeld() || deliver(); }
  void close() {
    client_.close();
    server_.close();
  }

 private:
  bool deliver() {
    while (const std::size_t length = answerLength()) {
      Bytes answer(answers_.begin(), answers_.begin() + static_cast<std::ptrdiff_t>(length));
      if (std::exchange(serverIsSetUp_, true) && answer.front() == replyMessage && !isCounted_) {
        ++replies_;
        if (is(ProxyFault::Kind::withhold, replies_)) {
          fire(opcodeOf(answer));
          heldUntil_ = Clock::now() + proxy_.fault_.delay;
          isCounted_ = true;
          return true;
        }
        if (is(ProxyFault::Kind::error, replies_)) {
          fire(opcodeOf(answer));
          answer = errorInPlaceOf(answer);
        }
      }
      isCounted_ = false;
      answers_.erase(answers_.begin(), answers_.begin() + static_cast<std::ptrdiff_t>(length));
      if (!sendAll(client_.number(), answer)) return false;
    }
    return true;
  }

  bool is(ProxyFault::Kind kind, int number) const { return proxy_.fault_.kind == kind && proxy_.fault_.number == number; }
  void fire(int opcode) {
    proxy_.opcode_ = opcode;
    proxy_.fired_ = true;
  }
  int opcodeOf(const Bytes& answer) { return opcodes_[static_cast<std::uint16_t>(numberAt<std::uint16_t>(answer, 2))]; }

  Bytes errorInPlaceOf(const Bytes& reply) {
    Bytes error(messageHead, 0);
    error[0] = errorMessage;
    error[1] = badAlloc;
    std::copy_n(reply.begin() + 2, 2, error.begin() + 2);
    error[10] = static_cast<std::uint8_t>(opcodeOf(reply));
    return error;
  }

  static bool receive(int file, Bytes& to) {
    std::array<std::uint8_t, 65536> part{};
    const ssize_t count = ::recv(file, part.data(), part.size(), 0);
    if (count < 0 && errno == EINTR) return true;
    if (count <= 0) return false;
    to.assign(part.begin(), part.begin() + count);
    return true;
  }

  /// The length of the first whole message of the program; 0: there is none yet.
  std::size_t requestLength() const {
    constexpr std::size_t setupHead = 12;
    std::size_t length = 0;
    if (!clientIsSetUp_) {
      if (requests_.size() < setupHead) return 0;
      length = setupHead + padded(numberAt<std::uint16_t>(requests_, 6)) + padded(numberAt<std::uint16_t>(requests_, 8));
    } else {
      length = harness::requestLength(requests_);
      if (length == 0) return 0;
    }
    return requests_.size() < length ? 0 : length;
  }

  std::size_t answerLength() const {
    constexpr std::size_t setupHead = 8;
    std::size_t length = messageHead;
    if (!serverIsSetUp_) {
      if (answers_.size() < setupHead) return 0;
      length = setupHead + wireUnit * numberAt<std::uint16_t>(answers_, 6);
    } else {
      if (answers_.size() < messageHead) return 0;
      if (answers_.front() == replyMessage || (answers_.front() & 0x7fU) == genericEvent)
        length += wireUnit * numberAt<std::uint32_t>(answers_, 4);
    }
    return answers_.size() < length ? 0 : length;
  }

  XProxy& proxy_;
  harness::FileDescriptor client_;
  harness::FileDescriptor server_;
  bool isFirst_;
  Bytes requests_;
  Bytes answers_;
  bool clientIsSetUp_ = false;
  bool serverIsSetUp_ = false;
  bool isCounted_ = false;
  int sequence_ = 0;
  int replies_ = 0;
  std::map<std::uint16_t, int> opcodes_;
  Clock::time_point heldUntil_{};
};

XProxy::XProxy(const std::string& display, const ProxyFault& fault) : server_(socketOf(display)), fault_(fault) {
  listener_ = harness::FileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  constexpr int firstNumber = 400, lastNumber = 900, waiting = 16;
  for (int number = firstNumber; number <= lastNumber && path_.empty(); ++number) {
    const std::string name = ":" + std::to_string(number);
    const sockaddr_un address = addressOf(socketOf(name));
    if (::bind(listener_.number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) continue;
    display_ = name;
    path_ = socketOf(name);
  }
  if (path_.empty() || ::listen(listener_.number(), waiting) != 0) throw std::runtime_error("no socket for a display");
  thread_ = std::thread([this] { run(); });
}

XProxy::~XProxy() {
  ending_.writer.close();
  thread_.join();
  ::unlink(path_.c_str());
}

void XProxy::accept() {
  harness::FileDescriptor client(::accept4(listener_.number(), nullptr, nullptr, SOCK_CLOEXEC));
  harness::FileDescriptor server(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const sockaddr_un address = addressOf(server_);
  if (!client || ::connect(server.number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) return;
  streams_.push_back(std::make_unique<Stream>(*this, std::move(client), std::move(server), streams_.empty()));
}

void XProxy::run() {
  constexpr int whileHeld = 20;
  std::vector<Stream*> open;
  while (true) {
    std::vector<pollfd> entries = {{ending_.reader.number(), POLLIN, 0}, {listener_.number(), POLLIN, 0}};
    bool held = false;
    for (const Stream* stream : open) {
      entries.push_back({stream->client(), POLLIN, 0});
      entries.push_back({stream->server(), POLLIN, 0});
      held |= stream->isHeld();
    }
    if (::poll(entries.data(), entries.size(), held ? whileHeld : -1) < 0 && errno != EINTR) return;
    if (entries[0].revents != 0) return;
    std::vector<Stream*> staying;
    for (std::size_t index = 0; index < open.size(); ++index) {
      const bool good = (entries[2 + 2 * index].revents == 0 || open[index]->takeFromClient()) &&
                        (entries[3 + 2 * index].revents == 0 || open[index]->takeFromServer()) && open[index]->release();
      if (good) {
        staying.push_back(open[index]);
      } else {
        open[index]->close();
      }
    }
    open = std::move(staying);
    if (entries[1].revents != 0) {
      const std::size_t before = streams_.size();
      accept();
      if (streams_.size() > before) open.push_back(streams_.back().get());
    }
  }
}

}  // namespace tilora::faults
