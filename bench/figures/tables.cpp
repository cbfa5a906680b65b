// Cells, rows and columns.
#include "figures/tables.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

#include "figures/programs.h"
#include "figures/statistics.h"

namespace tilora::bench {
namespace {

std::string row(const std::vector<std::string>& cells) {
  std::string line = "|";
  for (const std::string& text : cells) line += " " + text + " |";
  return line + "\n";
}

bool knows(const Record& record, const std::string& program) {
  return std::any_of(record.entries.begin(), record.entries.end(), [&](const Entry& entry) { return entry.program == program; });
}

}  // namespace

std::string markdown(const Table& table) {
  std::string text = row(table.head) + "|---|";
  for (std::size_t column = 1; column < table.head.size(); ++column) text += "--:|";
  text += "\n";
  for (const auto& cells : table.rows) text += row(cells);
  return text + "\n";
}

std::string number(double value, int digits) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(digits) << value;
  return text.str();
}

std::string cell(const Record& record, const std::string& program, int windows, const std::string& measure, int digits) {
  const std::vector<double> values = record.values(program, windows, measure);
  const bool failed = !record.failure(program, windows, measure).empty();
  if (values.empty()) return failed ? "failed" : "-";
  return number(quantile(values, median), digits) + " (" + number(quantile(values, nearlyAll), digits) + ")" + (failed ? "*" : "");
}

Table byCrowd(const Record& record, const std::vector<std::string>& programs, const std::string& measure, int digits) {
  Table table{{""}, {}};
  for (const int windows : record.crowds()) table.head.push_back(std::to_string(windows) + " windows");
  for (const std::string& program : programs) {
    if (!knows(record, program)) continue;
    auto& cells = table.rows.emplace_back(std::vector<std::string>{program});
    for (const int windows : record.crowds()) cells.push_back(cell(record, program, windows, measure, digits));
  }
  return table;
}

std::optional<double> toFloor(const Record& record, const std::string& host, int windows, const std::string& measure) {
  const std::vector<double> own = record.values(tiloraOn(host), windows, measure);
  const std::vector<double> floor = record.values(floorOn(host), windows, measure);
  if (own.empty() || floor.empty()) return std::nullopt;
  return quantile(own, median) / quantile(floor, median);
}

}  // namespace tilora::bench
