// Addresses that are put together from texts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tilora::updater {

/// `text` as an address in the characters that an address may have (RFC 3986, with or without a scheme), as URL(string:) reads it: what may
/// not stand in a path, a query or a fragment is percent-encoded, byte by byte; an encoded byte stays as it is. Nothing when the text is
/// empty, or its scheme, host or port is not one; a host is ASCII.
std::optional<std::string> encodedAddress(std::string_view text);

}  // namespace tilora::updater
