// Lines of the data, there and back.
#include "figures/record.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <istream>
#include <set>
#include <sstream>

namespace tilora::bench {
namespace {

constexpr std::string_view factMark = "# ";
constexpr std::string_view factEnd = ": ";
constexpr std::string_view failureMark = "failed: ";
constexpr std::size_t columns = 5;

/// A text that is one field of one line.
std::string field(std::string text) {
  for (char& character : text) {
    if (character == ',') character = ';';
    if (character == '\n' || character == '\r') character = ' ';
  }
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text;
}

std::string shortNumber(double number) {
  std::array<char, 32> text{};
  // A microsecond, of milliseconds; a hundred-thousandth of a per cent.
  const int length = std::snprintf(text.data(), text.size(), number < 0.1 ? "%.5f" : "%.3f", number);
  std::string result(text.data(), static_cast<std::size_t>(length));
  while (result.back() == '0') result.pop_back();
  if (result.back() == '.') result.pop_back();
  return result;
}

std::optional<int> wholeNumber(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::optional<std::vector<double>> numbers(std::string_view text) {
  std::vector<double> values;
  std::istringstream words{std::string(text)};
  for (double value = 0; words >> value;) values.push_back(value);
  if (!words.eof()) return std::nullopt;
  return values;
}

std::vector<std::string_view> fields(std::string_view line) {
  std::vector<std::string_view> found;
  while (found.size() + 1 < columns) {
    const auto comma = line.find(',');
    if (comma == std::string_view::npos) break;
    found.push_back(line.substr(0, comma));
    line.remove_prefix(comma + 1);
  }
  found.push_back(line);
  return found;
}

bool concerns(const Entry& entry, const std::string& program, int windows, const std::string& measure) {
  return entry.program == program && entry.windows == windows && entry.measure == measure;
}

}  // namespace

std::string lineOf(const Entry& entry) {
  std::string line =
      std::to_string(entry.round) + "," + field(entry.program) + "," + std::to_string(entry.windows) + "," + entry.measure + ",";
  if (!entry.failure.empty()) return line + std::string(failureMark) + field(entry.failure);
  for (const double value : entry.values) line += (line.back() == ',' ? "" : " ") + shortNumber(value);
  return line;
}

std::optional<Entry> entryOf(std::string_view line) {
  const auto found = fields(line);
  if (found.size() != columns) return std::nullopt;
  const auto round = wholeNumber(found[0]);
  const auto windows = wholeNumber(found[2]);
  if (!round || !windows) return std::nullopt;
  Entry entry{*round, std::string(found[1]), *windows, std::string(found[3]), {}, {}};
  if (found[4].starts_with(failureMark)) {
    entry.failure = found[4].substr(failureMark.size());
    return entry;
  }
  const auto values = numbers(found[4]);
  if (!values) return std::nullopt;
  entry.values = *values;
  return entry;
}

std::string lineOf(const std::string& factName, const std::string& text) {
  std::string line = text;
  std::replace(line.begin(), line.end(), '\n', ' ');
  return std::string(factMark) + factName + std::string(factEnd) + line;
}

std::string headLine() { return "round,program,windows,measure,values"; }

std::string Record::fact(const std::string& name) const {
  const auto found = std::find_if(facts.begin(), facts.end(), [&](const auto& fact) { return fact.first == name; });
  return found == facts.end() ? std::string() : found->second;
}

std::vector<double> Record::values(const std::string& program, int windows, const std::string& measure) const {
  std::vector<double> all;
  for (const Entry& entry : entries) {
    if (concerns(entry, program, windows, measure)) all.insert(all.end(), entry.values.begin(), entry.values.end());
  }
  return all;
}

std::string Record::failure(const std::string& program, int windows, const std::string& measure) const {
  for (const Entry& entry : entries) {
    if (concerns(entry, program, windows, measure) && !entry.failure.empty()) return entry.failure;
  }
  return {};
}

std::vector<int> Record::crowds() const {
  std::set<int> all;
  for (const Entry& entry : entries) all.insert(entry.windows);
  return {all.begin(), all.end()};
}

Record readRecord(std::istream& data) {
  Record record;
  for (std::string line; std::getline(data, line);) {
    if (line.starts_with(factMark)) {
      const auto end = line.find(factEnd);
      if (end == std::string::npos) continue;
      record.facts.emplace_back(line.substr(factMark.size(), end - factMark.size()), line.substr(end + factEnd.size()));
    } else if (auto entry = entryOf(line)) {
      record.entries.push_back(std::move(*entry));
    }
  }
  return record;
}

}  // namespace tilora::bench
