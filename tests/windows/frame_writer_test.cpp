// What is written to a window, and in which order.
#include "windows/frame_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/desktops.h"

namespace tilora {
namespace {

using simulated::moved;
using simulated::resized;
using testing::ElementsAre;
using testing::IsEmpty;

class FrameWriter : public testing::Test {
 protected:
  void write() { writeFrame(desktop_->interfaces().accessibility, *test::elementOf(*desktop_, 100), {1, 2}, {3, 4}); }
  void writePositionAlone() { writePosition(desktop_->interfaces().accessibility, *test::elementOf(*desktop_, 100), {1, 2}); }

  std::unique_ptr<simulated::SimulatedDesktop> desktop_ = test::laptop().app(100).window(1).build();
};

TEST_F(FrameWriter, WritesThePositionThenTheSizeOnceEach) {
  write();

  EXPECT_THAT(desktop_->takeEffects(), ElementsAre(moved(1, 1, 2), resized(1, 3, 4)));
}

TEST_F(FrameWriter, WritesNeitherWhenThePositionCannotBeBoxed) {
  desktop_->setBoxing(false, true);
  write();
  writePositionAlone();

  EXPECT_THAT(desktop_->takeEffects(), IsEmpty());
}

TEST_F(FrameWriter, WritesNeitherWhenTheSizeCannotBeBoxed) {
  desktop_->setBoxing(true, false);
  write();

  EXPECT_THAT(desktop_->takeEffects(), IsEmpty());
}

TEST_F(FrameWriter, WritesThePositionAloneWhateverBecomesOfSizes) {
  desktop_->setBoxing(true, false);
  writePositionAlone();

  EXPECT_THAT(desktop_->takeEffects(), ElementsAre(moved(1, 1, 2)));
}

TEST_F(FrameWriter, GoesOnToTheSizeWhenThePositionIsRefused) {
  desktop_->setSettable(1, AttributeName::position, simulated::Settability::error);
  write();

  EXPECT_THAT(desktop_->takeEffects(), ElementsAre(moved(1, 1, 2), resized(1, 3, 4)));
}

}  // namespace
}  // namespace tilora
