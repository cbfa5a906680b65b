// Desktop entries: which values are found, and command lines that mean one program whatever its path.
#include "platform/xdg/desktop_entry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tilora::xdg {
namespace {

constexpr std::string_view entry =
    "# Hidden=true\n"
    "Hidden=true\n"
    "[Desktop Action New]\n"
    "Hidden=true\n"
    "[Desktop Entry]\r\n"
    "Type = Application \n"
    "#Hidden=true\n"
    "Name=first\n"
    "Name=second\n"
    "Name[de]=erster\n"
    "Exec=a=b\n"
    "nonsense\n"
    "Empty=\n"
    "[Other]\n"
    "Hidden=true";

TEST(DesktopEntry, AValueIsFoundInItsGroupAlone) {
  EXPECT_EQ(desktopEntryValue(entry, "Type"), "Application");
  EXPECT_EQ(desktopEntryValue(entry, "Name"), "first");
  EXPECT_EQ(desktopEntryValue(entry, "Name[de]"), "erster");
  EXPECT_EQ(desktopEntryValue(entry, "Exec"), "a=b");
  EXPECT_EQ(desktopEntryValue(entry, "Empty"), "");
  EXPECT_EQ(desktopEntryValue(entry, "Hidden"), std::nullopt);
  EXPECT_EQ(desktopEntryValue(entry, "nonsense"), std::nullopt);
  EXPECT_EQ(desktopEntryValue("", "Hidden"), std::nullopt);
}

TEST(DesktopEntry, ABooleanHasOneOfTwoWordsOrDigits) {
  const auto has = [](const std::string& value, bool wanted) {
    return desktopEntryHas("[Desktop Entry]\nHidden=" + value, "Hidden", wanted);
  };
  EXPECT_TRUE(has("true", true));
  EXPECT_TRUE(has("1", true));
  EXPECT_TRUE(has(" true ", true));
  EXPECT_FALSE(has("true", false));
  EXPECT_TRUE(has("false", false));
  EXPECT_TRUE(has("0", false));
  EXPECT_FALSE(has("yes", true));
  EXPECT_FALSE(has("", false));
  EXPECT_FALSE(desktopEntryHas("[Desktop Entry]\n", "Hidden", false));
}

/// The text that a value of type string stands for.
std::string unescaped(std::string_view value) {
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] != '\\' || i + 1 == value.size()) {
      text += value[i];
      continue;
    }
    const char escape = value[++i];
    text += escape == 's' ? ' ' : escape == 'n' ? '\n' : escape == 't' ? '\t' : escape == 'r' ? '\r' : escape;
  }
  return text;
}

/// The arguments of a command line all of whose unquoted parts are plain.
std::vector<std::string> arguments(std::string_view command) {
  std::vector<std::string> result(1);
  bool isQuoted = false;
  for (std::size_t i = 0; i < command.size(); ++i) {
    const char character = command[i];
    if (character == '"') {
      isQuoted = !isQuoted;
    } else if (character == ' ' && !isQuoted) {
      result.emplace_back();
    } else if (isQuoted && (character == '\\' || character == '%')) {
      result.back() += command[++i];
    } else {
      EXPECT_EQ(isQuoted && (character == '$' || character == '`'), false) << "not escaped";
      result.back() += character;
    }
  }
  return result;
}

std::vector<std::string> startedBy(const std::string& program) {
  const auto value = execValue(program);
  if (!value) return {};
  EXPECT_EQ(value->find_first_of("\n\r\t"), std::string::npos);
  return arguments(unescaped(*value));
}

TEST(DesktopEntry, TheCommandLineMeansTheProgramWhateverItsPath) {
  const std::vector<std::string> programs = {"/usr/bin/tilora",         "/home/some one/tilora",      "/opt/a\"b'c/tilora",
                                             "/opt/$HOME/`id`/tilora",  "/opt/back\\slash\\n/tilora", "/opt/new\nline\ttab/tilora",
                                             "/opt/~#&;|<>()*?/tilora", "/opt/Grüße/tilora"};
  for (const auto& program : programs) EXPECT_EQ(startedBy(program), std::vector<std::string>{program});
}

TEST(DesktopEntry, APathWithAnEqualOrPercentSignIsStartedByAShell) {
  for (const std::string program : {"/opt/a=b c$e/tilora", "/opt/100%/tilora", "/opt/%f/tilora"}) {
    EXPECT_EQ(startedBy(program), (std::vector<std::string>{"sh", "-c", "exec \"$0\"", program}));
  }
}

TEST(DesktopEntry, APathThatIsNoTextCannotBeSaid) { EXPECT_EQ(execValue("/opt/\xff/tilora"), std::nullopt); }

TEST(DesktopEntry, BackslashesAndDollarsInAPathAreEscapedTwice) { EXPECT_EQ(execValue("/a\\b$c"), R"("/a\\\\b\\$c")"); }

}  // namespace
}  // namespace tilora::xdg
