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
#include <string>

#include "harness/process.h"

namespace tilora::harness {

/// Counts of one client's traffic since it connected.
struct Traffic {
  /// By major opcode.
  std::array<int, 256> requests{};
  int replies = 0;

  int allRequests() const;
};

/// Listens to every client that connects from its construction on, over connections of its own.
class WireTap {
 public:
  /// Listens to everything, or only to the core requests of one major opcode. Throws std::runtime_error when the server does not let it.
  explicit WireTap(const std::string& display, std::optional<std::uint8_t> opcode = {});
  WireTap(const WireTap&) = delete;
  WireTap& operator=(const WireTap&) = delete;
  ~WireTap();

  /// The traffic of the client that made `resource`, as far as it has been told.
  const Traffic& of(std::uint32_t resource);
  /// Waits until `holds` answers true: asked now and again whenever more has been told. False when the deadline passes first.
  bool waitUntil(const std::function<bool()>& holds, std::chrono::milliseconds deadline = defaultDeadline);

 private:
  void take();
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
