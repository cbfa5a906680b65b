// The check for updates at launch: what the module for it needs, from this program and this desktop.
#pragma once

#include <string>

#include "platform/settings_store.h"
#include "platform/shell.h"
#include "updater/surroundings.h"
#include "updater/system_clock.h"

namespace tilora::app {

/// Main thread only.
class UpdateCheck {
 public:
  /// `site` is the address that the release files lie under; everything else must outlive this object. What it awaits when it ends, nobody
  /// hears of.
  UpdateCheck(std::string site, SettingsStore& settings, Shell& shell, updater::Fetcher& fetcher, updater::Alert& alert);

  /// Checks once, unless the last check is not five days old. Returns at once.
  void start();

 private:
  class StoredDate : public updater::CheckDate {
   public:
    explicit StoredDate(SettingsStore& settings) : settings_(settings) {}

    std::optional<updater::Moment> lastUpdateCheck() override;
    void setLastUpdateCheck(updater::Moment moment) override;

   private:
    SettingsStore& settings_;
  };

  class ShellBrowser : public updater::Browser {
   public:
    explicit ShellBrowser(Shell& shell) : shell_(shell) {}

    void open(const std::string& address) override { shell_.openURL(address); }

   private:
    Shell& shell_;
  };

  class StandardOutput : public updater::Output {
   public:
    void print(const std::string& line) override;
  };

  const std::string site_;
  updater::SystemClock clock_;
  StoredDate date_;
  ShellBrowser browser_;
  StandardOutput output_;
  updater::Fetcher& fetcher_;
  updater::Alert& alert_;
};

}  // namespace tilora::app
