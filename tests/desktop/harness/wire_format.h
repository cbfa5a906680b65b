// Lengths and numbers in the messages of the X protocol, in this machine's byte order (X Window System Protocol, version 11, appendix B).
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace tilora::harness {

/// Requests and replies count their length in units of so many bytes.
inline constexpr std::size_t wireUnit = 4;
/// The bytes of an event, of an error, and of a reply before what it counts as its length.
inline constexpr std::size_t messageHead = 32;

/// The number that begins `place` bytes into a message; 0 where the message is too short for it.
template <class Number>
std::size_t numberAt(std::span<const std::uint8_t> bytes, std::size_t place) {
  Number number = 0;
  if (place + sizeof(number) <= bytes.size()) std::memcpy(&number, bytes.data() + place, sizeof(number));
  return number;
}

/// The bytes of the request that begins with `bytes`; 0 where they are too few to tell.
inline std::size_t requestLength(std::span<const std::uint8_t> bytes) {
  const std::size_t units = numberAt<std::uint16_t>(bytes, 2);
  return wireUnit * (units != 0 ? units : numberAt<std::uint32_t>(bytes, 4));
}

}  // namespace tilora::harness
