// Markdown tables of medians and 95th percentiles.
#pragma once

#include <string>
#include <vector>

#include "figures/record.h"

namespace tilora::bench {

/// A table of texts; every row has as many as the head. The first column is of names, the others of figures.
struct Table {
  std::vector<std::string> head;
  std::vector<std::vector<std::string>> rows;
};

/// Ends with an empty line.
std::string markdown(const Table& table);

/// A number with so many digits behind the point.
std::string number(double value, int digits);

/// "median (95th percentile)" of what was measured; "failed" when it came to nothing, with a "*" behind the figures when not every round
/// did, and
/// "-" when nobody tried.
std::string cell(const Record& record, const std::string& program, int windows, const std::string& measure, int digits);

/// A row for each program that the record knows of, a column for each number of windows.
Table byCrowd(const Record& record, const std::vector<std::string>& programs, const std::string& measure, int digits);

/// The median of a program by that of its floor; empty without one of them.
std::optional<double> toFloor(const Record& record, const std::string& host, int windows, const std::string& measure);

}  // namespace tilora::bench
