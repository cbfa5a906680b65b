// Connecting the module to the program.
#include "app/update_check.h"

#include <QCoreApplication>
#include <cstdio>
#include <memory>
#include <string_view>
#include <utility>

#include "updater/releasewatch.h"

namespace tilora::app {
namespace {

constexpr std::string_view dateKey = "lastUpdateCheck";
constexpr int backOffDays = 5;

/// The version of the running program; nothing when nobody set it.
std::optional<std::string> localVersion() {
  const QString version = QCoreApplication::applicationVersion();
  if (version.isEmpty()) return std::nullopt;
  return version.toStdString();
}

}  // namespace

UpdateCheck::UpdateCheck(std::string site, SettingsStore& settings, Shell& shell, updater::Fetcher& fetcher, updater::Alert& alert)
    : site_(std::move(site)), date_(settings), browser_(shell), fetcher_(fetcher), alert_(alert) {}

void UpdateCheck::start() {
  const auto watch = std::make_shared<updater::Releasewatch>(site_, backOffDays,
                                                             updater::Surroundings{.clock = clock_,
                                                                                   .checkDate = date_,
                                                                                   .fetcher = fetcher_,
                                                                                   .alert = alert_,
                                                                                   .browser = browser_,
                                                                                   .output = output_,
                                                                                   .localVersion = localVersion()});
  watch->checkForUpdate();
}

std::optional<updater::Moment> UpdateCheck::StoredDate::lastUpdateCheck() { return settings_.date(dateKey); }

void UpdateCheck::StoredDate::setLastUpdateCheck(updater::Moment moment) { settings_.setDate(dateKey, moment); }

void UpdateCheck::StandardOutput::print(const std::string& line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
}

}  // namespace tilora::app
