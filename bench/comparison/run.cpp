// Writing the data.
#include "run.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>

namespace tilora::bench {
namespace {

bool has(const std::vector<std::string>& list, const std::string& name) {
  return list.empty() || std::find(list.begin(), list.end(), name) != list.end();
}

}  // namespace

Run::Run(Options options) : options_(std::move(options)), end_(std::chrono::steady_clock::now() + std::chrono::minutes(options_.minutes)) {
  if (options_.data.has_parent_path()) std::filesystem::create_directories(options_.data.parent_path());
  file_.open(options_.data, options_.append ? std::ios::app : std::ios::trunc);
  if (!file_) throw std::runtime_error("cannot write " + options_.data.string());
}

bool Run::wants(const std::string& program) const { return has(options_.only, program); }

bool Run::wantsPart(const std::string& part) const { return has(options_.parts, part); }

void Run::note(const std::string& fact, const std::string& text) { write(lineOf(fact, text)); }

void Run::add(const Entry& entry) {
  if (entry.failure.empty() && entry.values.empty()) return;
  write(lineOf(entry));
}

bool Run::attempt(const Entry& what, const std::vector<std::string>& measures, const std::function<void()>& measure) {
  Entry entry = what;
  try {
    if (std::chrono::steady_clock::now() > end_) throw std::runtime_error("the time was up");
    measure();
    return true;
  } catch (const std::exception& exception) {
    entry.failure = exception.what();
  }
  failed_ = true;
  // What the desktop looked like is for the one who watches; the data has the reason.
  std::cerr << entry.program << ", " << entry.windows << " windows: " << entry.failure << "\n";
  entry.failure = entry.failure.substr(0, entry.failure.find('\n'));
  for (const std::string& name : measures) {
    entry.measure = name;
    add(entry);
  }
  return false;
}

std::filesystem::path Run::besides(const char* name) { return std::filesystem::read_symlink("/proc/self/exe").parent_path() / name; }

void Run::write(const std::string& line) { file_ << line << std::endl; }

}  // namespace tilora::bench
