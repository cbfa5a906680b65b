// Runs queued work in the order of a clock that nobody waits for.
#include "platform/simulated/virtual_clock.h"

#include <algorithm>
#include <utility>

namespace tilora::simulated {

void VirtualClock::post(std::function<void()> work) { posted_.push_back(std::move(work)); }

void VirtualClock::postAfter(std::chrono::milliseconds delay, std::function<void()> work) {
  delayed_.emplace(now_ + std::max(delay, std::chrono::milliseconds(0)), std::move(work));
}

Subscription VirtualClock::repeat(std::chrono::milliseconds interval, std::function<void()> work) {
  auto shared = std::make_shared<std::function<void()>>(std::move(work));
  repeatOnce(interval, shared);
  return Subscription([shared] { *shared = nullptr; });
}

void VirtualClock::repeatOnce(std::chrono::milliseconds interval, const std::shared_ptr<std::function<void()>>& work) {
  postAfter(interval, [this, interval, work] {
    if (const auto tick = *work) tick();
    if (*work) repeatOnce(interval, work);
  });
}

void VirtualClock::runPosted() {
  while (!posted_.empty()) {
    const auto work = std::move(posted_.front());
    posted_.pop_front();
    work();
  }
}

void VirtualClock::advance(std::chrono::milliseconds duration) {
  const auto end = now_ + duration;
  while (!delayed_.empty() && delayed_.begin()->first <= end) {
    now_ = delayed_.begin()->first;
    const auto work = std::move(delayed_.begin()->second);
    delayed_.erase(delayed_.begin());
    work();
  }
  now_ = end;
  runPosted();
}

}  // namespace tilora::simulated
