// What other clients say to the X server and get from it, told by the server itself (the RECORD extension).
#pragma once

#include <xcb/record.h>
#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "harness/process.h"

namespace tilora::harness {

/// An error that the server sent to a client, as it stands in the message.
struct WireError {
  std::uint8_t code = 0;
  std::uint8_t majorOpcode = 0;
  std::uint16_t minorOpcode = 0;
  /// The resource, atom or number that was wrong.
  std::uint32_t badValue = 0;
};

/// Counts of one client's traffic since it connected.
struct Traffic {
  /// By major opcode.
  std::array<int, 256> requests{};
  int replies = 0;
  std::vector<WireError> errors = {};
  /// Which of the clients with these numbers it is, from 1 on, and whether its connection is closed.
  int connection = 0;
  bool ended = false;

  int allRequests() const;
};

/// Listens to every client that connects from its construction on, over connections of its own.
class WireTap {
 public:
  /// Listens to everything, or only to the core requests of one major opcode and to errors. Throws std::runtime_error when the server does
  /// not let it.
  explicit WireTap(const std::string& display, std::optional<std::uint8_t> opcode = {});
  WireTap(const WireTap&) = delete;
  WireTap& operator=(const WireTap&) = delete;
  ~WireTap();

  /// The traffic of the client that made `resource`, as far as it has been told: of the last one, where several had the same numbers one
  /// after the other.
  const Traffic& of(std::uint32_t resource);
  /// Waits until `holds` answers true: asked now and again whenever more has been told. False when the deadline passes first.
  bool waitUntil(const std::function<bool()>& holds, std::chrono::milliseconds deadline = defaultDeadline);

 private:
  void take();
  static void countMessage(Traffic& traffic, bool isRequest, std::span<const std::uint8_t> message);
  void count(const xcb_record_enable_context_reply_t& told);

  xcb_connection_t* control_;
  xcb_connection_t* data_;
  xcb_record_context_t context_ = 0;
  unsigned int sequence_ = 0;
  std::uint32_t resourceMask_ = 0;
  bool begun_ = false;
  std::map<std::uint32_t, Traffic> clients_;
};

}  // namespace tilora::harness
