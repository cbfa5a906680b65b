// What holds of any body that a feed may have, in the form that libFuzzer calls.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "checks.h"
#include "updater/address.h"
#include "updater/feed.h"
#include "updater/update_alert.h"

namespace {

using tilora::fuzz::isUtf8;
using tilora::fuzz::require;
using tilora::updater::alertFor;
using tilora::updater::decodeFeed;
using tilora::updater::encodedAddress;

constexpr std::string_view site = "https://releases.invalid/tilora/";
/// Of the fixed text of the alert and a hundred characters of up to four bytes, with an ellipsis.
constexpr std::size_t mostBytesOfAlert = 500;

bool hasNoControls(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
}

bool isVisibleAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c > 0x20 && c < 0x7F; });
}

void checkAddress(std::string_view file) {
  const auto address = encodedAddress(std::string(site).append(file));
  require(address.has_value());
  require(address->substr(0, site.size()) == site);
  require(isVisibleAscii(*address));
  require(encodedAddress(*address) == address);
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming): the name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string body(data, data + size);
  const auto feed = decodeFeed(body);
  require(feed.updater.has_value() == feed.error.empty());
  require(hasNoControls(feed.error) && feed.error.size() < 100);
  if (feed.updater) {
    require(isUtf8(feed.updater->product) && isUtf8(feed.updater->version) && isUtf8(feed.updater->file));
    checkAddress(feed.updater->file);
    const auto alert = alertFor(feed.updater->version);
    require(isUtf8(alert.informativeText) && hasNoControls(alert.informativeText));
    require(alert.informativeText.size() < mostBytesOfAlert);
  }
  // The same rules for texts that no JSON brings.
  checkAddress(body);
  require(hasNoControls(alertFor(body).informativeText));
  if (const auto address = encodedAddress(body)) require(isVisibleAscii(*address));
  return 0;
}
