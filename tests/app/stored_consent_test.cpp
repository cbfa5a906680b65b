// The user's consent between the dialog and the store.
#include "app/stored_consent.h"

#include <gtest/gtest.h>

#include <QFile>

#include "event_loop.h"
#include "platform/xdg/settings_file.h"
#include "stand_in_dialog.h"

namespace tilora::app {
namespace {

TEST(StoredConsent, IsNotGivenByAUserWhoWasNeverAsked) {
  EventLoop loop;
  xdg::SettingsFile store({});
  ConsentRequest request(QStringLiteral("/nowhere/dialog"));
  EXPECT_FALSE(StoredConsent(store, request).isGiven());
}

TEST(StoredConsent, IsGivenOnceTheUserChoseToStartAndStaysSoForALaterRun) {
  EventLoop loop;
  const StandInDialog dialog(QStringLiteral("exit 0"));
  xdg::SettingsFile store({});
  ConsentRequest request(dialog.path());
  StoredConsent consent(store, request);
  consent.ask({});
  EXPECT_FALSE(consent.isGiven());
  EXPECT_TRUE(loop.runUntil([&] { return consent.isGiven(); }));
  ConsentRequest laterRequest(QStringLiteral("/nowhere/dialog"));
  EXPECT_TRUE(StoredConsent(store, laterRequest).isGiven());
}

TEST(StoredConsent, ANoIsNotKeptSoThatTheNextStartAsksAgain) {
  EventLoop loop;
  const StandInDialog dialog(QStringLiteral("echo x >>\"$0.asked\"; exit 1"));
  const auto timesAsked = [&] {
    QFile file(dialog.fileBeside(QStringLiteral("dialog.asked")));
    return file.open(QIODevice::ReadOnly) ? file.readAll().count('x') : 0;
  };
  xdg::SettingsFile store({});
  ConsentRequest request(dialog.path());
  StoredConsent consent(store, request);
  for (int times = 1; times <= 2; ++times) {
    ASSERT_TRUE(loop.runUntil([&] {
      consent.ask({});
      return timesAsked() >= times;
    }));
  }
  EXPECT_FALSE(consent.isGiven());
  EXPECT_FALSE(store.contains("Tilora.Consent"));
}

}  // namespace
}  // namespace tilora::app
