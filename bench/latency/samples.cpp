// Medians, 95th percentiles and their tables.
#include "samples.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <sstream>

namespace tilora::latency {
namespace {

constexpr double median = 0.5;
constexpr double nearlyAll = 0.95;
const std::string tiloraPrefix = "Tilora on ";
const std::string floorPrefix = "bare client on ";

std::vector<double> firsts(const Samples& samples) {
  std::vector<double> values;
  for (const Sample& sample : samples.all) values.push_back(sample.first);
  return values;
}

std::vector<double> lasts(const Samples& samples) {
  std::vector<double> values;
  for (const Sample& sample : samples.all) values.push_back(sample.last);
  return values;
}

const Samples* find(const std::map<std::string, Samples>& byName, const std::string& name) {
  const auto found = byName.find(name);
  return found == byName.end() || found->second.all.empty() ? nullptr : &found->second;
}

/// The samples that a contestant is compared with; null: with none.
const Samples* floorOf(const std::map<std::string, Samples>& byName, const std::string& name) {
  return name.starts_with(tiloraPrefix) ? find(byName, floorPrefix + name.substr(tiloraPrefix.size())) : nullptr;
}

void addRow(std::ostream& text, const std::map<std::string, Samples>& byName, const std::string& name) {
  const Samples* samples = find(byName, name);
  const auto entry = byName.find(name);
  if (entry == byName.end()) return;
  text << "| " << name << " |";
  if (samples == nullptr) {
    text << " | | | | | 0 | " << entry->second.missed << " |\n";
    return;
  }
  text << std::fixed << std::setprecision(2);
  for (const auto& values : {firsts(*samples), lasts(*samples)}) {
    text << ' ' << quantile(values, median) << " | " << quantile(values, nearlyAll) << " |";
  }
  text << ' ';
  if (const Samples* floor = floorOf(byName, name)) {
    text << quantile(firsts(*samples), median) / quantile(firsts(*floor), median) << " / "
         << quantile(lasts(*samples), median) / quantile(lasts(*floor), median);
  }
  text << " | " << samples->all.size() << " | " << samples->missed << " |\n";
}

void addOwnShare(std::ostream& text, const Results& results, const std::vector<std::string>& names) {
  std::ostringstream rows;
  rows << std::fixed << std::setprecision(3);
  for (const std::string& name : names) {
    for (const auto& [action, byName] : results) {
      const Samples* samples = find(byName, name);
      if (samples == nullptr || samples->ownShare.empty()) continue;
      rows << "| " << name << ", " << nameOf(action) << " | " << quantile(samples->ownShare, median) << " | "
           << quantile(samples->ownShare, nearlyAll) << " | " << samples->ownShare.size() << " |\n";
    }
  }
  if (rows.str().empty()) return;
  text << "## Tilora's own share\n\n| | median | 95 % | presses |\n|---|--:|--:|--:|\n" << rows.str() << "\n";
}

}  // namespace

const char* nameOf(Action action) {
  switch (action) {
    case Action::move:
      return "Move";
    case Action::exchange:
      return "Pair exchange";
    case Action::restore:
      return "Restore";
  }
  return "";
}

double quantile(std::vector<double> values, double share) {
  std::sort(values.begin(), values.end());
  const auto rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(values.size())));
  return values[std::max<std::size_t>(rank, 1) - 1];
}

std::string tables(const Results& results, const std::vector<std::string>& names) {
  std::ostringstream text;
  for (const Action action : actions) {
    const auto byName = results.find(action);
    if (byName == results.end()) continue;
    text << "## " << nameOf(action) << "\n\n"
         << "| | first, median | first, 95 % | last, median | last, 95 % | first / last to floor | presses | without effect |\n"
         << "|---|--:|--:|--:|--:|--:|--:|--:|\n";
    for (const std::string& name : names) addRow(text, byName->second, name);
    text << "\n";
  }
  addOwnShare(text, results, names);
  return text.str();
}

}  // namespace tilora::latency
