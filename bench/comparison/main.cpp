// tilora-comparison --data FILE [--append] [--rounds N] [--presses N] [--idle SECONDS] [--starts N] [--windows N,N...] [--minutes N]
// [--only PROGRAM]... [--part time|start|latency]...: measures Tilora side by side with other programs and writes all samples to FILE.
#include <unistd.h>

#include <charconv>
#include <ctime>
#include <iomanip>
#include <iostream>
#include <optional>
#include <sstream>
#include <string_view>

#include "machine.h"
#include "run.h"

namespace tilora::bench {
namespace {

bool readNumber(std::string_view text, int& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && number > 0;
}

bool readNumbers(const std::string& text, std::vector<int>& numbers) {
  numbers.clear();
  std::istringstream parts(text);
  for (std::string part; std::getline(parts, part, ',');) {
    if (!readNumber(part, numbers.emplace_back())) return false;
  }
  return !numbers.empty();
}

bool take(Options& options, std::string_view name, const std::string& value) {
  if (name == "--rounds") return readNumber(value, options.rounds);
  if (name == "--presses") return readNumber(value, options.presses);
  if (name == "--idle") return readNumber(value, options.idleSeconds);
  if (name == "--starts") return readNumber(value, options.starts);
  if (name == "--minutes") return readNumber(value, options.minutes);
  if (name == "--windows") return readNumbers(value, options.crowds);
  if (name == "--data") return options.data = value, true;
  if (name == "--only") return options.only.push_back(value), true;
  if (name == "--part") return options.parts.push_back(value), value == "time" || value == "start" || value == "latency";
  return false;
}

std::optional<Options> parse(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string_view name = argv[i];
    if (name == "--append") {
      options.append = true;
    } else if (++i == argc || !take(options, name, argv[i])) {
      return std::nullopt;
    }
  }
  if (options.data.empty()) return std::nullopt;
  return options;
}

void noteSettings(Run& run) {
  const Options& options = run.options();
  std::ostringstream text;
  text << options.rounds << " rounds of " << options.presses << " presses; " << options.idleSeconds << " seconds of nothing; "
       << options.starts << " starts";
  for (const std::string& part : options.parts) text << (&part == &options.parts.front() ? "; only of " : " and ") << part;
  run.note("settings", text.str());
}

/// How much of what the programs wanted of the processors since `before` other machines had.
std::string stolenSince(const ProcessorTicks& before) {
  const ProcessorTicks now = processorTicks();
  constexpr double perCent = 100;
  std::ostringstream text;
  text << std::fixed << std::setprecision(1) << (now.stolen - before.stolen) / (now.all - before.all) * perCent
       << " per cent of the processors' time taken by other machines on the host";
  return text.str();
}

int measureAll(const Options& options) {
  Run run(options);
  if (!options.append) noteMachine(run);
  noteSettings(run);
  run.note("begun", nowAndLoad());
  run.note("columns", headLine());
  const ProcessorTicks before = processorTicks();
  if (run.wantsPart("latency")) measureLatency(run);
  if (run.wantsPart("time")) measureProcessorTime(run);
  if (run.wantsPart("start")) measureStarts(run);
  run.note("ended", nowAndLoad() + ", " + stolenSince(before));
  return run.failed() ? 1 : 0;
}

}  // namespace
}  // namespace tilora::bench

int main(int argc, char** argv) {
  const auto options = tilora::bench::parse(argc, argv);
  if (!options) {
    std::cerr
        << "usage: tilora-comparison --data FILE [--append] [--rounds N] [--presses N] [--idle SECONDS] [--starts N] [--windows N,N...] "
           "[--minutes N] [--only PROGRAM]... [--part time|start|latency]...\n";
    return 2;
  }
  try {
    return tilora::bench::measureAll(*options);
  } catch (const std::exception& exception) {
    std::cerr << "tilora-comparison: " << exception.what() << "\n";
    return 1;
  }
}
