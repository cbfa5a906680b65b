// Running a program beside this one.
#include "app/helper_program.h"

#include <gtest/gtest.h>

#include <QFile>

#include "event_loop.h"
#include "stand_in_dialog.h"

namespace tilora::app {
namespace {

using namespace std::chrono_literals;

std::optional<HelperEnd> endOf(EventLoop& loop, HelperProgram& program, const QStringList& arguments = {},
                               std::optional<std::chrono::milliseconds> patience = {}) {
  std::optional<HelperEnd> result;
  program.run(
      arguments, [&](const HelperEnd& end) { result = end; }, patience);
  EXPECT_FALSE(result) << "the end did not wait for the event loop";
  loop.runUntil([&] { return result.has_value(); });
  return result;
}

TEST(HelperProgram, SaysWhatItIsToldAndHowItEnded) {
  EventLoop loop;
  const StandInDialog script(QStringLiteral("printf '%s|' \"$@\"; echo no >&2; exit 3"));
  HelperProgram program(script.path());
  const auto end = endOf(loop, program, {QStringLiteral("a b"), QStringLiteral("é;$HOME")});
  ASSERT_TRUE(end);
  EXPECT_EQ(end->status, 3);
  EXPECT_EQ(end->output, "a b|é;$HOME|");
  EXPECT_EQ(end->errors, "no\n");
}

TEST(HelperProgram, HasNoStatusWhenItCannotBeStartedOrIsKilled) {
  EventLoop loop;
  HelperProgram missing(QStringLiteral("/nowhere/helper"));
  const auto end = endOf(loop, missing);
  ASSERT_TRUE(end);
  EXPECT_EQ(end->status, std::nullopt);
  const StandInDialog script(QStringLiteral("kill -9 $$"));
  HelperProgram killed(script.path());
  const auto killedEnd = endOf(loop, killed);
  ASSERT_TRUE(killedEnd);
  EXPECT_EQ(killedEnd->status, std::nullopt);
}

TEST(HelperProgram, IsEndedWhenPatienceRunsOut) {
  EventLoop loop;
  const StandInDialog script(QStringLiteral("trap '' TERM; echo x; exec sleep 1000"));
  HelperProgram program(script.path());
  const auto end = endOf(loop, program, {}, 200ms);
  ASSERT_TRUE(end);
  EXPECT_EQ(end->status, std::nullopt);
}

TEST(HelperProgram, RunsOnceAtATimeAndAgainAfterwards) {
  EventLoop loop;
  const StandInDialog script(QStringLiteral("while ! test -e \"$0.go\"; do sleep 0.02; done"));
  HelperProgram program(script.path());
  int ends = 0;
  program.run({}, [&](const HelperEnd&) { ++ends; });
  program.run({}, [&](const HelperEnd&) { ends += 100; });
  EXPECT_TRUE(program.isRunning());
  QFile go(script.path() + QStringLiteral(".go"));
  ASSERT_TRUE(go.open(QIODevice::WriteOnly));
  ASSERT_TRUE(loop.runUntil([&] { return ends != 0; }));
  EXPECT_FALSE(program.isRunning());
  EXPECT_EQ(ends, 1);
  EXPECT_EQ(endOf(loop, program)->status, 0);
}

TEST(HelperProgram, ReleasesWhatItWasGivenWhenItEnds) {
  EventLoop loop;
  const StandInDialog script(QStringLiteral("exit 0"));
  HelperProgram program(script.path());
  auto token = std::make_shared<int>();
  const std::weak_ptr<int> held = token;
  program.run({}, [token = std::move(token)](const HelperEnd&) {});
  EXPECT_FALSE(held.expired());
  EXPECT_TRUE(loop.runUntil([&] { return held.expired(); }));
}

TEST(HelperProgram, EndsWithItsOwner) {
  EventLoop loop;
  const StandInDialog script(
      QStringLiteral("trap 'echo x >\"$0.ended\"; exit 1' TERM; echo x >\"$0.started\"; while :; do sleep 0.02; done"));
  bool heard = false;
  {
    HelperProgram program(script.path());
    program.run({}, [&](const HelperEnd&) { heard = true; });
    ASSERT_TRUE(loop.runUntil([&] { return QFile::exists(script.path() + QStringLiteral(".started")); }));
  }
  EXPECT_TRUE(QFile::exists(script.path() + QStringLiteral(".ended")));
  EXPECT_FALSE(heard);
}

}  // namespace
}  // namespace tilora::app
