// The applications and windows that ought to be on the desktop: what was opened and that nobody closed.
#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <list>
#include <string>
#include <vector>

#include "harness/test_client.h"

namespace tilora::chaos {

struct Window {
  xcb_window_t id = XCB_WINDOW_NONE;
  /// What kind of window it is, for a finding.
  std::string kind;
  /// Somebody asked it to close, and it may or may not have done so.
  bool maybeClosed = false;
  /// Somebody asked it to close once, which it may do whenever it comes to that, or may have done so with the pointer.
  bool wasAskedToClose = false;
  bool withdrawn = false;
  /// Its application maps it again after it had withdrawn it, which a window manager may miss if it has not noticed the one before.
  bool remapped = false;
  /// It has a property that a window manager may choke on.
  bool lies = false;
};

struct Application {
  harness::TestClient client;
  std::string name;
  std::list<Window> windows = {};
  /// Stopped: nothing may be asked of it.
  bool frozen = false;
};

class Population {
 public:
  std::list<Application>& applications() { return applications_; }
  /// Among window managers that take the whole server for themselves for a while.
  static constexpr auto patience = std::chrono::seconds(60);

  Application& add(harness::Session& session, const std::string& name) {
    return applications_.emplace_back(Application{.client = harness::TestClient(session, patience), .name = name});
  }
  /// Forgets the applications that have ended, which is what window managers bring about when one does not answer them; says how many.
  int forgetEnded() {
    return static_cast<int>(applications_.remove_if([](Application& application) { return !application.client.process().running(); }));
  }

  struct Reference {
    Application* application = nullptr;
    Window* window = nullptr;
  };
  /// All windows, those of frozen applications only if asked for.
  std::vector<Reference> windows(bool withFrozen) {
    std::vector<Reference> all;
    for (Application& application : applications_) {
      if (application.frozen && !withFrozen) continue;
      for (Window& window : application.windows) all.push_back({&application, &window});
    }
    return all;
  }
  void forget(const Reference& gone) {
    gone.application->windows.remove_if([&](const Window& window) { return &window == gone.window; });
  }
  void forget(const Application& gone) {
    applications_.remove_if([&](const Application& application) { return &application == &gone; });
  }

 private:
  std::list<Application> applications_;
};

}  // namespace tilora::chaos
