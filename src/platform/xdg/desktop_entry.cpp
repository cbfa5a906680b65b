// Reading and writing values of desktop entries.
#include "platform/xdg/desktop_entry.h"

#include "platform/xdg/utf8.h"

namespace tilora::xdg {
namespace {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const auto first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The first line of `text`, which is taken off it.
std::string_view takeLine(std::string_view& text) {
  const auto end = text.find('\n');
  const auto line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return line;
}

/// An argument of a command line: in quotes, with the characters escaped that mean something there.
std::string quotedArgument(std::string_view argument) {
  std::string quoted = "\"";
  for (const char character : argument) {
    if (std::string_view("\"`$\\").find(character) != std::string_view::npos) quoted += '\\';
    if (character == '%') quoted += '%';
    quoted += character;
  }
  return quoted + '"';
}

}  // namespace

std::optional<std::string_view> desktopEntryValue(std::string_view text, std::string_view key) {
  bool isInGroup = false;
  while (!text.empty()) {
    const auto line = trimmed(takeLine(text));
    if (line.starts_with('[')) isInGroup = line == "[Desktop Entry]";
    const auto equals = line.find('=');
    if (!isInGroup || line.starts_with('#') || equals == std::string_view::npos) continue;
    if (trimmed(line.substr(0, equals)) == key) return trimmed(line.substr(equals + 1));
  }
  return std::nullopt;
}

bool desktopEntryHas(std::string_view text, std::string_view key, bool value) {
  const auto found = desktopEntryValue(text, key);
  // 1 and 0 are what booleans were before desktop entries had a version.
  return found && (*found == (value ? "true" : "false") || *found == (value ? "1" : "0"));
}

std::string escapedString(std::string_view text) {
  std::string escaped;
  for (const char character : text) {
    switch (character) {
      case '\\':
        escaped += "\\\\";
        break;
      case '\n':
        escaped += "\\n";
        break;
      case '\r':
        escaped += "\\r";
        break;
      case '\t':
        escaped += "\\t";
        break;
      default:
        escaped += character;
    }
  }
  const bool hasLeadingBlank = escaped.starts_with(' ');
  return hasLeadingBlank ? "\\s" + escaped.substr(1) : escaped;
}

std::optional<std::string> execValue(const std::filesystem::path& program) {
  const std::string& path = program.native();
  if (!isUtf8(path)) return std::nullopt;
  // The name of a program may hold no equal sign there, and GLib looks for it with its percent signs still doubled; the argument of one
  // may.
  const bool needsAShell = path.find_first_of("=%") != std::string::npos;
  const std::string command = needsAShell ? "sh -c " + quotedArgument("exec \"$0\"") + ' ' + quotedArgument(path) : quotedArgument(path);
  return escapedString(command);
}

}  // namespace tilora::xdg
