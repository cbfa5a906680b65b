// The signals that ask the program to end.
#pragma once

#include <QSocketNotifier>
#include <array>
#include <functional>

namespace tilora::app {

/// While it lives, SIGTERM, SIGINT and SIGHUP call `quit` from the event loop instead of ending the process. They wake it; where the system
/// has no pipe for that, they are seen when it next goes to sleep. One at a time in a process.
class TerminationSignals {
 public:
  explicit TerminationSignals(std::function<void()> quit);
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;
  ~TerminationSignals();

 private:
  void takeSignal();
  void clearPipe() const;

  const std::function<void()> quit_;
  /// Reading and writing end of the pipe that wakes the event loop; -1 when it could not be made.
  std::array<int, 2> pipe_;
  QSocketNotifier notifier_;
};

}  // namespace tilora::app
