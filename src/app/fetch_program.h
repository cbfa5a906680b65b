// Getting the feed in a process of its own.
#pragma once

#include "app/helper_program.h"
#include "updater/surroundings.h"

namespace tilora::app {

/// What the network needs, its memory and its threads, comes and goes with the program that fetches. One fetch at a time. Main thread only.
class FetchProgram : public updater::Fetcher {
 public:
  FetchProgram() : FetchProgram(helperPath(QStringLiteral("tilora-fetch"))) {}
  /// Fetches with the program at `path`: called with the address, it writes the body to standard output and answers 0, or says why not in
  /// the last line of standard error, where libraries may have their say before, and answers something else.
  explicit FetchProgram(QString path) : program_(std::move(path)) {}

  bool isRunning() const { return program_.isRunning(); }
  void fetch(const std::string& address, std::function<void(updater::Fetched)> done) override;

 private:
  HelperProgram program_;
};

}  // namespace tilora::app
