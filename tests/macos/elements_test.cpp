// Other programs' windows through the accessibility interface.
#include "platform/macos/elements.h"

#include <gmock/gmock.h>

#include "mac_test.h"
#include "windows/attribute_readers.h"
#include "windows/frame_writer.h"

namespace tilora::macos {
namespace {

using namespace std::chrono_literals;
using simulated::Effect;
using simulated::moved;
using simulated::resized;
using simulated::windowHidden;
using testing::ElementsAre;

class AccessibilityElements : public MacTest {
 protected:
  Element notes() { return accessibility_.applicationElement(100); }
  Element window() { return readElements(*notes(), AttributeName::windows).value().at(0); }

  /// Every element answers for `name` with a new object.
  template <class Object, class... Arguments>
  void answerWith(AttributeName name, Arguments... arguments) {
    system_.answer(name, [=](CFTypeRef* value) {
      *value = fake::make<Object>(arguments...);
      return kAXErrorSuccess;
    });
  }
  void answerWith(AttributeName name, AXError error) {
    system_.answer(name, [=](CFTypeRef*) { return error; });
  }

  AxAccessibility accessibility_{[this] { return system_.now(); }};
};

TEST_F(AccessibilityElements, EveryAttributeHasTheNameThatTheEngineKnows) {
  for (std::size_t index = 0; index < attributeNameCount; ++index) {
    const auto name = static_cast<AttributeName>(index);
    EXPECT_EQ(fake::utf8Text(fake::objectAs<fake::CfString>(attributeString(name)).units), text(name));
  }
}

TEST_F(AccessibilityElements, AWindowReadsAsItIs) {
  const auto notesWindow = window();
  EXPECT_EQ(readString(*notesWindow, AttributeName::role), "AXWindow");
  EXPECT_EQ(readString(*notesWindow, AttributeName::title), "Notes");
  EXPECT_EQ(readPoint(*notesWindow, AttributeName::position), (Point{50, 60}));
  EXPECT_EQ(readSize(*notesWindow, AttributeName::size), (Size{400, 300}));
  EXPECT_EQ(readInteger(*notesWindow, AttributeName::windowNumber), 7);
  EXPECT_EQ(notesWindow->hash(), window()->hash());
}

TEST_F(AccessibilityElements, TheFocusedWindowIsAnElement) {
  const auto focused = readElement(*notes(), AttributeName::focusedWindow);
  ASSERT_TRUE(focused);
  EXPECT_EQ(readString(*focused, AttributeName::title), "Notes");
}

TEST_F(AccessibilityElements, AValueThatMayBeMissingIsNothing) {
  world_->setAttribute(7, AttributeName::title, std::nullopt);
  EXPECT_EQ(window()->value(AttributeName::title), std::nullopt);
  answerWith(AttributeName::role, kAXErrorSuccess);  // success, and yet no object
  EXPECT_EQ(window()->value(AttributeName::role), std::nullopt);
}

TEST_F(AccessibilityElements, AValueThatComesWithAnErrorIsNothingAndIsReleased) {
  system_.answer(AttributeName::title, [](CFTypeRef* value) {
    *value = fake::make<fake::CfString>(u"Half");
    return kAXErrorFailure;
  });
  EXPECT_EQ(window()->value(AttributeName::title), std::nullopt);
}

TEST_F(AccessibilityElements, AnAttributeOfAnotherTypeReadsAsAbsent) {
  answerWith<fake::CfData>(AttributeName::title);
  answerWith<fake::CfData>(AttributeName::position);
  answerWith<fake::CfString>(AttributeName::minimized, u"1");
  answerWith<fake::CfString>(AttributeName::windowNumber, u"7");
  answerWith<fake::CfString>(AttributeName::focusedWindow, u"Notes");
  const auto notesWindow = window();
  EXPECT_EQ(readString(*notesWindow, AttributeName::title), std::nullopt);
  EXPECT_EQ(readPoint(*notesWindow, AttributeName::position), std::nullopt);
  EXPECT_EQ(readBoolean(*notesWindow, AttributeName::minimized), std::nullopt);
  EXPECT_EQ(readInteger(*notesWindow, AttributeName::windowNumber), std::nullopt);
  EXPECT_EQ(readElement(*notes(), AttributeName::focusedWindow), nullptr);
}

TEST_F(AccessibilityElements, ABoxOfAnotherKindReadsAsAbsent) {
  answerWith<fake::CfGeometry>(AttributeName::position, kAXValueTypeCGSize, CGRect{{1, 2}, {3, 4}});
  answerWith<fake::CfGeometry>(AttributeName::size, kAXValueTypeCGRect, CGRect{{1, 2}, {3, 4}});
  EXPECT_EQ(readPoint(*window(), AttributeName::position), std::nullopt);
  EXPECT_EQ(readSize(*window(), AttributeName::size), std::nullopt);
}

TEST_F(AccessibilityElements, TruthIsABooleanOrANumber) {
  system_.answer(AttributeName::minimized, [](CFTypeRef* value) {
    *value = kCFBooleanTrue;
    return kAXErrorSuccess;
  });
  EXPECT_EQ(readBoolean(*window(), AttributeName::minimized), true);
  answerWith<fake::CfNumber>(AttributeName::minimized, std::int64_t{0});
  EXPECT_EQ(readBoolean(*window(), AttributeName::minimized), false);
  answerWith<fake::CfNumber>(AttributeName::minimized, 0.25);
  EXPECT_EQ(readBoolean(*window(), AttributeName::minimized), true);
}

TEST_F(AccessibilityElements, AWindowNumberMayNeedMoreThanThirtyTwoBits) {
  answerWith<fake::CfNumber>(AttributeName::windowNumber, (std::int64_t{1} << 40) + 5);
  EXPECT_EQ(windowNumberOf(*window()), (std::int64_t{1} << 40) + 5);
}

TEST_F(AccessibilityElements, AListWithAnythingButElementsIsNoListOfWindows) {
  system_.answer(AttributeName::windows, [](CFTypeRef* value) {
    *value = fake::make<fake::CfArray>(std::vector<CFTypeRef>{fake::make<fake::CfString>(u"window")});
    return kAXErrorSuccess;
  });
  EXPECT_EQ(readElements(*notes(), AttributeName::windows), std::nullopt);
}

TEST_F(AccessibilityElements, AnEmptyListOfWindowsIsAList) {
  answerWith<fake::CfArray>(AttributeName::windows, std::vector<CFTypeRef>{});
  EXPECT_EQ(readElements(*notes(), AttributeName::windows), std::vector<Element>{});
}

TEST_F(AccessibilityElements, AnElementOutlivesTheListThatItCameIn) {
  const auto kept = window();
  EXPECT_EQ(readString(*kept, AttributeName::title), "Notes");
}

TEST_F(AccessibilityElements, AFrameIsWrittenPositionFirst) {
  writeFrame(accessibility_, *window(), {10, 35}, {705, 855});
  EXPECT_THAT(world_->takeEffects(), ElementsAre(Effect(moved(7, 10, 35)), Effect(resized(7, 705, 855))));
}

TEST_F(AccessibilityElements, AFrameOfWhichOneHalfCannotBeBoxedIsNotWritten) {
  world_->setBoxing(true, false);
  writeFrame(accessibility_, *window(), {10, 35}, {705, 855});
  world_->setBoxing(false, true);
  writeFrame(accessibility_, *window(), {10, 35}, {705, 855});
  EXPECT_TRUE(world_->takeEffects().empty());
}

TEST_F(AccessibilityElements, AValueThatNobodyBoxedIsNotWritten) {
  window()->set(AttributeName::position, BoxedValue{Point{1, 2}, nullptr});
  EXPECT_TRUE(world_->takeEffects().empty());
}

TEST_F(AccessibilityElements, HidingWritesABoolean) {
  window()->set(AttributeName::hidden, true);
  window()->set(AttributeName::hidden, false);
  EXPECT_THAT(world_->takeEffects(), ElementsAre(Effect(windowHidden(7, true)), Effect(windowHidden(7, false))));
}

TEST_F(AccessibilityElements, SettabilityIsYesNoOrUnknown) {
  EXPECT_EQ(window()->isSettable(AttributeName::position), true);
  EXPECT_EQ(window()->isSettable(AttributeName::hidden), false);
  world_->setSettable(7, AttributeName::size, simulated::Settability::error);
  EXPECT_EQ(window()->isSettable(AttributeName::size), std::nullopt);
}

TEST_F(AccessibilityElements, AWindowThatClosesBetweenTwoCallsReadsNothingAndTakesNothing) {
  const auto closing = window();
  world_->close(7);
  EXPECT_EQ(closing->value(AttributeName::title), std::nullopt);
  EXPECT_EQ(closing->isSettable(AttributeName::position), std::nullopt);
  writeFrame(accessibility_, *closing, {10, 35}, {705, 855});
  EXPECT_TRUE(world_->takeEffects().empty());
}

TEST_F(AccessibilityElements, AProcessThatIsGoneHasAnElementThatReadsNothing) {
  const auto gone = accessibility_.applicationElement(4711);
  ASSERT_TRUE(gone);
  EXPECT_EQ(gone->value(AttributeName::windows), std::nullopt);
}

TEST_F(AccessibilityElements, WithoutTrustNothingIsRead) {
  const auto notesWindow = window();
  world_->trust().trusted = false;
  EXPECT_EQ(notesWindow->value(AttributeName::title), std::nullopt);
  EXPECT_EQ(notesWindow->isSettable(AttributeName::position), std::nullopt);
}

TEST_F(AccessibilityElements, AHungApplicationCostsOneShortTimeout) {
  const auto notesWindow = window();
  system_.hang(100);
  system_.takeCalls();
  const auto begin = system_.now();

  EXPECT_EQ(notesWindow->value(AttributeName::title), std::nullopt);
  EXPECT_EQ(notesWindow->isSettable(AttributeName::position), std::nullopt);
  writeFrame(accessibility_, *notesWindow, {10, 35}, {705, 855});
  EXPECT_EQ(notes()->value(AttributeName::windows), std::nullopt);

  EXPECT_EQ(system_.takeCalls(), 1U);
  EXPECT_EQ(system_.now() - begin, 250ms);
}

TEST_F(AccessibilityElements, AHungApplicationElementWaitsForTheShortTimeoutToo) {
  const auto application = notes();
  system_.defaultTimeout.reset();  // its own must do without the one of the process
  system_.hang(100);
  const auto begin = system_.now();
  EXPECT_EQ(application->value(AttributeName::windows), std::nullopt);
  EXPECT_EQ(system_.now() - begin, 250ms);
}

TEST_F(AccessibilityElements, AnApplicationThatRecoversIsReadAgain) {
  system_.hang(100);
  EXPECT_EQ(notes()->value(AttributeName::windows), std::nullopt);
  system_.hang(100, false);
  system_.pass(CallGuard::rest);
  EXPECT_EQ(readString(*window(), AttributeName::title), "Notes");
}

}  // namespace
}  // namespace tilora::macos
