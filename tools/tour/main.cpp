// The tour's entry: tilora-tour FOLDER takes the tour and leaves its pictures in FOLDER; tilora-tour --is-there-a-desktop says with its
// status whether an X server answers where the environment says.
#include <xcb/xcb.h>

#include <csignal>
#include <iostream>
#include <string_view>

#include "tour.h"

namespace {

using namespace tilora::tour;

bool isThereADesktop() {
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  const bool answers = xcb_connection_has_error(connection) == 0;
  xcb_disconnect(connection);
  return answers;
}

/// The program that was built beside this one.
std::filesystem::path tiloraProgram() { return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "tilora"; }

int takeTour(const std::filesystem::path& pictures) {
  Tour tour(tiloraProgram(), pictures);
  try {
    tour.run();
  } catch (const Failure& failure) {
    std::cout << std::flush;
    std::cerr << "The tour ends here: " << failure.what() << ".\n\n" << tour.describe();
    return 1;
  }
  std::cout << "The pictures are in " << pictures.string() << "\n";
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: tilora-tour FOLDER | --is-there-a-desktop\n";
    return 2;
  }
  if (std::string_view(argv[1]) == "--is-there-a-desktop") return isThereADesktop() ? 0 : 1;
  constexpr int interruptedStatus = 128 + SIGINT;
  endWaitsOnSignals();
  try {
    return takeTour(argv[1]);
  } catch (const Interrupted&) {
    return interruptedStatus;
  } catch (const std::exception& exception) {
    std::cerr << "The tour cannot start: " << exception.what() << "\n";
    return 1;
  }
}
