// The raw data: what was measured, as it is kept in a file of comma-separated values.
#pragma once

#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tilora::bench {

/// What is measured of a program, by the name in the data.
namespace measure {
/// Milliseconds from the key press to the first and to the last change of a window; the presses that nothing followed, and those that do
/// not count since the host of a virtual machine gave its processors to others.
inline const std::string firstChange = " first";
inline const std::string lastChange = " last";
inline const std::string missed = " missed";
inline const std::string disturbed = " disturbed";
/// Milliseconds from reading the key press to writing the last request that follows from it, inside the program.
inline const std::string ownShare = " own share";
inline const std::string move = "move";
inline const std::string exchange = "exchange";
inline const std::string restore = "restore";
/// Milliseconds from starting the program to the first and to the last change of a window.
inline const std::string start = "start";
/// Processor time in per cent of one core, in each stretch of a time in which nothing happens: of the program, and of the X server.
inline const std::string idle = "idle";
inline const std::string idleServer = "idle server";
/// Kilobytes: resident, and proportional.
inline const std::string resident = "resident";
inline const std::string proportional = "proportional";
/// Milliseconds of processor time for a key press, of all processes that it starts.
inline const std::string pressCost = "press cost";
}  // namespace measure

/// What one visit to one program has brought of one measure; or why it brought nothing.
struct Entry {
  int round = 0;
  std::string program;
  int windows = 0;
  std::string measure;
  std::vector<double> values;
  std::string failure;

  bool operator==(const Entry&) const = default;
};

/// One line of the data, without its end.
std::string lineOf(const Entry& entry);
/// Empty when the line is none of an entry.
std::optional<Entry> entryOf(std::string_view line);

/// Everything that a run has measured.
struct Record {
  /// The machine, the settings of the run and the versions of the programs, in their order; the same name may come again.
  std::vector<std::pair<std::string, std::string>> facts;
  std::vector<Entry> entries;

  /// What a fact says; empty when it is not there.
  std::string fact(const std::string& name) const;
  /// All rounds together.
  std::vector<double> values(const std::string& program, int windows, const std::string& measure) const;
  /// Why a program has no values, or not those of every round; empty when nothing failed.
  std::string failure(const std::string& program, int windows, const std::string& measure) const;
  /// The numbers of windows that were measured, the lowest first.
  std::vector<int> crowds() const;
};

/// The line that tells a fact, without its end.
std::string lineOf(const std::string& factName, const std::string& text);
/// The names of the columns.
std::string headLine();
/// Reads a file of data. What is not understood is left out, so that a run that was broken off in the middle of a line can be read.
Record readRecord(std::istream& data);

}  // namespace tilora::bench
