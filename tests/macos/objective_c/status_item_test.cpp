// The icon in the menu bar.
#include "platform/macos/status_item.h"

#include <gmock/gmock.h>

#include "objective_c/objective_c_test.h"

namespace tilora::macos {
namespace {

using fake::ShownStatusItem;
using testing::ElementsAre;
using testing::IsEmpty;

class StatusItemTest : public ObjectiveCTest {
 protected:
  std::vector<Rect> clicks_;
  std::optional<StatusItem> item_{std::in_place, [this](const Rect& place) { clicks_.push_back(place); }};

  void TearDown() override {
    item_.reset();
    ObjectiveCTest::TearDown();
  }
};

TEST_F(StatusItemTest, TheSymbolIsATemplateAndSaysWhatItIs) {
  item_->setSymbol("rectangle.stack.fill", "Tilora");
  EXPECT_THAT(fake::shownStatusItems(), ElementsAre(ShownStatusItem{"rectangle.stack.fill", true, "Tilora", "Tilora"}));
  item_->setSymbol("exclamationmark.triangle.fill", "Tilora");
  EXPECT_EQ(fake::shownStatusItems().at(0).symbol, "exclamationmark.triangle.fill");
}

TEST_F(StatusItemTest, AClickTellsThePlaceOfTheIcon) {
  system_.appKit.iconPlace = {1301, 876, 33, 24};
  fake::clickStatusItem();
  EXPECT_THAT(clicks_, ElementsAre(Rect{1301, 876, 33, 24}));
}

TEST_F(StatusItemTest, TheIconGoesWithItsOwner) {
  item_.reset();
  EXPECT_THAT(fake::shownStatusItems(), IsEmpty());
}

}  // namespace
}  // namespace tilora::macos
