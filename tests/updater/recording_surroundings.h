// Surroundings that note down what a check does, in order.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "updater/surroundings.h"

namespace tilora::updater {

/// The fetch and the alert end when the test says so.
class RecordingSurroundings : public Clock, public CheckDate, public Fetcher, public Alert, public Browser, public Output {
 public:
  Moment time = std::chrono::sys_days(std::chrono::year(2025) / 7 / 10);
  std::optional<Moment> date;
  std::function<void(Fetched)> fetchDone;
  std::function<void(AlertAnswer)> alertDone;
  /// "print ...", "fetch ...", "show ... | ... | ... | ...", "open ..." and "date".
  std::vector<std::string> done;

  Surroundings with(std::optional<std::string> localVersion) {
    return {.clock = *this,
            .checkDate = *this,
            .fetcher = *this,
            .alert = *this,
            .browser = *this,
            .output = *this,
            .localVersion = std::move(localVersion)};
  }

  Moment now() override { return time; }
  std::chrono::seconds utcOffset(std::chrono::sys_seconds) override { return {}; }
  std::optional<Moment> lastUpdateCheck() override { return date; }
  void setLastUpdateCheck(Moment moment) override {
    date = moment;
    done.emplace_back("date");
  }
  void fetch(const std::string& address, std::function<void(Fetched)> then) override {
    done.push_back("fetch " + address);
    fetchDone = std::move(then);
  }
  void show(const UpdateAlert& alert, std::function<void(AlertAnswer)> then) override {
    done.push_back("show " + alert.messageText + " | " + alert.informativeText + " | " + alert.firstButton + " | " + alert.secondButton);
    alertDone = std::move(then);
  }
  void open(const std::string& address) override { done.push_back("open " + address); }
  void print(const std::string& line) override { done.push_back("print " + line); }

  void bodyComes(std::string body) { std::exchange(fetchDone, nullptr)({.body = std::move(body), .error = {}}); }
  void fetchFails(std::string error) { std::exchange(fetchDone, nullptr)({.body = std::nullopt, .error = std::move(error)}); }
  void alertEnds(AlertAnswer answer) { std::exchange(alertDone, nullptr)(answer); }
};

}  // namespace tilora::updater
