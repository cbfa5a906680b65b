// The description of the latest release.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tilora::updater {

/// The record of the feed. Texts are UTF-8.
struct Updater {
  std::string product;
  std::string version;
  /// The path of the download, relative to the address that the feed lies under.
  std::string file;

  bool operator==(const Updater&) const = default;
};

/// What a feed says, or in one line why it was not understood.
struct DecodedFeed {
  std::optional<Updater> updater;
  std::string error;
};

/// `body` has to be a JSON object in UTF-8 in which all three are strings; what else it has does not matter.
DecodedFeed decodeFeed(std::string_view body);

}  // namespace tilora::updater
