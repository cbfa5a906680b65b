// The update check with the settings, the desktop and the fetching program of this one.
#include "app/update_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>

#include "app/fetch_program.h"
#include "event_loop.h"
#include "platform/xdg/settings_file.h"
#include "stand_in_dialog.h"

namespace tilora::app {
namespace {

using updater::AlertAnswer;
using updater::Fetched;

constexpr const char* site = "https://releases.invalid/tilora";

std::optional<Fetched> fetchedBy(EventLoop& loop, const QString& program, const std::string& address = "https://releases.invalid/x") {
  FetchProgram fetcher(program);
  std::optional<Fetched> result;
  fetcher.fetch(address, [&](Fetched fetched) { result = std::move(fetched); });
  EXPECT_FALSE(result);
  EXPECT_TRUE(loop.runUntil([&] { return result.has_value(); }));
  return result;
}

TEST(FetchProgram, AnswersWithWhatTheProgramWrote) {
  EventLoop loop;
  const StandInDialog script(QStringLiteral("printf '%s\\n\\0%s' \"$#\" \"$1\"; echo chatter >&2"));
  const auto fetched = fetchedBy(loop, script.path(), "https://a.invalid/b?c=$d&e");
  EXPECT_EQ(fetched->body, std::string("1\n\0https://a.invalid/b?c=$d&e", 29));
  EXPECT_EQ(fetched->error, "");
}

TEST(FetchProgram, SaysInOneLineWhyThereIsNoBody) {
  EventLoop loop;
  const StandInDialog refusal(QStringLiteral("echo half; echo 'a warning' >&2; echo 'Connection refused' >&2; exit 1"));
  const auto refused = fetchedBy(loop, refusal.path());
  EXPECT_EQ(refused->body, std::nullopt);
  EXPECT_EQ(refused->error, "Connection refused");
  for (const char* script : {"exit 1", "echo x; kill -9 $$", "echo crashed >&2; kill -6 $$"}) {
    const StandInDialog broken(QString::fromLatin1(script));
    const auto fetched = fetchedBy(loop, broken.path());
    EXPECT_EQ(fetched->body, std::nullopt) << script;
    EXPECT_EQ(fetched->error, "the program that fetches the feed failed.") << script;
  }
  EXPECT_EQ(fetchedBy(loop, QStringLiteral("/nowhere/fetch"))->error, "the program that fetches the feed failed.");
}

class RecordingShell : public Shell {
 public:
  std::vector<std::string> opened;

  void activateSelf() override {}
  std::vector<std::shared_ptr<OwnWindow>> ownWindows() override { return {}; }
  void openURL(std::string_view url) override { opened.emplace_back(url); }
};

class HeldAlert : public updater::Alert {
 public:
  std::optional<updater::UpdateAlert> shown;
  std::function<void(AlertAnswer)> done;

  void show(const updater::UpdateAlert& alert, std::function<void(AlertAnswer)> then) override {
    shown = alert;
    done = std::move(then);
  }
};

class Launch : public testing::Test {
 public:
  void SetUp() override { QCoreApplication::setApplicationVersion(QStringLiteral("1.3")); }
  void TearDown() override { QCoreApplication::setApplicationVersion(QString()); }

  /// Runs one check against a program that answers with `body`, until it ended or shows its alert; answers what was printed.
  std::string launch(const QString& body) {
    const StandInDialog script(QStringLiteral("echo \"$1\" >>\"$0.asked\"; cat <<'END'\n%1\nEND").arg(body));
    FetchProgram fetcher(script.path());
    UpdateCheck check(site, settings, shell, fetcher, alert);
    testing::internal::CaptureStdout();
    check.start();
    loop.runUntil([&] { return !fetcher.isRunning(); });
    QFile notes(script.path() + QStringLiteral(".asked"));
    if (notes.open(QIODevice::ReadOnly)) asked += notes.readAll().toStdString();
    if (alert.done) std::exchange(alert.done, nullptr)(AlertAnswer::firstButton);
    return testing::internal::GetCapturedStdout();
  }

  EventLoop loop;
  xdg::SettingsFile settings{{}};
  RecordingShell shell;
  HeldAlert alert;
  std::string asked;
};

TEST_F(Launch, OffersAnotherVersionAndBacksOffAtTheNextStart) {
  const QString feed = QStringLiteral(R"({"product":"Tilora","version":"1.4","file":"Tilora 1.4.zip"})");
  EXPECT_EQ(launch(feed), "Releasewatch: checking for update at https://releases.invalid/tilora...\n");
  EXPECT_EQ(asked, "https://releases.invalid/tilora/updater.json\n");
  EXPECT_EQ(alert.shown, updater::alertFor("1.4"));
  EXPECT_EQ(shell.opened, std::vector<std::string>{"https://releases.invalid/tilora/Tilora%201.4.zip"});
  const auto date = settings.date("lastUpdateCheck");
  ASSERT_TRUE(date);
  EXPECT_LT(std::chrono::system_clock::now() - *date, std::chrono::minutes(1));
  EXPECT_EQ(launch(feed), "Releasewatch: backed off, less than 5 days.\n");
  EXPECT_EQ(settings.date("lastUpdateCheck"), date);
}

TEST_F(Launch, ComparesWithTheVersionOfTheProgram) {
  EXPECT_EQ(launch(QStringLiteral(R"({"product":"Tilora","version":"1.3","file":""})")),
            "Releasewatch: checking for update at https://releases.invalid/tilora...\n"
            "Releasewatch: application 1.3 already up to date.\n");
  EXPECT_FALSE(alert.shown);
  EXPECT_TRUE(settings.date("lastUpdateCheck"));
}

TEST_F(Launch, TakesAnythingButADateForNone) {
  settings.setDouble("lastUpdateCheck", 4e18);
  EXPECT_EQ(launch(QStringLiteral("oops")),
            "Releasewatch: checking for update at https://releases.invalid/tilora...\n"
            "Releasewatch: the feed is not JSON, from byte 1 on.\n");
  EXPECT_FALSE(settings.date("lastUpdateCheck"));
  EXPECT_EQ(settings.doubleValue("lastUpdateCheck"), 4e18);
}

}  // namespace
}  // namespace tilora::app
