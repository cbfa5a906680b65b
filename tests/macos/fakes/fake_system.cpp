// The system that the fake frameworks answer for.
#include "fakes/fake_system.h"

namespace tilora::macos::fake {
namespace {

/// How long a call waits for an application when nobody has said otherwise.
constexpr float systemTimeout = 6;

FakeSystem* theSystem = nullptr;

}  // namespace

FakeSystem::FakeSystem(simulated::SimulatedDesktop& world) : world_(world) {
  if (theSystem) crash("there can be only one fake system");
  theSystem = this;
}

FakeSystem::~FakeSystem() {
  theSystem = nullptr;
  forgetObjects();
}

FakeSystem& FakeSystem::current() {
  if (!theSystem) crash("a function of the system was called where there is none");
  return *theSystem;
}

bool FakeSystem::isThere() { return theSystem != nullptr; }

void FakeSystem::answer(AttributeName name, Answer answer) {
  if (answer) {
    answers_.insert_or_assign(name, std::move(answer));
  } else {
    answers_.erase(name);
  }
}

void FakeSystem::hang(ProcessId pid, bool hangs) {
  if (hangs) {
    hung_.insert(pid);
  } else {
    hung_.erase(pid);
  }
}

AXError FakeSystem::call(const CfElement& element, const std::function<AXError()>& body) {
  ++calls_;
  if (!world_.trust().trusted) return kAXErrorAPIDisabled;
  if (!element.element) return kAXErrorInvalidUIElement;
  if (!element.pid || !hung_.contains(*element.pid)) return body();
  // Whether a window takes over the time-out of its application is not known: here it does not.
  const std::chrono::duration<double> wait(element.timeout.value_or(defaultTimeout.value_or(systemTimeout)));
  now_ += std::chrono::duration_cast<std::chrono::steady_clock::duration>(wait);
  return kAXErrorCannotComplete;
}

const FakeSystem::Answer* FakeSystem::answerTo(AttributeName name) const {
  const auto found = answers_.find(name);
  return found == answers_.end() ? nullptr : &found->second;
}

}  // namespace tilora::macos::fake
