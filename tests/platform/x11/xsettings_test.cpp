// The settings manager of a desktop: what it says, also when it lies, and when it comes and goes.
#include "platform/x11/xsettings.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "bare_server.h"
#include "harness/settings_manager.h"

namespace tilora::x11 {
namespace {

using harness::SettingsManager;
using harness::themeNamed;
using Value = harness::SettingsValue;

constexpr std::string_view theme = "Net/ThemeName";

TEST(XSettingsText, IsFoundAmongSettingsOfEveryTypeInBothByteOrders) {
  for (const bool mostSignificantFirst : {false, true}) {
    const std::string bytes = Value(mostSignificantFirst)
                                  .integer("Xft/DPI", 98304)
                                  .color("Gtk/Any")
                                  .text("Net/IconThemeName", "Adwaita")
                                  .text(theme, "Arc-Dark")
                                  .text("Gtk/FontName", "Sans 10")
                                  .bytes();
    EXPECT_EQ(xsettingsText(bytes, theme), "Arc-Dark");
    EXPECT_EQ(xsettingsText(bytes, "Gtk/FontName"), "Sans 10");
    EXPECT_EQ(xsettingsText(bytes, "Gtk/KeyThemeName"), "");
  }
}

TEST(XSettingsText, ANumberUnderThatNameIsNoText) {
  EXPECT_EQ(xsettingsText(Value().integer(theme, 5).text("Net/Other", "Arc-Dark").bytes(), theme), "");
}

TEST(XSettingsText, AValueThatEndsEarlyHasWhatIsWholeAndNoMore) {
  const std::string bytes = Value().text("Gtk/FontName", "Sans 10").text(theme, "Arc-Dark").bytes();
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_EQ(xsettingsText(std::string_view(bytes).substr(0, length), theme), "") << length;
  }
  EXPECT_EQ(xsettingsText(std::string_view(bytes).substr(0, bytes.size() - 1), "Gtk/FontName"), "Sans 10");
}

TEST(XSettingsText, LengthsAndCountsBeyondTheValueAreNotBelieved) {
  std::string bytes = Value().text(theme, "Arc-Dark").bytes();
  constexpr std::size_t countAt = 8;
  constexpr std::size_t nameLengthAt = 14;
  constexpr std::size_t lengthAt = 36;
  for (const std::size_t place : {nameLengthAt, lengthAt}) {
    std::string broken = bytes;
    broken.replace(place, 2, "\xFF\xFF");
    EXPECT_EQ(xsettingsText(broken, theme), "") << place;
  }
  bytes.replace(countAt, 4, "\xFF\xFF\xFF\xFF");
  EXPECT_EQ(xsettingsText(bytes, theme), "Arc-Dark");
  EXPECT_EQ(xsettingsText(bytes, "Net/Other"), "");
}

TEST(XSettingsText, IllFormedTextIsRepaired) {
  EXPECT_EQ(xsettingsText(Value().text(theme, "Arc\xFF-Dark").bytes(), theme), "Arc\xEF\xBF\xBD-Dark");
}

class XSettingsTest : public testing::Test {
 protected:
  XSettingsTest() {
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(bare.connection->xcb(), bare.connection->root(), XCB_CW_EVENT_MASK, &mask);
  }

  void start() {
    settings.emplace(*bare.connection, [this] { heard.push_back(settings->themeName()); });
  }

  BareServer bare;
  std::optional<SettingsManager> manager;
  std::vector<std::string> heard;
  std::optional<XSettings> settings;
  EventPump pump{*bare.connection, [this](const xcb_generic_event_t& event) { settings->handleEvent(event); }};
};

TEST_F(XSettingsTest, AManagerThatIsThereIsRead) {
  manager.emplace(bare.display, themeNamed("Adwaita"));
  settings.emplace(*bare.connection, [] {});
  EXPECT_EQ(settings->themeName(), "Adwaita");
  manager->set(themeNamed("Adwaita-dark"));
  EXPECT_TRUE(pump.until([&] { return settings->themeName() == "Adwaita-dark"; }));
}

TEST_F(XSettingsTest, EveryChangeIsToldOnce) {
  start();
  manager.emplace(bare.display, themeNamed("Adwaita"));
  pump.takeAll();
  manager->set(themeNamed("Adwaita"));
  manager->set(themeNamed("Adwaita-dark"));
  pump.takeAll();
  EXPECT_EQ(heard, (std::vector<std::string>{"Adwaita", "Adwaita-dark"}));
}

TEST_F(XSettingsTest, WithoutAManagerNobodyTells) {
  start();
  EXPECT_EQ(settings->themeName(), "");
  manager.emplace(bare.display, themeNamed("Adwaita"));
  EXPECT_TRUE(pump.until([&] { return !heard.empty(); }));
  manager.reset();
  EXPECT_TRUE(pump.until([&] { return heard.back().empty(); }));
  manager.emplace(bare.display, themeNamed("Arc-Dark"));
  EXPECT_TRUE(pump.until([&] { return heard.back() == "Arc-Dark"; }));
}

TEST_F(XSettingsTest, APropertyOfAnotherFormatSaysNothing) {
  start();
  manager.emplace(bare.display, themeNamed("Adwaita"));
  pump.takeAll();
  bare.display.setCardinals(manager->window(), "_XSETTINGS_SETTINGS", "_XSETTINGS_SETTINGS", {0, 1, 2});
  pump.takeAll();
  EXPECT_EQ(settings->themeName(), "");
}

}  // namespace
}  // namespace tilora::x11
