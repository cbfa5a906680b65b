// The signals that ask the program to end.
#pragma once

#include <QSocketNotifier>
#include <array>
#include <functional>

namespace tilora::app {

/// While it lives, SIGTERM, SIGINT and SIGHUP call `quit` from the event loop instead of ending the process. One at a time in a process.
class TerminationSignals {
 public:
  explicit TerminationSignals(std::function<void()> quit);
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;
  ~TerminationSignals();

 private:
  /// Reading and writing end of the pipe that carries a signal into the event loop; -1 when it could not be made.
  std::array<int, 2> pipe_;
  QSocketNotifier notifier_;
};

}  // namespace tilora::app
