// Starting with the session: an entry in the user's autostart folder (freedesktop.org, Desktop Application Autostart 0.5).
#pragma once

#include <filesystem>

#include "platform/login_item.h"

namespace tilora::xdg {

/// The file that the running program was started from, with symbolic links followed; empty when the system does not say.
std::filesystem::path runningProgram();

/// ~/.config/autostart/tilora.desktop, wherever the user's configuration is; empty when there is no such place.
std::filesystem::path autostartFile();

/// The entry is enabled when its file is there and no desktop has switched it off in it, and not registered in every other case.
class AutostartEntry final : public LoginItem {
 public:
  /// `file` is the entry, `program` the absolute path of what it starts.
  AutostartEntry(std::filesystem::path file, std::filesystem::path program);

  LoginItemStatus status() override;
  /// Writes the entry anew, in one step.
  std::optional<std::string> registerItem() override;
  /// Removes the entry; it is no failure when there is none.
  std::optional<std::string> unregisterItem() override;

 private:
  std::filesystem::path file_;
  std::filesystem::path program_;
};

}  // namespace tilora::xdg
