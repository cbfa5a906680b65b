// Reading what the RECORD extension tells.
#include "harness/wire_tap.h"

#include <xcb/xcbext.h>

#include <cstdlib>
#include <numeric>
#include <span>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "harness/reply.h"
#include "harness/wire_format.h"

namespace tilora::harness {

namespace {

constexpr std::uint8_t fromServer = 0;
constexpr std::uint8_t fromClient = 1;
constexpr std::uint8_t clientStarted = 2;
constexpr std::uint8_t clientDied = 3;
constexpr std::uint8_t startOfData = 4;
constexpr std::uint8_t errorMessage = 0;

/// The major opcode of GLX; 0 when the server has none.
std::uint8_t glxOpcode(xcb_connection_t* connection) {
  const std::string_view name = "GLX";
  const auto cookie = xcb_query_extension(connection, static_cast<std::uint16_t>(name.size()), name.data());
  const Reply<xcb_query_extension_reply_t> reply(xcb_query_extension_reply(connection, cookie, nullptr));
  return reply && reply->present != 0 ? reply->major_opcode : std::uint8_t{0};
}

xcb_record_range_t extensions(std::uint8_t first, std::uint8_t last) {
  xcb_record_range_t range{};
  range.ext_requests = {{first, last}, {0, 65535}};
  range.ext_replies = range.ext_requests;
  return range;
}

/// Everything but GLX: what Xvfb 21.1 tells of that is malformed.
std::vector<xcb_record_range_t> everything(xcb_connection_t* connection) {
  const std::uint8_t glx = glxOpcode(connection);
  xcb_record_range_t core{};
  core.core_requests = {1, 127};
  core.core_replies = {1, 127};
  std::vector<xcb_record_range_t> ranges = {core};
  if (glx > 128) ranges.push_back(extensions(128, static_cast<std::uint8_t>(glx - 1)));
  ranges.push_back(extensions(glx == 0 ? std::uint8_t{128} : static_cast<std::uint8_t>(glx + 1), 255));
  return ranges;
}

std::vector<xcb_record_range_t> justRequests(std::uint8_t opcode) {
  xcb_record_range_t range{};
  range.core_requests = {opcode, opcode};
  return {range};
}

/// The clients' beginnings and ends, and all errors.
xcb_record_range_t lives() {
  xcb_record_range_t range{};
  range.errors = {1, 255};
  range.client_started = 1;
  range.client_died = 1;
  return range;
}

void createContext(xcb_connection_t* connection, xcb_record_context_t context, const std::vector<xcb_record_range_t>& ranges) {
  const xcb_record_client_spec_t clients = XCB_RECORD_CS_FUTURE_CLIENTS;
  const auto cookie =
      xcb_record_create_context_checked(connection, context, 0, 1, static_cast<std::uint32_t>(ranges.size()), &clients, ranges.data());
  const Reply<xcb_generic_error_t> error(xcb_request_check(connection, cookie));
  if (error != nullptr) throw std::runtime_error("the X server does not record");
}

}  // namespace

int Traffic::allRequests() const { return std::accumulate(requests.begin(), requests.end(), 0); }

WireTap::WireTap(const std::string& display, std::optional<std::uint8_t> opcode)
    : control_(xcb_connect(display.c_str(), nullptr)), data_(xcb_connect(display.c_str(), nullptr)) {
  if (xcb_connection_has_error(control_) != 0 || xcb_connection_has_error(data_) != 0)
    throw std::runtime_error("no X server at " + display);
  resourceMask_ = xcb_get_setup(control_)->resource_id_mask;
  context_ = xcb_generate_id(control_);
  auto ranges = opcode ? justRequests(*opcode) : everything(control_);
  ranges.push_back(lives());
  createContext(control_, context_, ranges);
  sequence_ = xcb_record_enable_context(data_, context_).sequence;
  xcb_flush(data_);
  if (!waitUntil([this] { return begun_; })) throw std::runtime_error("the X server does not record");
}

WireTap::~WireTap() {
  xcb_disconnect(data_);
  xcb_disconnect(control_);
}

const Traffic& WireTap::of(std::uint32_t resource) { return clients_[resource & ~resourceMask_]; }

void WireTap::countMessage(Traffic& traffic, bool isRequest, std::span<const std::uint8_t> message) {
  if (isRequest) {
    ++traffic.requests.at(message.front());
  } else if (message.front() != errorMessage) {
    ++traffic.replies;
  } else if (message.size() >= messageHead) {
    traffic.errors.push_back({.code = message[1],
                              .majorOpcode = message[10],
                              .minorOpcode = static_cast<std::uint16_t>(numberAt<std::uint16_t>(message, 8)),
                              .badValue = static_cast<std::uint32_t>(numberAt<std::uint32_t>(message, 4))});
  }
}

void WireTap::count(const xcb_record_enable_context_reply_t& told) {
  if (told.category == startOfData) begun_ = true;
  Traffic& traffic = clients_[told.xid_base & ~resourceMask_];
  if (told.category == clientStarted) traffic = {.connection = traffic.connection + 1};
  if (told.category == clientDied) traffic.ended = true;
  if (told.category != fromServer && told.category != fromClient) return;
  std::span<const std::uint8_t> bytes(xcb_record_enable_context_data(&told),
                                      static_cast<std::size_t>(xcb_record_enable_context_data_length(&told)));
  while (!bytes.empty()) {
    const bool isRequest = told.category == fromClient;
    const bool isError = !isRequest && bytes.front() == errorMessage;
    const std::size_t length =
        isRequest ? requestLength(bytes) : messageHead + (isError ? 0 : wireUnit * numberAt<std::uint32_t>(bytes, 4));
    countMessage(traffic, isRequest, bytes);
    if (length == 0 || length > bytes.size()) return;
    bytes = bytes.subspan(length);
  }
}

void WireTap::take() {
  void* answer = nullptr;
  xcb_generic_error_t* error = nullptr;
  while (xcb_poll_for_reply(data_, sequence_, &answer, &error) != 0 && answer != nullptr) {
    const Reply<xcb_record_enable_context_reply_t> told(static_cast<xcb_record_enable_context_reply_t*>(answer));
    count(*told);
  }
  std::free(error);
}

bool WireTap::waitUntil(const std::function<bool()>& holds, std::chrono::milliseconds deadline) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  while (true) {
    take();
    if (holds()) return true;
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    if (left.count() <= 0 || xcb_connection_has_error(data_) != 0 || !waitReadable(xcb_get_file_descriptor(data_), left)) return false;
  }
}

}  // namespace tilora::harness
