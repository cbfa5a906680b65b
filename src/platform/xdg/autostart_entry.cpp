// Reading, writing and removing the autostart entry.
#include "platform/xdg/autostart_entry.h"

#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/xdg/base_directories.h"
#include "platform/xdg/desktop_entry.h"
#include "platform/xdg/file_replacement.h"

namespace tilora::xdg {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t largestEntry = std::size_t{1} << 20U;
constexpr mode_t readableByAll = 0644;

/// Why it failed. What the system says of a missing permission sounds the same as what macOS says of a program outside its applications
/// folder, and is said in other words here.
std::string reason(const std::error_code& error) {
  if (error == std::errc::permission_denied || error == std::errc::operation_not_permitted) return "the folder or the file is protected";
  if (error == std::errc::invalid_argument) return "what stands there is no file";
  return error.message();
}

std::string sentence(std::string_view what, const fs::path& file, const std::error_code& error) {
  return std::string(what) + ' ' + file.string() + ": " + reason(error) + '.';
}

/// The keys with which desktops switch an entry off: the first is that of all desktops, the others those of GNOME, Cinnamon
/// and MATE.
bool isSwitchedOff(std::string_view entry) {
  return desktopEntryHas(entry, "Hidden", true) || desktopEntryHas(entry, "X-GNOME-Autostart-enabled", false) ||
         desktopEntryHas(entry, "X-MATE-Autostart-enabled", false);
}

std::string entryThatRuns(const std::string& command) {
  return "[Desktop Entry]\nType=Application\nVersion=1.5\nName=Tilora\nComment=Tiles the windows of this desktop\nExec=" + command +
         "\nTerminal=false\nStartupNotify=false\n";
}

}  // namespace

fs::path runningProgram() {
  std::error_code error;
  fs::path program = fs::read_symlink("/proc/self/exe", error);
  if (error) return {};
  // A program that was replaced since it was started is found under its name again.
  constexpr std::string_view deleted = " (deleted)";
  const std::string& name = program.native();
  if (name.ends_with(deleted) && !fs::exists(program, error)) return name.substr(0, name.size() - deleted.size());
  return program;
}

fs::path autostartFile() {
  const auto home = configurationHome();
  return home.empty() ? home : home / "autostart" / "tilora.desktop";
}

AutostartEntry::AutostartEntry(fs::path file, fs::path program) : file_(std::move(file)), program_(std::move(program)) {}

LoginItemStatus AutostartEntry::status() {
  const auto [content, error] = readFile(file_, largestEntry);
  return content && !isSwitchedOff(*content) ? LoginItemStatus::enabled : LoginItemStatus::notRegistered;
}

std::optional<std::string> AutostartEntry::registerItem() {
  if (file_.empty()) return "This user has no home folder to keep the autostart entry in.";
  if (!program_.is_absolute()) return "The system does not tell where the program is.";
  const auto command = execValue(program_);
  if (!command) return "The path of the program is not UTF-8 text, and an autostart entry has to be.";
  std::error_code error;
  auto replacement = FileReplacement::prepare(file_, entryThatRuns(*command), readableByAll, error);
  if (replacement) error = replacement->commit();
  if (error) return sentence("Cannot write", file_, error);
  return std::nullopt;
}

std::optional<std::string> AutostartEntry::unregisterItem() {
  if (file_.empty() || unlink(file_.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR) return std::nullopt;
  return sentence("Cannot remove", file_, {errno, std::generic_category()});
}

}  // namespace tilora::xdg
