// The user's settings in the defaults database.
#include "platform/macos/user_defaults.h"

#include <gmock/gmock.h>

#include "objective_c/objective_c_test.h"

namespace tilora::macos {
namespace {

using namespace std::chrono_literals;
using simulated::Effect;
using simulated::SettingStored;
using testing::ElementsAre;

class UserDefaultsTest : public ObjectiveCTest {
 protected:
  UserDefaults defaults_;
};

TEST_F(UserDefaultsTest, EachValueIsStoredAsItsType) {
  const SettingDate moment{1700000000s};
  defaults_.setDouble("Tilora.WindowPadding", 7.5);
  defaults_.setBool("Tilora.StartOnLogin", true);
  defaults_.setData("Tilora.ShortcutBindings", "{}");
  defaults_.setDate("lastUpdateCheck", moment);
  EXPECT_THAT(
      world_->takeEffects(),
      ElementsAre(Effect(SettingStored{"Tilora.WindowPadding", 7.5}), Effect(SettingStored{"Tilora.StartOnLogin", true}),
                  Effect(SettingStored{"Tilora.ShortcutBindings", SettingData{"{}"}}), Effect(SettingStored{"lastUpdateCheck", moment})));
}

TEST_F(UserDefaultsTest, DataOfAnyBytesComesBack) {
  const std::string bytes("\0\xFF{}\n", 5);
  defaults_.setData("Tilora.AppPlacementPreferences", bytes);
  EXPECT_EQ(defaults_.data("Tilora.AppPlacementPreferences"), bytes);
  defaults_.setData("Tilora.AppPlacementPreferences", "");
  EXPECT_EQ(defaults_.data("Tilora.AppPlacementPreferences"), "");
}

TEST_F(UserDefaultsTest, WhatIsOfAnotherTypeIsNoDataAndNoDate) {
  world_->settings().put("key", std::string("2026"));
  EXPECT_TRUE(defaults_.contains("key"));
  EXPECT_EQ(defaults_.data("key"), std::nullopt);
  EXPECT_EQ(defaults_.date("key"), std::nullopt);
}

TEST_F(UserDefaultsTest, ADateBeyondTheClockIsItsLastMoment) {
  world_->settings().put("key", SettingDate::max());
  EXPECT_EQ(defaults_.date("key"), SettingDate::max());
  world_->settings().put("key", SettingDate::min());
  EXPECT_EQ(defaults_.date("key"), SettingDate::min());
}

}  // namespace
}  // namespace tilora::macos
