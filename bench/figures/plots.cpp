// Lines over the number of windows, and bars over the window managers.
#include "figures/plots.h"

#include <algorithm>
#include <array>
#include <limits>
#include <sstream>
#include <utility>

#include "figures/programs.h"
#include "figures/statistics.h"
#include "figures/tables.h"

namespace tilora::bench {
namespace {

/// Tilora is the thick one; its colours are kept apart by those who see red and green alike (Okabe and Ito).
struct Look {
  const char* color;
  int width;
  int point;
};

Look lookOf(const std::string& program) {
  static const std::vector<std::pair<std::string, Look>> all = {
      {tiloraOn(firstHost), {"#0072B2", 4, 7}}, {floorOn(firstHost), {"#888888", 2, 6}}, {"i3", {"#D55E00", 2, 5}},
      {"bspwm with sxhkd", {"#009E73", 2, 9}},  {"herbstluftwm", {"#CC79A7", 2, 11}},    {"dwm", {"#E69F00", 2, 13}},
      {"awesome", {"#56B4E9", 2, 15}},          {"wmctrl script", {"#000000", 2, 8}},    {"xdotool script", {"#000000", 2, 10}}};
  const auto found = std::find_if(all.begin(), all.end(), [&](const auto& entry) { return entry.first == program; });
  return found == all.end() ? Look{"#888888", 2, 1} : found->second;
}

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

std::string head(const std::string& name, int width, int height) {
  return "set terminal svg size " + std::to_string(width) + "," + std::to_string(height) +
         " enhanced font 'DejaVu Sans,13' background '#ffffff'\nset output '" + name +
         "'\nset encoding utf8\nset border 3 lc rgb '#666666'\nset tics nomirror\nset grid ytics lc rgb '#dddddd' lt 1\n";
}

struct Lines {
  std::string name;
  std::string caption;
  std::string axis;
  std::vector<std::string> programs;
  std::string measure;
  /// What one unit of the measure is on the axis.
  double scale = 1;
  bool logarithmic = true;
};

/// The data of one program as a block: windows, median, 95th percentile. Empty without any.
std::string block(const Record& record, const std::string& program, const Lines& lines) {
  std::ostringstream text;
  for (const int windows : record.crowds()) {
    const std::vector<double> values = record.values(program, windows, lines.measure);
    if (values.empty()) continue;
    text << windows << " " << quantile(values, median) * lines.scale << " " << quantile(values, nearlyAll) * lines.scale << "\n";
  }
  return text.str();
}

/// As much of it as the data takes, with marks at 1, 2, 5, 10 and so on.
std::string logarithmicAxis(const Record& record, const Lines& lines) {
  double lowest = std::numeric_limits<double>::max();
  double highest = 0;
  for (const std::string& program : lines.programs) {
    for (const int windows : record.crowds()) {
      const std::vector<double> values = record.values(program, windows, lines.measure);
      if (values.empty()) continue;
      lowest = std::min(lowest, quantile(values, median) * lines.scale);
      highest = std::max(highest, quantile(values, median) * lines.scale);
    }
  }
  std::ostringstream text;
  constexpr double margin = 1.3;
  text << "set logscale y\nset yrange [" << lowest / margin << ":" << highest * margin << "]\nset mytics 1\nset ytics (";
  bool isFirst = true;
  for (const double decade : {0.01, 0.1, 1.0, 10.0, 100.0, 1000.0, 10000.0}) {
    for (const int step : {1, 2, 5}) text << (std::exchange(isFirst, false) ? "" : ", ") << decade * step;
  }
  text << ")\n";
  return text.str();
}

std::optional<Plot> plotOf(const Record& record, const Lines& lines) {
  std::ostringstream data;
  std::string drawn;
  int count = 0;
  for (const std::string& program : lines.programs) {
    const std::string points = block(record, program, lines);
    if (points.empty()) continue;
    const std::string name = "$data" + std::to_string(++count);
    data << name << " << END\n" << points << "END\n";
    const Look look = lookOf(program);
    drawn += std::string(drawn.empty() ? "plot " : ", \\\n     ") + name + " using 1:2 with linespoints title " + quoted(program) +
             " lc rgb '" + look.color + "' lw " + std::to_string(look.width) + " pt " + std::to_string(look.point) + " ps 0.8";
  }
  if (count == 0) return std::nullopt;
  std::string ticks;
  for (const int windows : record.crowds())
    ticks += (ticks.empty() ? "" : ", ") + quoted(std::to_string(windows)) + " " + std::to_string(windows);
  const std::vector<int> crowds = record.crowds();
  std::ostringstream script;
  script << head(lines.name, 860, 460) << data.str() << "set logscale x\nset xtics (" << ticks << ")\nset mxtics 1\nset xrange ["
         << crowds.front() / 1.2 << ":" << crowds.back() * 1.2 << "]\nset xlabel 'windows'\nset ylabel " << quoted(lines.axis)
         << "\nset key outside right center reverse Left samplen 2 spacing 1.3\n"
         << (lines.logarithmic ? logarithmicAxis(record, lines) : "set yrange [0:*]\n") << drawn << "\n";
  return Plot{lines.name, lines.caption, script.str()};
}

/// The median on each window manager with a line up to the 95th percentile, beside that of the bare client.
std::optional<Plot> hostPlot(const Record& record) {
  if (record.crowds().empty()) return std::nullopt;
  const int windows = record.crowds().front();
  const std::string measure = measure::move + measure::lastChange;
  std::array<std::string, 2> data;
  std::string names;
  int place = 0;
  for (const std::string& host : hosts) {
    bool any = false;
    for (const bool isFloor : {false, true}) {
      const std::vector<double> values = record.values(isFloor ? floorOn(host) : tiloraOn(host), windows, measure);
      if (values.empty()) continue;
      any = true;
      data.at(isFloor ? 1 : 0) += number(place + (isFloor ? 0.2 : -0.2), 1) + " " + number(quantile(values, median), 3) + " " +
                                  number(quantile(values, nearlyAll), 3) + "\n";
    }
    if (!any) continue;
    names += (names.empty() ? "" : ", ") + quoted(host) + " " + std::to_string(place);
    ++place;
  }
  if (data[0].empty() || data[1].empty()) return std::nullopt;
  const std::string name = "hosts.svg";
  std::ostringstream script;
  script << head(name, 860, 400) << "$tilora << END\n"
         << data[0] << "END\n$floor << END\n"
         << data[1] << "END\nset boxwidth 0.36\nset style fill solid\n"
         << "set xtics (" << names << ")\nset xrange [-0.6:" << place - 0.4
         << "]\nset yrange [0:*]\nset ylabel 'milliseconds to the last change'\n"
         << "set key outside top left reverse Left horizontal samplen 2\n"
         << "plot $tilora using 1:2 with boxes lc rgb '#0072B2' title 'Tilora', $floor using 1:2 with boxes lc rgb '#bbbbbb' title 'bare "
            "client', \\\n"
         << "     $tilora using 1:2:(0):($3-$2) with vectors nohead lw 1.5 lc rgb '#333333' title 'to the 95th percentile', \\\n"
         << "     $floor using 1:2:(0):($3-$2) with vectors nohead lw 1.5 lc rgb '#333333' notitle\n";
  return Plot{name,
              "Milliseconds from the key press to the last change with " + std::to_string(windows) +
                  " windows, for Tilora and the bare client on each window manager",
              script.str()};
}

}  // namespace

std::vector<Plot> plots(const Record& record) {
  std::vector<std::string> moved = {tiloraOn(firstHost), floorOn(firstHost)};
  const std::vector<std::string> others = residents();
  moved.insert(moved.end(), others.begin() + 1, others.end());
  constexpr double megabytes = 1.0 / 1024;
  const std::vector<Lines> all = {
      {"latency.svg", "Milliseconds from the key press to the last change by the number of windows", "milliseconds to the last change",
       moved, measure::move + measure::lastChange, 1, true},
      {"press.svg", "Milliseconds of processor time for a key press by the number of windows", "milliseconds of processor time", others,
       measure::pressCost, 1, true},
      {"idle.svg", "Processor time without anything to do by the number of windows", "per cent of a core", others, measure::idle, 1, false},
      {"memory.svg", "Proportional memory by the number of windows", "megabytes, proportional", others, measure::proportional, megabytes,
       false},
      {"start.svg", "Milliseconds from the start to the first tiled window by the number of windows",
       "milliseconds to the first tiled window", others, measure::start + measure::firstChange, 1, true}};
  std::vector<Plot> drawn;
  if (auto plot = hostPlot(record)) drawn.push_back(std::move(*plot));
  for (const Lines& lines : all) {
    if (auto plot = plotOf(record, lines)) drawn.push_back(std::move(*plot));
  }
  return drawn;
}

}  // namespace tilora::bench
