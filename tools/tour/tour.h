// The tour: what a user does with Tilora in the first minutes, each step checked against what must be seen then.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "embedded_desktop.h"
#include "harness/place.h"

namespace tilora::tour {

using harness::Edges;
using harness::Place;
using harness::Steps;

/// A window that must be seen, and where.
struct Seen {
  const Program& program;
  Place place = Place::full;
  harness::PixelRect monitor = EmbeddedDesktop::firstMonitor;
};

class Tour {
 public:
  /// `tilora` is the program to show, `pictures` a folder for a picture of each step; it is made, and what an earlier tour left is
  /// replaced.
  Tour(std::filesystem::path tilora, std::filesystem::path pictures);

  /// Takes all the steps and says on standard output what happened. Throws `Failure` at the first one that goes wrong.
  void run();
  /// What there is to know about a step that went wrong: every window, what happened to it last, and what Tilora wrote.
  std::string describe();

 private:
  void startPrograms();
  void giveConsent();
  void moveLeft();
  void bringHiddenWindowBack();
  void makePair();
  void exchangeSides();
  void fill();
  void floatWindow();
  void restartProgram();
  void restartTilora();
  void useSecondMonitor();
  void switchDesktop();
  void quit();

  void press(harness::Key key);
  void startTilora();
  /// With Alt+Tab, as often as it takes, from a window that is shown alone to another one.
  void switchTo(const Program& wanted);
  /// As window managers move a window: with Alt held and the first button pressed.
  void dragToSecondMonitor(const Program& program);
  /// Waits until exactly these windows of the current desktop are seen, where they must be, the first with the keyboard; takes the picture
  /// of the step and checks again. `what` says what happened, `name` is for the picture.
  void expect(const std::string& what, const std::string& name, const std::vector<Seen>& seen);
  /// The same without a picture.
  void waitFor(const std::vector<Seen>& seen);
  /// The first thing that is not as it must be, as a sentence; nothing when all is.
  std::optional<std::string> differenceFrom(const std::vector<Seen>& seen);
  std::optional<std::string> differenceFrom(const Seen& seen);
  std::string lastEvents();
  void report(const std::string& what, const std::string& name);

  std::filesystem::path tilora_;
  std::filesystem::path pictures_;
  EmbeddedDesktop desktop_;
  std::optional<harness::ManagedProcess> process_;
  int step_ = 0;
  Program* terminal_ = nullptr;
  Program* gtkEditor_ = nullptr;
  Program* qtEditor_ = nullptr;
};

}  // namespace tilora::tour
