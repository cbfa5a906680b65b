// The steps of a check, in their order.
#include "updater/releasewatch.h"

#include <utility>

#include "updater/address.h"

namespace tilora::updater {

Releasewatch::Releasewatch(std::string baseUrl, int backOffDays, Surroundings surroundings)
    : baseUrl_(std::move(baseUrl)), backOffDays_(backOffDays), surroundings_(std::move(surroundings)) {}

void Releasewatch::checkForUpdate() {
  if (isBackedOff()) {
    print("backed off, less than " + std::to_string(backOffDays_) + " days.");
    return;
  }
  print("checking for update at " + baseUrl_ + "...");
  const auto address = encodedAddress(baseUrl_ + "/updater.json");
  if (!address) return;
  surroundings_.fetcher.fetch(*address, [self = shared_from_this()](const Fetched& fetched) { self->readFeed(fetched); });
}

bool Releasewatch::isBackedOff() {
  Clock& clock = surroundings_.clock;
  return updater::isBackedOff(surroundings_.checkDate.lastUpdateCheck(), clock.now(), backOffDays_,
                              [&clock](std::chrono::sys_seconds moment) { return clock.utcOffset(moment); });
}

void Releasewatch::readFeed(const Fetched& fetched) {
  if (!fetched.body) {
    print(fetched.error);
    return;
  }
  const DecodedFeed feed = decodeFeed(*fetched.body);
  if (!feed.updater) {
    print(feed.error);
    return;
  }
  if (countsAsNewer(feed.updater->version, surroundings_.localVersion)) {
    offer(*feed.updater);
    return;
  }
  print("application " + feed.updater->version + " already up to date.");
  writeDate();
}

void Releasewatch::offer(const Updater& updater) {
  surroundings_.alert.show(alertFor(updater.version), [self = shared_from_this(), updater](AlertAnswer answer) {
    if (answer == AlertAnswer::firstButton) self->download(updater);
    self->writeDate();
  });
}

void Releasewatch::download(const Updater& updater) {
  if (const auto address = encodedAddress(baseUrl_ + "/" + updater.file)) surroundings_.browser.open(*address);
}

void Releasewatch::writeDate() { surroundings_.checkDate.setLastUpdateCheck(surroundings_.clock.now()); }

void Releasewatch::print(const std::string& what) { surroundings_.output.print("Releasewatch: " + what); }

}  // namespace tilora::updater
