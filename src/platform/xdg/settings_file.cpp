// Keeping the values in memory and writing them behind the main thread's back.
#include "platform/xdg/settings_file.h"

#include <pthread.h>
#include <sys/stat.h>

#include <csignal>
#include <system_error>
#include <utility>

#include "platform/xdg/file_replacement.h"

namespace tilora::xdg {
namespace {

namespace fs = std::filesystem;

/// Far more than a user's windows make in years; a larger file is not one of ours.
constexpr std::size_t largestFile = std::size_t{64} << 20U;
constexpr int mostKept = 10;
constexpr mode_t forTheUserAlone = 0600;

/// A file that is missing is whole and empty; one that cannot be read is not whole.
DecodedSettings load(const fs::path& path) {
  const auto file = readFile(path, largestFile);
  if (file.isMissing()) return {.values = {}, .isWhole = true};
  return file.content ? decodeSettings(*file.content) : DecodedSettings();
}

bool isThere(const fs::path& path) {
  struct stat ignored {};
  return lstat(path.c_str(), &ignored) == 0;
}

/// Moves a file that was not understood out of the way, if there is a name left for it.
void keepAside(const fs::path& path) {
  for (int i = 0; i < mostKept; ++i) {
    fs::path kept = path;
    kept += i == 0 ? ".broken" : ".broken." + std::to_string(i);
    if (isThere(kept)) continue;
    std::error_code ignored;
    fs::rename(path, kept, ignored);
    return;
  }
}

/// While it lives, threads start with every signal blocked: signals are for the main thread.
class SignalsBlocked {
 public:
  SignalsBlocked() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  SignalsBlocked(const SignalsBlocked&) = delete;
  SignalsBlocked& operator=(const SignalsBlocked&) = delete;
  ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

 private:
  sigset_t before_{};
};

/// A change mostly comes with a key press: what is to be seen of it goes first, and what follows at once is written with it.
constexpr auto settlingTime = std::chrono::milliseconds(50);

}  // namespace

SettingsFile::SettingsFile(fs::path path) : path_(std::move(path)) {
  if (path_.empty()) return;
  auto [values, isWhole] = load(path_);
  values_ = std::move(values);
  replacesUnread_ = !isWhole;
}

SettingsFile::~SettingsFile() {
  if (!writer_.joinable()) {
    if (isChanged_ && !path_.empty()) write(values_);
    return;
  }
  {
    const std::lock_guard guard(lock_);
    isEnding_ = true;
  }
  changed_.notify_one();
  writer_.join();
}

const SettingValue* SettingsFile::find(std::string_view key) const {
  const auto found = values_.find(key);
  return found == values_.end() ? nullptr : &found->second;
}

bool SettingsFile::boolValue(std::string_view key) {
  const auto* value = find(key);
  return value != nullptr && readAsBool(*value);
}

double SettingsFile::doubleValue(std::string_view key) {
  const auto* value = find(key);
  return value != nullptr ? readAsNumber(*value) : 0;
}

std::optional<std::string> SettingsFile::data(std::string_view key) {
  const auto* value = find(key);
  const auto* data = value != nullptr ? std::get_if<SettingData>(value) : nullptr;
  if (data == nullptr) return std::nullopt;
  return data->bytes;
}

std::optional<std::chrono::system_clock::time_point> SettingsFile::date(std::string_view key) {
  const auto* value = find(key);
  const auto* date = value != nullptr ? std::get_if<SettingDate>(value) : nullptr;
  if (date == nullptr) return std::nullopt;
  return *date;
}

void SettingsFile::set(std::string_view key, SettingValue value) {
  {
    const std::lock_guard guard(lock_);
    values_.insert_or_assign(std::string(key), std::move(value));
    isChanged_ = true;
  }
  if (path_.empty()) return;
  if (!writer_.joinable()) startWriter();
  changed_.notify_one();
}

void SettingsFile::startWriter() {
  const SignalsBlocked blocked;
  try {
    writer_ = std::thread([this] { writeChanges(); });
  } catch (const std::system_error&) {
    // No thread to be had now: the next change asks again, and the end needs none.
  }
}

void SettingsFile::writeChanges() {
  bool isUnwritten = false;
  std::unique_lock guard(lock_);
  while (true) {
    changed_.wait(guard, [this] { return isChanged_ || isEnding_; });
    if (!isChanged_ && !isUnwritten) return;
    changed_.wait_for(guard, settlingTime, [this] { return isEnding_; });
    const bool isLastTry = isEnding_ && !isChanged_;
    isChanged_ = false;
    const SettingValues values = values_;
    guard.unlock();
    isUnwritten = !write(values);
    guard.lock();
    if (isLastTry) return;
  }
}

bool SettingsFile::write(const SettingValues& values) {
  std::error_code error;
  auto replacement = FileReplacement::prepare(path_, encodeSettings(values), forTheUserAlone, error);
  if (!replacement) return false;
  // What could not be read at the start may be readable by now, and is not in `values`.
  const bool isKept = replacesUnread_ || !load(replacement->target()).isWhole;
  if (isKept && isThere(replacement->target())) keepAside(replacement->target());
  if (replacement->commit()) return false;
  replacesUnread_ = false;
  return true;
}

}  // namespace tilora::xdg
