// Decoding the feed without trusting it.
#include "updater/feed.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace tilora::updater {
namespace {

using Json = nlohmann::json;

DecodedFeed failure(std::string why) { return {.updater = std::nullopt, .error = std::move(why)}; }

/// Moves the string under `key` into `text`; otherwise says what is wrong.
std::optional<std::string> take(Json& object, const char* key, std::string& text) {
  const auto member = object.find(key);
  if (member == object.end()) return std::string("the feed has no \"") + key + "\".";
  if (!member->is_string()) return std::string("\"") + key + "\" of the feed is not a string.";
  text = std::move(member->get_ref<std::string&>());
  return std::nullopt;
}

}  // namespace

DecodedFeed decodeFeed(std::string_view body) {
  if (body.empty()) return failure("the feed is empty.");
  if (body.find('\0') != std::string_view::npos) return failure("the feed is not JSON.");  // the parser takes it for the end
  try {
    Json object = Json::parse(body);
    if (!object.is_object()) return failure("the feed is not a JSON object.");
    Updater updater;
    if (auto error = take(object, "product", updater.product)) return failure(std::move(*error));
    if (auto error = take(object, "version", updater.version)) return failure(std::move(*error));
    if (auto error = take(object, "file", updater.file)) return failure(std::move(*error));
    return {.updater = std::move(updater), .error = {}};
  } catch (const Json::parse_error& error) {
    // The parser's own words repeat what it read.
    return failure("the feed is not JSON, from byte " + std::to_string(error.byte) + " on.");
  } catch (const Json::exception&) {
    return failure("the feed has a number that is too large.");
  }
}

}  // namespace tilora::updater
