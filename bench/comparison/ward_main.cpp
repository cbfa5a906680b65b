// A program that starts another one and adds up the processor time of all its children that end, orphans too. Usage: FILE PROGRAM
// [ARGUMENT]... FILE always has the sum in nanoseconds. It ends with PROGRAM, which gets its SIGTERM.
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

volatile pid_t program = -1;

void passOn(int signal) {
  if (program > 0) kill(program, signal);
}

long long nanoseconds(const timeval& time) { return (time.tv_sec * 1000000LL + time.tv_usec) * 1000LL; }

/// Of fixed width, so that a reader never finds the rest of an earlier number.
void writeSum(int file) {
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  std::array<char, 32> text{};
  const int length = std::snprintf(text.data(), text.size(), "%20lld\n", nanoseconds(usage.ru_utime) + nanoseconds(usage.ru_stime));
  if (pwrite(file, text.data(), static_cast<std::size_t>(length), 0) != length) std::perror("ward");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const int file = open(argv[1], O_WRONLY | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (file < 0) return 2;
  writeSum(file);
  prctl(PR_SET_CHILD_SUBREAPER, 1);
  program = fork();
  if (program == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    execvp(argv[2], argv + 2);
    _exit(127);
  }
  struct sigaction action {};
  action.sa_handler = passOn;
  action.sa_flags = SA_RESTART;
  sigaction(SIGTERM, &action, nullptr);
  int status = 0;
  for (pid_t ended = 0; (ended = wait(&status)) > 0;) {
    writeSum(file);
    if (ended == program) return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
  }
  return 1;
}
