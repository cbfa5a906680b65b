// Everything that the document says follows from the record, so that no sentence can be older than the figures.
#include "figures/document.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <set>
#include <sstream>

#include "figures/plots.h"
#include "figures/programs.h"
#include "figures/statistics.h"
#include "figures/tables.h"

namespace tilora::bench {
namespace {

constexpr double closeToFloor = 1.3;

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i) text += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
  return text;
}

/// The medians of some programs, the lowest first.
std::vector<std::pair<double, std::string>> ranking(const Record& record, const std::vector<std::string>& programs, int windows,
                                                    const std::string& measure) {
  std::vector<std::pair<double, std::string>> all;
  for (const std::string& program : programs) {
    const std::vector<double> values = record.values(program, windows, measure);
    if (!values.empty()) all.emplace_back(quantile(values, median), program);
  }
  std::sort(all.begin(), all.end());
  return all;
}

std::string ranked(const Record& record, const std::vector<std::string>& programs, int windows, const std::string& measure, int digits) {
  std::vector<std::string> texts;
  for (const auto& [value, program] : ranking(record, programs, windows, measure)) texts.push_back(program + " " + number(value, digits));
  return joined(texts);
}

/// Whether Tilora on the host is sooner than every program that tiles without it.
bool isFirst(const Record& record, const std::string& host, int windows) {
  std::vector<std::string> others(tilers.begin(), tilers.end());
  others.insert(others.end(), scripts.begin(), scripts.end());
  const std::string move = measure::move + measure::lastChange;
  const auto theirs = ranking(record, others, windows, move);
  const auto ours = ranking(record, {tiloraOn(host)}, windows, move);
  return !ours.empty() && !theirs.empty() && ours.front().first < theirs.front().first;
}

/// A sentence on the floor for each number of windows.
std::string floorSentences(const Record& record) {
  std::string text;
  for (const int windows : record.crowds()) {
    std::vector<std::string> within;
    std::vector<std::string> beyond;
    for (const std::string& host : hosts) {
      const auto ratio = toFloor(record, host, windows, measure::move + measure::lastChange);
      if (!ratio) continue;
      std::string& entry = (*ratio <= closeToFloor ? within : beyond).emplace_back(host + " (" + number(*ratio, 2));
      if (*ratio > closeToFloor && isFirst(record, host, windows)) entry += ", before every other program all the same";
      entry += ")";
    }
    if (within.empty() && beyond.empty()) continue;
    text += "- A move with " + std::to_string(windows) + " windows, beside the floor: ";
    text += within.empty() ? "nowhere within 1.3 times of it" : "within 1.3 times of it on " + joined(within);
    text += beyond.empty() ? "" : "; beyond on " + joined(beyond);
    text += ".\n";
  }
  return text;
}

std::vector<std::string> onTop() {
  std::vector<std::string> names = {tiloraOn(firstHost)};
  names.insert(names.end(), scripts.begin(), scripts.end());
  return names;
}

std::string sentence(const std::string& start, const std::string& ranking) {
  return ranking.empty() ? "" : "- " + start + ": " + ranking + ".\n";
}

std::optional<double> medianOf(const Record& record, const std::string& program, int windows, const std::string& measure) {
  const std::vector<double> values = record.values(program, windows, measure);
  if (values.empty()) return std::nullopt;
  return quantile(values, median);
}

/// How often a minute a key has to be pressed until a script costs more processor time than Tilora does.
std::string breakEven(const Record& record, int windows) {
  constexpr double millisecondsOfMinuteInPerCent = 600;
  const std::string tilora = tiloraOn(firstHost);
  const auto idle = medianOf(record, tilora, windows, measure::idle);
  const auto own = medianOf(record, tilora, windows, measure::pressCost);
  std::ostringstream text;
  for (const std::string& script : scripts) {
    const auto scriptIdle = medianOf(record, script, windows, measure::idle);
    const auto cost = medianOf(record, script, windows, measure::pressCost);
    if (!idle || !own || !scriptIdle || !cost || *cost <= *own) continue;
    const double presses = std::max(0.0, (*idle - *scriptIdle) * millisecondsOfMinuteInPerCent / (*cost - *own));
    text << "- With " << windows << " windows, Tilora takes less processor time than the " << script << " from " << number(presses, 1)
         << " key presses a minute on, and more below that.\n";
  }
  return text.str();
}

std::string findings(const Record& record) {
  if (record.crowds().empty()) return {};
  const int few = record.crowds().front();
  const int many = record.crowds().back();
  std::vector<std::string> all = residents();
  std::string text = floorSentences(record);
  for (const int windows : std::set<int>{few, many}) {
    const std::string with = " with " + std::to_string(windows) + " windows";
    text +=
        sentence("Milliseconds to the last change of a move" + with, ranked(record, all, windows, measure::move + measure::lastChange, 2));
  }
  const std::string with = " with " + std::to_string(many) + " windows";
  text += sentence("Of what tiles on top of a window manager, proportional kilobytes of what runs all the time" + with,
                   ranked(record, onTop(), many, measure::proportional, 0));
  text += sentence("Of the same, per cent of a core while nothing happens" + with, ranked(record, onTop(), many, measure::idle, 3));
  text +=
      sentence("Of the same, milliseconds of processor time for a key press" + with, ranked(record, onTop(), many, measure::pressCost, 2));
  for (const int windows : std::set<int>{few, many}) text += breakEven(record, windows);
  return text + "\n";
}

std::string picture(const Record& record, const std::string& folder, const std::string& name) {
  for (const Plot& plot : plots(record)) {
    if (plot.name != name) continue;
    std::ostringstream text;
    text << "![" << plot.caption << "](" << folder << "/" << name << ")\n\n";
    return text.str();
  }
  return {};
}

Table floorTable(const Record& record) {
  Table table{{"to the floor, first / last"}, {}};
  for (const int windows : record.crowds()) table.head.push_back(std::to_string(windows) + " windows");
  for (const std::string& host : hosts) {
    auto& cells = table.rows.emplace_back(std::vector<std::string>{host});
    for (const int windows : record.crowds()) {
      const auto first = toFloor(record, host, windows, measure::move + measure::firstChange);
      const auto last = toFloor(record, host, windows, measure::move + measure::lastChange);
      cells.push_back(first && last ? number(*first, 2) + " / " + number(*last, 2) : "-");
    }
  }
  return table;
}

/// First and last change with as few windows as there are.
std::string pairTable(const Record& record, const std::string& action) {
  if (record.crowds().empty()) return {};
  const int windows = record.crowds().front();
  Table table{{"", "first", "last", "to the floor, first / last"}, {}};
  for (const std::string& program : contestants()) {
    const std::string first = cell(record, program, windows, action + measure::firstChange, 2);
    if (first == "-") continue;
    table.rows.push_back({program, first, cell(record, program, windows, action + measure::lastChange, 2), ""});
    for (const std::string& host : hosts) {
      const auto ratio = toFloor(record, host, windows, action + measure::firstChange);
      const auto lastRatio = toFloor(record, host, windows, action + measure::lastChange);
      if (program == tiloraOn(host) && ratio && lastRatio) table.rows.back().back() = number(*ratio, 2) + " / " + number(*lastRatio, 2);
    }
  }
  return markdown(table);
}

double sumOf(const std::vector<double>& counts) { return std::accumulate(counts.begin(), counts.end(), 0.0); }

std::string missedPresses(const Record& record) {
  std::ostringstream text;
  for (const std::string& program : contestants()) {
    for (const int windows : record.crowds()) {
      for (const std::string& action : {measure::move, measure::exchange, measure::restore}) {
        const double sum = sumOf(record.values(program, windows, action + measure::missed));
        if (sum > 0) text << "- " << program << ", " << windows << " windows, " << action << ": " << sum << " presses without effect.\n";
      }
    }
  }
  return text.str();
}

/// Where fewer presses count than in most places, since the machine gave no more quiet moments for them.
std::string shortOfPresses(const Record& record) {
  std::ostringstream text;
  for (const std::string& action : {measure::move, measure::exchange, measure::restore}) {
    std::map<std::pair<std::string, int>, double> counts;
    for (const std::string& program : contestants()) {
      for (const int windows : record.crowds()) {
        const auto counted = static_cast<double>(record.values(program, windows, action + measure::lastChange).size());
        if (counted > 0) counts[{program, windows}] = counted;
      }
    }
    std::vector<double> all;
    all.reserve(counts.size());
    for (const auto& [where, counted] : counts) all.push_back(counted);
    if (all.empty()) continue;
    const double usual = quantile(all, median);
    for (const auto& [where, counted] : counts) {
      if (counted < usual) {
        text << "- " << where.first << ", " << where.second << " windows, " << action << ": only " << counted << " presses count.\n";
      }
    }
  }
  return text.str();
}

/// Of all actions: how many presses count, and how many were left out.
std::string disturbedPresses(const Record& record) {
  std::size_t counted = 0;
  double disturbed = 0;
  for (const Entry& entry : record.entries) {
    if (entry.measure.ends_with(measure::disturbed)) disturbed += sumOf(entry.values);
    for (const std::string& action : {measure::move, measure::exchange, measure::restore}) {
      if (entry.measure == action + measure::lastChange) counted += entry.values.size();
    }
  }
  std::ostringstream text;
  text << counted << " presses count; " << disturbed << " were left out, and others made for them, since the host of this virtual machine"
       << " had given more than\nten milliseconds of its processors to others in the half second around them. Where that was of no avail,"
       << " the end of this document says so.\n\n";
  return text.str();
}

/// What has failed, each reason once for a program and a number of windows.
std::string failures(const Record& record) {
  std::map<std::pair<std::string, int>, std::map<std::string, std::vector<std::string>>> all;
  for (const Entry& entry : record.entries) {
    if (!entry.failure.empty())
      all[{entry.program, entry.windows}][entry.failure].push_back(entry.measure + " (" + std::to_string(entry.round) + ")");
  }
  std::ostringstream text;
  for (const auto& [where, reasons] : all) {
    for (const auto& [reason, measures] : reasons) {
      text << "- " << where.first << ", " << where.second << " windows: " << reason << ". Without: " << joined(measures) << ".\n";
    }
  }
  return text.str();
}

std::string facts(const Record& record) {
  std::ostringstream text;
  for (const std::string name : {"processor", "system", "versions", "settings", "begun", "ended"}) {
    for (const auto& [fact, value] : record.facts) {
      if (fact == name) text << "- " << name << ": " << value << "\n";
    }
  }
  text << "\n";
  return text.str();
}

constexpr const char* introduction =
    R"(Made by `make bench` from [the raw data](DATA); nothing here is written by hand. Figures are medians, with the 95th percentile in
parentheses, which of few measurements is the highest. "failed" is explained at the end, "-" is not measured, and "*" marks figures without
those of a round that failed.

)";

constexpr const char* moveText =
    R"(Milliseconds from the press (XTEST) to the first and to the last ConfigureNotify of the windows. Each program is on an Xvfb of 1600 x 900
pixels of its own. Tilora and the bare client on the same window manager press in turn, the programs that run without Tilora in turn with
those two on Openbox, so that whatever else the machine does meets them alike. Presses come at uneven intervals, out of step with every
clock, with the modifiers held for 50 milliseconds before, as hands do. The active window goes to the other half. In a window manager that
tiles by itself it changes places with its neighbour, which moves too, on a desktop with four windows; the others are on six further
desktops. On the other window managers all windows are on one desktop, where Tilora and the bare client have all but the active one hidden,
and the scripts show all. The four windows that are moved are an application each, the others belong to ten applications. The bare client is
the floor: it sends, on the same keys, the requests that have to be sent, and does nothing else; on that window manager nobody can be faster.
Where Tilora is said to be, the difference is less than what such a machine lets one see.

The scripts are one-liners on the keys of sxhkd, on Openbox: `wmctrl -r :ACTIVE: -b remove,maximized_vert,maximized_horz && wmctrl -r
:ACTIVE: -e 0,800,0,800,900`, and `xdotool getactivewindow windowsize 50% 100% windowmove 50% 0`.

)";

constexpr const char* pairText =
    R"(With four windows; showing, hiding and the state properties count besides ConfigureNotify. Scripts do neither.

- Exchange: the active window goes to the other half, its partner there is hidden and another one comes back on the free side. A tiling
  window manager lets two windows on a desktop of their own change places.
- Restore: the active window leaves the whole screen for the left half, and its partner comes back on the right one. A tiling window
  manager switches from an empty desktop to one with two windows.

)";

constexpr const char* shareText =
    R"(Milliseconds from reading the key press to writing the last request of that turn, waiting for the server's answers included, for a move.

)";

constexpr const char* idleText =
    R"(Per cent of one core, taken every ten seconds while nobody touches anything. All programs are left alone at the same time, each on a
server of its own: the system counts processor time for each process. Of a script the daemon of its keys is counted, which waits; of
Tilora the program. Window managers below them are not counted.

)";

constexpr const char* memoryText =
    R"(Megabytes of all processes of the program once it has started over the windows and tiled the first, with nothing else running on the
server but the windows and, below Tilora and the scripts, Openbox, which is not counted. Proportional memory counts a page that several
processes use only in part. Proportional:

)";

constexpr const char* costText =
    R"(Milliseconds of processor time from a press until a third of a second after its last effect, of the program and all processes that it
starts for it: a script is two or three new processes, bspwm's key daemon starts one. What a shell costs before it replaces itself is
counted, the fork inside sxhkd is not. Tilora's look at the desktop, four times a second, is in it.

)";

constexpr const char* startText =
    R"(Milliseconds from starting the program over windows that are open already to the first window that gets another place on the screen, each
time on a new server. Tilora tiles the active window and hides the others. A tiling window manager takes all windows on one desktop. For a
script the key is pressed again and again, at growing intervals from ten milliseconds on, until it works.

)";

}  // namespace

std::string document(const Record& record, const std::string& pictures, const std::string& data) {
  std::string intro = introduction;
  intro.replace(intro.find("DATA"), 4, data);
  const auto table = [&](const std::vector<std::string>& programs, const std::string& measure, int digits) {
    return markdown(byCrowd(record, programs, measure, digits));
  };
  std::vector<std::string> tilorasEverywhere(hosts.size());
  std::transform(hosts.begin(), hosts.end(), tilorasEverywhere.begin(), tiloraOn);
  Record megabytes = record;
  for (Entry& entry : megabytes.entries) {
    if (entry.measure != measure::resident && entry.measure != measure::proportional) continue;
    for (double& value : entry.values) value /= 1024;
  }
  std::ostringstream text;
  text << "# Tilora beside other programs\n\n" << intro << facts(record) << "## What it says\n\n" << findings(record);
  text << "## A move\n\n"
       << moveText << picture(record, pictures, "latency.svg") << picture(record, pictures, "hosts.svg") << disturbedPresses(record)
       << markdown(floorTable(record));
  text << "### To the first change\n\n" << table(contestants(), measure::move + measure::firstChange, 2);
  text << "### To the last change\n\n" << table(contestants(), measure::move + measure::lastChange, 2);
  text << "### Tilora's own share\n\n" << shareText << table(tilorasEverywhere, measure::move + measure::ownShare, 3);
  text << "## Pairs\n\n"
       << pairText << "### Exchange\n\n"
       << pairTable(record, measure::exchange) << "### Restore\n\n"
       << pairTable(record, measure::restore);
  text << "## Processor time without anything to do\n\n"
       << idleText << picture(record, pictures, "idle.svg") << table(residents(), measure::idle, 3);
  text << "The X server meanwhile:\n\n" << table(residents(), measure::idleServer, 3);
  text << "## Processor time of a key press\n\n"
       << costText << picture(record, pictures, "press.svg") << table(residents(), measure::pressCost, 2);
  text << "## Memory\n\n"
       << memoryText << picture(record, pictures, "memory.svg") << markdown(byCrowd(megabytes, residents(), measure::proportional, 1))
       << "Resident:\n\n"
       << markdown(byCrowd(megabytes, residents(), measure::resident, 1));
  text << "## Start\n\n"
       << startText << picture(record, pictures, "start.svg") << table(residents(), measure::start + measure::firstChange, 0)
       << "To the last change of any kind:\n\n"
       << table(residents(), measure::start + measure::lastChange, 0);
  const std::string missing = missedPresses(record) + shortOfPresses(record) + failures(record);
  text << "## What is missing\n\n" << (missing.empty() ? "Nothing: every program was measured at every point.\n" : missing);
  return text.str();
}

}  // namespace tilora::bench
