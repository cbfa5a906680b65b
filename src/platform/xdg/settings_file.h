// The settings of this user in one file.
#pragma once

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <thread>

#include "platform/settings_store.h"
#include "platform/xdg/settings_json.h"

namespace tilora::xdg {

/// Reads the file once, when it is made. Each change stands at once and is handed to a thread that writes the whole file, mode 0600, in one
/// durable step; changes that come while it writes go out together, the latest of each. The destructor waits until the last change is
/// written. A write that fails is tried again at the next change and at the end.
///
/// Of a file that is not understood as a whole, the entries that are understood count; one that cannot be read has none. It is kept beside
/// as "<name>.broken",
/// "<name>.broken.1" and so on when it is overwritten. A kept one is never overwritten; when there are ten, no more are kept.
class SettingsFile final : public SettingsStore {
 public:
  /// `path` and its folder need not exist. An empty path: nothing is read or written, the values live as long as this object.
  explicit SettingsFile(std::filesystem::path path);
  SettingsFile(const SettingsFile&) = delete;
  SettingsFile& operator=(const SettingsFile&) = delete;
  ~SettingsFile() override;

  bool contains(std::string_view key) override { return find(key) != nullptr; }
  bool boolValue(std::string_view key) override;
  double doubleValue(std::string_view key) override;
  std::optional<std::string> data(std::string_view key) override;
  std::optional<std::chrono::system_clock::time_point> date(std::string_view key) override;
  void setBool(std::string_view key, bool value) override { set(key, value); }
  void setDouble(std::string_view key, double value) override { set(key, value); }
  void setData(std::string_view key, std::string bytes) override { set(key, SettingData{std::move(bytes)}); }
  void setDate(std::string_view key, std::chrono::system_clock::time_point value) override { set(key, value); }

 private:
  const SettingValue* find(std::string_view key) const;
  void set(std::string_view key, SettingValue value);
  void startWriter();
  void writeChanges();
  bool write(const SettingValues& values);

  const std::filesystem::path path_;
  /// Changed by the main thread alone, under the lock; read by the writer under the lock.
  SettingValues values_;
  std::mutex lock_;
  std::condition_variable changed_;
  bool isChanged_ = false;
  bool isEnding_ = false;
  /// Whether the file in place holds what was not understood, or could not be read, when this object was made. The writer's alone once it
  /// runs.
  bool replacesUnread_ = false;
  /// Started by the first change.
  std::thread writer_;
};

}  // namespace tilora::xdg
