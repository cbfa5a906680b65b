// What the update check needs of the program and the desktop around it.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "updater/back_off.h"
#include "updater/update_alert.h"

namespace tilora::updater {

class Clock {
 public:
  virtual ~Clock() = default;

  virtual Moment now() = 0;
  /// In the user's time zone.
  virtual std::chrono::seconds utcOffset(std::chrono::sys_seconds moment) = 0;
};

/// The moment of the last check that reached its end, kept for the user under the key "lastUpdateCheck".
class CheckDate {
 public:
  virtual ~CheckDate() = default;

  /// Nothing when it is absent or not a date.
  virtual std::optional<Moment> lastUpdateCheck() = 0;
  virtual void setLastUpdateCheck(Moment moment) = 0;
};

/// What came from an address: the body of the answer, or why there is none.
struct Fetched {
  std::optional<std::string> body;
  /// One line, without the name of the module; empty when there is a body.
  std::string error;
};

class Fetcher {
 public:
  virtual ~Fetcher() = default;

  /// Gets `address` from where it lies, never from a cache, and later calls `done` on the calling thread, once. The status of the answer
  /// does not matter: any body is one. What takes too long, is too large or leads to a less safe place is a failure. Holds `done` no longer
  /// than until it was called.
  virtual void fetch(const std::string& address, std::function<void(Fetched)> done) = 0;
};

enum class AlertAnswer : std::uint8_t { firstButton, secondButton };

class Alert {
 public:
  virtual ~Alert() = default;

  /// Shows the alert in front, modal to the application, and later calls `done` on the calling thread, once, when it was dismissed. Holds
  /// `done` no longer than until it was called.
  virtual void show(const UpdateAlert& alert, std::function<void(AlertAnswer)> done) = 0;
};

class Browser {
 public:
  virtual ~Browser() = default;

  /// Opens an address in the user's browser.
  virtual void open(const std::string& address) = 0;
};

class Output {
 public:
  virtual ~Output() = default;

  /// Writes `line` and a line feed to standard output, at once.
  virtual void print(const std::string& line) = 0;
};

/// The surroundings have to outlive the check. Main thread only.
struct Surroundings {
  Clock& clock;
  CheckDate& checkDate;
  Fetcher& fetcher;
  Alert& alert;
  Browser& browser;
  Output& output;
  /// The version of the running program; nothing when it does not know.
  std::optional<std::string> localVersion;
};

}  // namespace tilora::updater
