// A handler may only note the signal and write to a pipe; the event loop reads it.
#include "app/termination_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QAbstractEventDispatcher>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <utility>

namespace tilora::app {
namespace {

constexpr std::array signals = {SIGTERM, SIGINT, SIGHUP};

std::atomic<int> writingEnd = -1;
std::atomic<bool> isSignalled = false;
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

void onSignal(int) {
  isSignalled = true;
  const int before = errno;
  const char byte = 1;
  [[maybe_unused]] const auto written = write(writingEnd.load(), &byte, 1);
  errno = before;
}

std::array<int, 2> openPipe() {
  std::array<int, 2> ends = {-1, -1};
  if (pipe(ends.data()) != 0) return {-1, -1};
  for (const int end : ends) {
    // A blocking end would stop the event loop, or the handler.
    if (fcntl(end, F_SETFD, FD_CLOEXEC) == 0 && fcntl(end, F_SETFL, O_NONBLOCK) == 0) continue;
    for (const int opened : ends) close(opened);
    return {-1, -1};
  }
  return ends;
}

void setHandler(void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  for (const int signal : signals) sigaction(signal, &action, nullptr);
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> quit)
    : quit_(std::move(quit)), pipe_(openPipe()), notifier_(QSocketNotifier::Read) {
  isSignalled = false;
  if (pipe_[0] >= 0) {
    notifier_.setSocket(pipe_[0]);
    notifier_.setEnabled(true);
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] {
      clearPipe();
      takeSignal();
    });
  }
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &notifier_, [this] { takeSignal(); });
  writingEnd = pipe_[1];
  setHandler(onSignal);
}

TerminationSignals::~TerminationSignals() {
  setHandler(SIG_DFL);
  writingEnd = -1;
  notifier_.setEnabled(false);
  for (const int end : pipe_) {
    if (end >= 0) close(end);
  }
}

void TerminationSignals::clearPipe() const {
  std::array<char, 16> bytes = {};
  while (read(pipe_[0], bytes.data(), bytes.size()) > 0) {
  }
}

void TerminationSignals::takeSignal() {
  if (isSignalled.exchange(false)) quit_();
}

}  // namespace tilora::app
