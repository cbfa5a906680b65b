// A handler may only write to a pipe; the event loop reads it.
#include "app/termination_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>

namespace tilora::app {
namespace {

constexpr std::array signals = {SIGTERM, SIGINT, SIGHUP};

std::atomic<int> writingEnd = -1;
static_assert(std::atomic<int>::is_always_lock_free);

void onSignal(int) {
  const int before = errno;
  const char byte = 1;
  [[maybe_unused]] const auto written = write(writingEnd.load(), &byte, 1);
  errno = before;
}

std::array<int, 2> openPipe() {
  std::array<int, 2> ends = {-1, -1};
  if (pipe(ends.data()) != 0) return {-1, -1};
  for (const int end : ends) {
    fcntl(end, F_SETFD, FD_CLOEXEC);
    fcntl(end, F_SETFL, O_NONBLOCK);
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

TerminationSignals::TerminationSignals(std::function<void()> quit) : pipe_(openPipe()), notifier_(pipe_[0], QSocketNotifier::Read) {
  if (pipe_[0] < 0) return;
  QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this, quit = std::move(quit)] {
    std::array<char, 16> bytes = {};
    while (read(pipe_[0], bytes.data(), bytes.size()) > 0) {
    }
    quit();
  });
  writingEnd = pipe_[1];
  setHandler(onSignal);
}

TerminationSignals::~TerminationSignals() {
  if (pipe_[0] < 0) return;
  setHandler(SIG_DFL);
  writingEnd = -1;
  notifier_.setEnabled(false);
  for (const int end : pipe_) close(end);
}

}  // namespace tilora::app
