// The configuration folder follows the environment as the XDG Base Directory standard has it.
#include "platform/xdg/base_directories.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace tilora::xdg {
namespace {

/// Sets or unsets a variable while it lives.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    set(value);
  }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  ~Variable() { set(before_ ? before_->c_str() : nullptr); }

 private:
  void set(const char* value) const {
    if (value == nullptr) {
      unsetenv(name_);
    } else {
      setenv(name_, value, 1);
    }
  }

  const char* name_;
  std::optional<std::string> before_;
};

TEST(BaseDirectories, AnAbsoluteConfigurationHomeCounts) {
  const Variable home("HOME", "/home/someone");
  const Variable configuration("XDG_CONFIG_HOME", "/else/where");
  EXPECT_EQ(configurationHome(), "/else/where");
  EXPECT_EQ(tiloraConfiguration(), "/else/where/tilora");
}

TEST(BaseDirectories, WithoutOneItIsInTheHomeFolder) {
  const Variable home("HOME", "/home/someone");
  for (const char* value : {static_cast<const char*>(nullptr), "", "relative/path", "~/.config"}) {
    const Variable configuration("XDG_CONFIG_HOME", value);
    EXPECT_EQ(tiloraConfiguration(), "/home/someone/.config/tilora");
  }
}

TEST(BaseDirectories, WithoutAHomeInTheEnvironmentTheUserDatabaseCounts) {
  const Variable configuration("XDG_CONFIG_HOME", nullptr);
  const Variable home("HOME", nullptr);
  EXPECT_TRUE(configurationHome().is_absolute());
  EXPECT_EQ(configurationHome().filename(), ".config");
}

}  // namespace
}  // namespace tilora::xdg
