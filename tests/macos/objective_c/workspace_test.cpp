// The running applications and what happens to them.
#include "platform/macos/workspace.h"

#include <gmock/gmock.h>

#include "objective_c/objective_c_test.h"

namespace tilora::macos {
namespace {

using testing::ElementsAre;

constexpr ProcessId notes = 100;
constexpr ProcessId agent = 101;
constexpr ProcessId daemon = 102;

class WorkspaceTest : public ObjectiveCTest {
 protected:
  MacWorkspace workspace_;
};

TEST_F(WorkspaceTest, ApplicationsComeInTheOrderOfTheSystemWithTheirPolicies) {
  world_->addApplication(agent, {.policy = ActivationPolicy::accessory});
  world_->addApplication(daemon, {.policy = ActivationPolicy::prohibited});
  std::vector<std::pair<ProcessId, ActivationPolicy>> seen;
  for (const auto& application : workspace_.runningApplications()) {
    seen.emplace_back(application->processIdentifier(), application->activationPolicy());
  }
  EXPECT_THAT(seen, ElementsAre(std::pair(notes, ActivationPolicy::regular), std::pair(agent, ActivationPolicy::accessory),
                                std::pair(daemon, ActivationPolicy::prohibited)));
}

TEST_F(WorkspaceTest, AnApplicationMayHaveNeitherIdentifierNorName) {
  world_->addApplication(agent, {});
  const auto application = workspace_.applicationWithProcessIdentifier(agent);
  ASSERT_TRUE(application);
  EXPECT_EQ(application->bundleIdentifier(), std::nullopt);
  EXPECT_EQ(application->localizedName(), std::nullopt);
}

TEST_F(WorkspaceTest, ANameThatEndsInHalfACharacterIsRepaired) {
  system_.appKit.nameOfApplications = {u'a', 0xD83D};
  EXPECT_EQ(workspace_.applicationWithProcessIdentifier(notes)->localizedName(), "a\xEF\xBF\xBD");
}

TEST_F(WorkspaceTest, HidingAndShowingReachTheApplication) {
  const auto application = workspace_.applicationWithProcessIdentifier(notes);
  application->hide();
  EXPECT_TRUE(application->isHidden());
  EXPECT_TRUE(world_->interfaces().workspace.applicationWithProcessIdentifier(notes)->isHidden());
  application->unhide();
  EXPECT_FALSE(application->isHidden());
}

TEST_F(WorkspaceTest, AnApplicationThatEndedAnswersAsItLastWas) {
  const auto application = workspace_.applicationWithProcessIdentifier(notes);
  world_->quit(notes);
  EXPECT_TRUE(application->isTerminated());
  EXPECT_EQ(application->processIdentifier(), notes);
  EXPECT_EQ(workspace_.applicationWithProcessIdentifier(notes), nullptr);
}

TEST_F(WorkspaceTest, ThereMayBeNoFrontmostApplication) {
  EXPECT_EQ(workspace_.frontmostApplication()->processIdentifier(), notes);
  world_->setFrontmost(std::nullopt);
  EXPECT_EQ(workspace_.frontmostApplication(), nullptr);
}

class ObservedEvent : public ObjectiveCTest, public testing::WithParamInterface<WorkspaceEvent> {
 protected:
  MacWorkspace workspace_;
};

TEST_P(ObservedEvent, AnObserverIsToldOfItsEventAndOfNoOther) {
  int told = 0;
  const auto observer = workspace_.observe(GetParam(), [&] { ++told; });
  for (const auto event : {WorkspaceEvent::launched, WorkspaceEvent::terminated, WorkspaceEvent::activated, WorkspaceEvent::spaceChanged,
                           WorkspaceEvent::screensChanged}) {
    world_->notify(event);
  }
  world_->clock().runPosted();
  EXPECT_EQ(told, 1);
}

TEST_P(ObservedEvent, AnObserverThatEndedIsNotToldOfWhatWasOnItsWay) {
  int told = 0;
  auto observer = workspace_.observe(GetParam(), [&] { ++told; });
  EXPECT_EQ(fake::installedObservers(), 1U);
  system_.appKit.tellsRemovedObservers = true;
  observer.reset();
  fake::tellRemovedObservers();
  EXPECT_EQ(told, 0);
  EXPECT_EQ(fake::installedObservers(), 0U);
}

TEST_P(ObservedEvent, AnObserverMayEndItself) {
  int told = 0;
  Subscription observer;
  observer = workspace_.observe(GetParam(), [&] {
    observer.reset();
    ++told;
  });
  world_->notify(GetParam());
  world_->notify(GetParam());
  world_->clock().runPosted();
  EXPECT_EQ(told, 1);
}

INSTANTIATE_TEST_SUITE_P(Each, ObservedEvent,
                         testing::Values(WorkspaceEvent::launched, WorkspaceEvent::terminated, WorkspaceEvent::activated,
                                         WorkspaceEvent::spaceChanged, WorkspaceEvent::screensChanged));

}  // namespace
}  // namespace tilora::macos
