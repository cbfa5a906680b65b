// A storm: many things that happen to a desktop at once, drawn by lot.
#pragma once

#include <deque>
#include <set>
#include <string>
#include <vector>

#include "chance.h"
#include "counts.h"
#include "desk.h"
#include "population.h"

namespace tilora::chaos {

class Storm {
 public:
  /// `killsTilora`: whether it may end and start Tilora. All must outlive it.
  Storm(Desk& desk, Population& population, Chance& chance, Counts& counts, bool killsTilora)
      : desk_(desk), population_(population), chance_(chance), counts_(counts), killsTilora_(killsTilora) {}

  /// Does so many things, one after the other, and waits for none of them to show.
  void rage(int actions);
  /// The last things it did.
  const std::deque<std::string>& trace() const { return trace_; }

 private:
  using Action = void (Storm::*)();
  struct Choice {
    const char* name;
    int weight;
    Action action;
  };
  static const std::vector<Choice>& choices();
  const Choice& draw();
  void note(const std::string& what);

  /// A window to do something to; its application is not frozen. Null when there is none.
  Population::Reference anyWindow();
  /// An application that is not frozen; opens one if need be.
  Application& anyApplication();
  void openIn(Application& application, const std::string& kind, harness::WindowOptions options);

  void open();
  void openMany();
  void close();
  void destroy();
  void withdraw();
  void maximise();
  void fullscreen();
  void minimise();
  void activate();
  void move();
  void retitle();
  void lie();
  void drag();
  void flood();
  void freeze();
  void resume();
  void killApplication();
  void shortcut();
  void switchDesktop();
  void moveToDesktop();
  void showDesktop();
  void changeMonitors();
  void replaceWindowManager();
  void killWindowManager();
  void killTilora();
  void endTilora();

  Desk& desk_;
  Population& population_;
  Chance& chance_;
  Counts& counts_;
  bool killsTilora_;
  std::deque<std::string> trace_;
  /// Windows that were asked to close. Another application may be given their numbers while a slow window manager still has the request.
  std::set<xcb_window_t> askedToClose_;
  int named_ = 0;
};

}  // namespace tilora::chaos
