// Asking for consent in a process of its own.
#include "app/consent_request.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <optional>
#include <vector>

#include "event_loop.h"
#include "stand_in_dialog.h"

namespace tilora::app {
namespace {

std::optional<bool> answerOf(EventLoop& loop, ConsentRequest& request, const std::vector<std::string>& missing = {}) {
  std::optional<bool> said;
  request.ask(missing, [&](bool answer) { said = answer; });
  EXPECT_FALSE(said) << "the answer did not wait for the event loop";
  loop.runUntil([&] { return said.has_value(); });
  return said;
}

TEST(ConsentRequest, ADialogThatEndsWithStartIsAYes) {
  EventLoop loop;
  const StandInDialog dialog(QStringLiteral("exit 0"));
  ConsentRequest request(dialog.path());
  EXPECT_EQ(answerOf(loop, request), true);
}

TEST(ConsentRequest, EveryOtherEndIsANo) {
  EventLoop loop;
  for (const auto* script : {"exit 1", "exit 255", "kill -9 $$", "kill -15 $$"}) {
    const StandInDialog dialog(QString::fromLatin1(script));
    ConsentRequest request(dialog.path());
    EXPECT_EQ(answerOf(loop, request), false) << script;
  }
}

TEST(ConsentRequest, ADialogThatIsGivenWhatIsMissingGetsItSentenceBySentence) {
  EventLoop loop;
  const StandInDialog dialog(
      QStringLiteral("test \"$#\" -eq 2 && test \"$1\" = 'No \"window\" manager.' && test \"$2\" = 'Ünicode; $HOME'"));
  ConsentRequest request(dialog.path());
  EXPECT_EQ(answerOf(loop, request, {"No \"window\" manager.", "Ünicode; $HOME"}), true);
}

TEST(ConsentRequest, ASecondQuestionWhileTheDialogIsOpenOpensNoOther) {
  EventLoop loop;
  const StandInDialog dialog(
      QStringLiteral("echo x >>\"$0.starts\"; while ! test -e \"$0.end\"; do sleep 0.02; done; test $(wc -l <\"$0.starts\") -eq 1"));
  ConsentRequest request(dialog.path());
  std::optional<bool> first;
  bool second = false;
  request.ask({}, [&](bool answer) { first = answer; });
  request.ask({}, [&](bool) { second = true; });
  ASSERT_TRUE(loop.runUntil([&] { return QFile::exists(dialog.fileBeside(QStringLiteral("dialog.starts"))); }));
  request.ask({}, [&](bool) { second = true; });
  QFile end(dialog.fileBeside(QStringLiteral("dialog.end")));
  ASSERT_TRUE(end.open(QIODevice::WriteOnly));
  ASSERT_TRUE(loop.runUntil([&] { return first.has_value(); }));
  EXPECT_EQ(first, true);
  EXPECT_FALSE(second);
}

TEST(ConsentRequest, AMissingDialogIsANo) {
  EventLoop loop;
  ConsentRequest request(QStringLiteral("/nowhere/dialog"));
  std::optional<bool> said;
  request.ask({}, [&](bool answer) { said = answer; });
  ASSERT_TRUE(loop.runUntil([&] { return said.has_value(); }));
  EXPECT_EQ(said, false);
}

TEST(ConsentRequest, TheDialogGoesWithTheRequest) {
  EventLoop loop;
  const StandInDialog dialog(
      QStringLiteral("trap 'echo x >\"$0.ended\"; exit 1' TERM; echo x >\"$0.started\"; while :; do sleep 0.02; done"));
  bool answered = false;
  {
    ConsentRequest request(dialog.path());
    request.ask({}, [&](bool) { answered = true; });
    ASSERT_TRUE(loop.runUntil([&] { return QFile::exists(dialog.fileBeside(QStringLiteral("dialog.started"))); }));
  }
  EXPECT_TRUE(QFile::exists(dialog.fileBeside(QStringLiteral("dialog.ended"))));
  EXPECT_FALSE(answered);
}

}  // namespace
}  // namespace tilora::app
