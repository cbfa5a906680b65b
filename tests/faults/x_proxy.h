// A socket between one program and the X server, which can do what a server does not do at will.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "harness/process.h"

namespace tilora::faults {

/// What happens on the program's first connection: the one that its own code uses.
struct ProxyFault {
  enum class Kind : std::uint8_t { none, cut, error, withhold };

  Kind kind = Kind::none;
  /// The request after which the connection is cut; the reply that an error takes the place of, or that comes late with all after it. From
  /// 1 on.
  int number = 0;
  /// How late.
  std::chrono::milliseconds delay{1500};
};

/// Takes connections from its construction on and hands everything on, until the destructor.
class XProxy {
 public:
  /// `display` is the server's name, ":12" for instance.
  XProxy(const std::string& display, const ProxyFault& fault);
  XProxy(const XProxy&) = delete;
  XProxy& operator=(const XProxy&) = delete;
  ~XProxy();

  /// The name under which the program finds the server.
  const std::string& display() const { return display_; }
  /// Whether the fault has happened.
  bool fired() const { return fired_; }
  /// The major opcode of the request that it happened to.
  int opcode() const { return opcode_; }

 private:
  class Stream;
  void run();
  void accept();

  std::string display_;
  std::string path_;
  std::string server_;
  ProxyFault fault_;
  harness::FileDescriptor listener_;
  harness::Pipe ending_ = harness::Pipe::make();
  std::atomic<bool> fired_ = false;
  std::atomic<int> opcode_ = 0;
  std::vector<std::unique_ptr<Stream>> streams_;
  std::thread thread_;
};

}  // namespace tilora::faults
