// The lowest number that is free is what the next open gets.
#include "app/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <initializer_list>

namespace tilora::app {

void openStandardStreams() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(descriptor, F_GETFD) < 0 && ::open("/dev/null", O_RDWR) < 0) return;
  }
}

}  // namespace tilora::app
