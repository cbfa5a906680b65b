// The update check: asks for the latest release, and offers it when it is another one.
#pragma once

#include <memory>
#include <string>

#include "updater/feed.h"
#include "updater/surroundings.h"

namespace tilora::updater {

class Releasewatch : public std::enable_shared_from_this<Releasewatch> {
 public:
  /// `baseUrl` is the root of the release files, without a trailing slash; `backOffDays` is the least number of calendar days between two
  /// checks that reached their end, and negative to check always. To be made with std::make_shared.
  Releasewatch(std::string baseUrl, int backOffDays, Surroundings surroundings);

  /// Checks once. Returns at once; the check holds this object until it has ended. Every failure ends it with a line on standard output,
  /// and leaves the date of the last check as it was.
  void checkForUpdate();

 private:
  bool isBackedOff();
  void readFeed(const Fetched& fetched);
  void offer(const Updater& updater);
  void download(const Updater& updater);
  void writeDate();
  void print(const std::string& what);

  const std::string baseUrl_;
  const int backOffDays_;
  const Surroundings surroundings_;
};

}  // namespace tilora::updater
